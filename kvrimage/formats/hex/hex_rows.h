#pragma once

#include "kvr/memory/hex/fast_hex_rows.h"
#include "kvr/memory/io/output_file.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Records on their way to a text_sink. Those of many words at once are made in the buffer of an output file
/// that has no file, from which the sink takes them.
class hex_rows {
public:
    /// @param to kept alive by the caller
    hex_rows(std::uint32_t bytes_per_word, text_sink& to);

    /// Adds a record for each word from the first of @p row on, the first with the address @p address, below
    /// 65536.
    /// @return how many; 0 for words that need a record of their own
    std::uint32_t write(const kvr::word_row& row, std::uint32_t address);
    void add(std::string_view text);
    /// Hands out what is left.
    void flush();

private:
    /// Where the next character goes, with room for output_file::room_limit of them.
    char* room();

    text_sink& output;
    kvr::output_file buffer{nullptr};
    char* begin; ///< of the text that was not handed out
    char* limit;
    std::uint32_t record_size;
    kvr::fast_hex_rows rows;
};

} // namespace kvrimage
