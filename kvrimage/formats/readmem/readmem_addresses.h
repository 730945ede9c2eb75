#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/formats/readmem/readmem_parser.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Tracks the addresses of the words of a list according to its '@' addresses.
class readmem_addresses {
public:
    /// @param unit_bytes the increment of an '@' address per word
    explicit readmem_addresses(std::uint64_t unit_bytes) : unit(unit_bytes) {}

    /// Sets the address of the next word. Returns false if @p address is within a word; then, or if it is
    /// unreadable, the next address is unknown.
    bool take(const readmem_piece& address) {
        const bool is_known = address.address_fault != readmem_address_fault::syntax &&
                              address.address_fault != readmem_address_fault::outside;
        const bool begins_word = !is_known || address.address % unit == 0;
        next.reset();
        if (is_known && begins_word) {
            next = address.address / unit;
        }
        ended = false;
        return begins_word;
    }
    /// Returns the address of the next word; nothing if it is unknown.
    [[nodiscard]] std::optional<std::uint64_t> peek() const noexcept { return next; }
    /// Returns whether the next word is beyond the highest possible address.
    [[nodiscard]] bool at_end() const noexcept { return ended; }
    /// Advances by @p count words, which must all have addresses.
    void skip(std::uint64_t count) { *next += count; }
    /// Advances by one word.
    void advance() {
        if (next) {
            ended = *next == std::numeric_limits<std::uint64_t>::max();
            next = ended ? std::nullopt : std::optional(*next + 1);
        }
    }

private:
    std::uint64_t unit;
    std::optional<std::uint64_t> next = 0;
    bool ended = false;
};

/// Returns the increment of an '@' address per word: 1, or the bytes of a word if addresses count bytes. A
/// missing width is that of the longest word.
[[nodiscard]] std::uint64_t readmem_unit_bytes(std::string_view contents, const read_options& options,
                                               radix digits_radix);

} // namespace kvrimage
