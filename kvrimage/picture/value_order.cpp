#include "kvrimage/picture/value_order.h"

#include "kvrimage/image/word_text.h"
#include "kvrimage/picture/picture.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>

namespace kvrimage {

std::optional<std::uint64_t> value_order::key_of(std::string_view text) const {
    constexpr int hexadecimal = 16;
    if (text.empty() || !is_plain(text)) {
        return std::nullopt;
    }
    std::uint64_t word = 0;
    std::from_chars(text.data(), text.data() + text.size(), word, hexadecimal);
    return word ^ key_of_zero(); // two's complement with inverted sign bit has the order of unsigned numbers
}

std::uint64_t value_order::key_of_zero() const noexcept {
    return form.is_signed ? std::uint64_t{1} << (bits - 1) : 0;
}

std::uint64_t value_order::highest_key() const noexcept {
    return ~std::uint64_t{0} >> (widest_waveform - bits);
}

std::string value_order::text_of(std::uint64_t key) const {
    const std::uint64_t zero = key_of_zero();
    const std::uint64_t size = key < zero ? zero - key : key - zero;
    const char* const sign = key < zero ? "-" : "";
    if (!form.is_signed) {
        return fmt::format("0x{:X}", size);
    }
    return form.fraction_bits == 0
               ? fmt::format("{}{}", sign, size)
               : fmt::format("{}{:.6g}", sign,
                             std::ldexp(static_cast<double>(size), -static_cast<int>(form.fraction_bits)));
}

std::size_t value_order::text_size() const {
    constexpr std::size_t longest_fraction = 12; // "-1.23457e-05"
    return form.is_signed && form.fraction_bits != 0 ? longest_fraction
                                                     : text_of(form.is_signed ? 0 : highest_key()).size();
}

} // namespace kvrimage
