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

/// True when @p text has hexadecimal digits, blanks and "X", "x", "U", "u" only.
[[nodiscard]] bool is_rif_data(std::string_view text) noexcept;

/// The address that the "@" line @p line sets: what strtol in base 16 reads from the text after the first
/// "@", so blanks, a sign and "0x" may come first, what follows the digits is ignored, and no digits at
/// all are 0. A negative one, and one that does not fit 32 bits, is rif_address_outside.
[[nodiscard]] std::uint64_t rif_address(std::string_view line) noexcept;

/// An address outside every store; so are those that follow it.
constexpr std::uint64_t rif_address_outside = std::uint64_t{1} << 32U;

/// Reads RIF text into the words of a memory at its current size: each word is stored upper-cased, those
/// outside the store are dropped. The words of a line are stored only when the whole line is valid.
class rif_reader {
public:
    /// @param observer gets words, address lines and faults, and decides whether to go on after a fault; the
    ///                 memory then gets no message for it. Without one the first fault ends the read. Not
    ///                 owned.
    explicit rif_reader(rif_memory& memory, read_observer* observer = nullptr);

    /// Reads @p source to its end or to the fault that ends the read. Sets "file not found" when the
    /// source is not open or fails during the read (else it is cleared), and the error state, never cleared,
    /// for an illegal line.
    void read(line_source& source);

private:
    bool read_whole_lines(line_source& source);
    std::size_t read_fast_lines(std::string_view lines);
    bool read_line(std::string_view line);
    std::string_view upper_cased(std::string_view line);
    void read_address(std::string_view line);
    void read_words(std::string_view line);
    void store_word(std::string_view word);
    bool refuse(std::string_view line);

    rif_memory& memory;
    read_observer* observer;
    std::uint64_t address = 0; ///< of the next word; wider than an address so that it never wraps
    std::uint64_t line_number = 0;
    std::string upper_line; ///< the current line, if it needs upper-casing
    fast_rif_lines fast_lines;
};

} // namespace kvr
