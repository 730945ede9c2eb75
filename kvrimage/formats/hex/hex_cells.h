#pragma once

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/memory/store/word_batch.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Takes the data records of a file whose addresses count words, its cells.
class hex_cells {
public:
    /// @param options their depth is that of the file from address 0 on; messages count it from their base
    hex_cells(std::string_view file, const hex_layout& layout, const read_options& options);

    /// Takes a plain record at @p address if nothing can be wrong with it, which nearly always is so. False:
    /// it is for take().
    bool add_plain(const kvr::hex_record& record, std::uint64_t address);
    void take(const hex_data& data);
    /// Notes that the words of @p bytes bytes from @p address on are in doubt.
    void mark_unreadable(std::uint64_t address, std::uint32_t bytes);

    /// What is wrong with the words.
    void report(diagnostic_list& diagnostics);
    /// The words; once, after which nothing else can be asked. Nothing when no address is known to be in the
    /// memory.
    [[nodiscard]] std::optional<memory_image> finish();
    /// Addresses of words that were not set because something is wrong with them, in order.
    [[nodiscard]] std::vector<address_range> unreadable() const;

private:
    bool store_plain(std::string_view digits, std::uint64_t address, std::uint32_t count);
    bool store_cut(std::string_view digits, std::uint32_t first, std::uint32_t count);
    void store(const hex_data& data, std::uint64_t address, std::uint32_t index);
    void note_addresses(const hex_data& data, std::uint32_t count);
    [[nodiscard]] std::uint64_t line_that_sets(std::uint64_t cell) const;
    [[nodiscard]] std::uint64_t depth_of_image() const;
    void report_too_wide(diagnostic_list& diagnostics) const;
    void report_addresses(diagnostic_list& diagnostics) const;

    std::string_view contents;
    hex_layout layout;
    std::optional<std::uint64_t> given_depth;
    std::uint64_t base;
    std::uint32_t cell_bytes;
    std::size_t cell_digits;   ///< in the file
    std::size_t stored_digits; ///< in the image, at most one less
    std::uint64_t end = 0;     ///< after the highest cell that is set
    std::uint64_t limit;       ///< cells of the memory
    image_words words;
    kvr::word_batch batch;
    kvr::hex_digit_block upper; ///< takes a record with small letters
    std::string word;
    numbered_places odd_bytes; ///< by how many bytes there are
    numbered_places too_wide;  ///< by the bits that they need
    std::string first_too_wide;
    numbered_places beyond_depth, outside, set_twice; ///< by their addresses
    std::vector<address_range> in_doubt;              ///< words
};

} // namespace kvrimage
