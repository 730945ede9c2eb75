#pragma once

#include "kvr/memory/io/predicted_address.h"
#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/store/word_batch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// Fast path of the mif_reader: parses regular content lines in the buffer. A regular line has one address,
/// ":", values and ";", followed by blanks and a comment that begins with "--" at most. The result is that of
/// the mif_reader, which implements all rules and faults and gets all other lines.
class fast_mif_lines {
public:
    /// @param longest_line maximum line length in characters, without the line end
    fast_mif_lines(mif_memory& target, std::size_t longest_line) noexcept
        : memory(target),
          words(target.data_words),
          line_limit(longest_line) {}

    struct amount {
        std::size_t bytes;
        std::uint64_t lines;
        std::uint64_t lines_together;   ///< those of the lines that were not read one by one
        std::uint64_t addresses_parsed; ///< those of the lines whose address was parsed, not predicted
        bool has_lists;                 ///< a line has several values
    };

    /// Parses whole lines @p lines up to the first one that is not regular.
    /// @param with_comments whether lines with a comment are regular
    amount read(std::string_view lines, bool with_comments);

private:
    std::uint64_t read_equal_lines(const char*& line, const char* end);
    const char* read_line(const char* begin);
    const char* read_line_as_predicted(const char* begin);
    const char* read_values_as_predicted(const char* begin);
    const char* read_values(const char* at);
    const char* find_next_line(const char* begin, const char* at);
    bool can_be_stored(std::uint64_t address);
    void set_digits(std::uint32_t address, std::string_view value, bool has_lower_case);
    std::string_view in_upper_case(std::string_view value);
    void keep_comment();

    mif_memory& memory;
    word_batch words;
    std::size_t line_limit;
    bool accepts_comments = false;
    bool has_lists = false;
    unsigned address_base = 16;
    const char* lines_end = nullptr;
    predicted_address predicted;
    std::size_t expected_length = 0; ///< length of the value of a line with one value; 0 if there is none
    std::uint32_t lines_apart = 0;   ///< number of next lines to parse one by one

    // The current line.
    std::array<std::string_view, 256> values; ///< more than fit a line
    std::size_t value_count = 0;
    std::string_view comment; ///< begins with "--"
    std::string upper_cased;
};

} // namespace kvr
