#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/formats/readmem/readmem_parser.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The addresses of the words of a list, as they follow from its '@'.
class readmem_addresses {
public:
    /// @param unit_bytes what an '@' counts for each word
    explicit readmem_addresses(std::uint64_t unit_bytes) : unit(unit_bytes) {}

    /// False for an address within a word. After that one, and one that is not readable, the address of the
    /// next word is not known.
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
    /// The address of the next word; nothing when it is not known.
    [[nodiscard]] std::optional<std::uint64_t> peek() const noexcept { return next; }
    /// True when the next word is beyond all addresses.
    [[nodiscard]] bool at_end() const noexcept { return ended; }
    /// Goes on after @p count words, which all have addresses.
    void skip(std::uint64_t count) { *next += count; }
    /// Goes on after a word.
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

/// What an '@' of @p contents counts for each word: 1, or with addresses that count bytes, those of a word.
/// Where no width is given, it is that of the longest word.
[[nodiscard]] std::uint64_t readmem_unit_bytes(std::string_view contents, const read_options& options,
                                               radix digits_radix);

} // namespace kvrimage
