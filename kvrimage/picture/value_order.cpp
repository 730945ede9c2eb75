#include "kvrimage/picture/value_order.h"

#include "kvrimage/image/word_text.h"
#include "kvrimage/picture/picture.h"

#include <fmt/format.h>

#include <charconv>

namespace kvrimage {

std::optional<std::uint64_t> value_order::key_of(std::string_view text) const {
    constexpr int hexadecimal = 16;
    if (text.empty() || !is_plain(text)) {
        return std::nullopt;
    }
    std::uint64_t word = 0;
    std::from_chars(text.data(), text.data() + text.size(), word, hexadecimal);
    return word ^ key_of_zero(); // two's complement with its sign bit inverted orders like a number
}

std::uint64_t value_order::key_of_zero() const noexcept {
    return has_sign ? std::uint64_t{1} << (bits - 1) : 0;
}

std::uint64_t value_order::highest_key() const noexcept {
    return ~std::uint64_t{0} >> (widest_waveform - bits);
}

std::string value_order::text_of(std::uint64_t key) const {
    const std::uint64_t zero = key_of_zero();
    return key < zero ? fmt::format("-{}", zero - key) : fmt::format("{}", key - zero);
}

} // namespace kvrimage
