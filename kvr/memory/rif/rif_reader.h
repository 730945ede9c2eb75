#pragma once

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/read_fault.h"
#include "kvr/memory/rif/fast_rif_lines.h"
#include "kvr/memory/rif/rif_memory.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// True if @p text has only hexadecimal digits, blanks and "X", "x", "U", "u".
[[nodiscard]] bool is_rif_data(std::string_view text) noexcept;

/// Returns the address of an "@" line: the number after the first "@", parsed like strtol in base 16. So
/// blanks, a sign and "0x" may precede the digits, text after them is ignored, and no digits give 0. A
/// negative address, or one beyond 32 bits, gives rif_address_outside.
[[nodiscard]] std::uint64_t rif_address(std::string_view line) noexcept;

/// An address outside every store. So are the addresses after it.
constexpr std::uint64_t rif_address_outside = std::uint64_t{1} << 32U;

/// Reads RIF text into the words of a memory at its current size. Words are stored in upper case; words
/// outside the store are dropped. The words of a line are stored only if the whole line is valid.
class rif_reader {
public:
    /// @param observer receives words, address lines and faults, and decides whether to continue after a
    /// fault; the memory then gets no message. Without it the first fault ends the read. Not owned
    explicit rif_reader(rif_memory& memory, read_observer* observer = nullptr);

    /// Reads @p source to its end, or to the fault that ends the read. Sets "file not found" if the source is
    /// not open or fails, and clears it otherwise. An illegal line sets the error state, which is never
    /// cleared.
    void read(line_source& source);

private:
    bool read_whole_lines(line_source& source);
    bool read_line(std::string_view line);
    std::string_view upper_cased(std::string_view line);
    void read_address(std::string_view line);
    void read_words(std::string_view line);
    void store_word(std::string_view word);
    bool refuse(std::string_view line);

    rif_memory& memory;
    read_observer* observer;
    std::uint64_t address = 0;     ///< of the next word; 64 bits, so that it never wraps
    std::uint64_t line_number = 0; ///< counted for the observer only
    std::string upper_line;        ///< the current line, if it must be converted to upper case
    fast_rif_lines fast_lines;
};

} // namespace kvr
