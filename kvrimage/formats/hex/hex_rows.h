#pragma once

#include "kvr/memory/hex/fast_hex_rows.h"
#include "kvr/memory/io/output_file.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Buffers records for a text_sink. Rows of words are formatted into the buffer of an output_file without a
/// file.
class hex_rows {
public:
    /// @param to kept alive by the caller
    hex_rows(std::uint32_t bytes_per_word, text_sink& to);

    /// Adds a record for each word from the start of @p row on. The first one gets @p address, which must be
    /// below 65536.
    /// @return the number of records; 0 if the next word needs separate treatment
    std::uint32_t write(const kvr::word_row& row, std::uint32_t address);
    void add(std::string_view text);
    /// Passes the buffered text to the sink.
    void flush();

private:
    /// Returns the position for the next character, with room for output_file::room_limit characters.
    char* room();

    text_sink& output;
    kvr::output_file buffer{nullptr};
    char* begin; ///< of the text not yet passed on
    char* limit;
    std::uint32_t record_size;
    kvr::fast_hex_rows rows;
};

} // namespace kvrimage
