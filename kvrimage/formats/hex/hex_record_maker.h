#pragma once

#include "kvrimage/edit/edit_pieces.h"
#include "kvrimage/formats/hex/hex_layout.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// The style of the records of a file.
struct hex_record_style {
    std::uint32_t largest_record = 0; ///< data bytes; 0: no record
    bool lower_case = false;
    std::string_view line_end = "\n";
};

/// Makes data records and the required extended linear address records.
class hex_record_maker {
public:
    /// @param offset the offset in force where the records are inserted
    hex_record_maker(const hex_layout& of, const hex_record_style& like, std::uint64_t offset);

    /// Adds records for the cells of @p piece.
    void add(const edit_piece& piece);
    [[nodiscard]] std::string take_records();

private:
    void select_page(std::uint64_t address);
    void add_data(const edit_piece& piece, std::uint64_t address, std::uint64_t end);
    void add_record(const std::string& fields);

    hex_layout layout;
    hex_record_style style;
    std::uint64_t offset;
    std::uint64_t cells_a_record;
    std::string records;
};

} // namespace kvrimage
