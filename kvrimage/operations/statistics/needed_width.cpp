#include "kvrimage/operations/statistics/needed_width.h"

#include "kvr/numeric/digit_value.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/statistics/word_walk.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string_view>

namespace kvrimage {

namespace {

/// Returns the number of bits of @p value without leading zeros.
std::uint32_t bits_of(unsigned value) noexcept {
    return std::numeric_limits<unsigned>::digits - static_cast<std::uint32_t>(std::countl_zero(value));
}

/// Finds the width without redundant high bits: bits equal to the highest one, except for one sign bit in
/// two's complement.
class needed_width_finder {
public:
    explicit needed_width_finder(std::uint32_t width_of_words) : width(width_of_words) {}

    void take(std::string_view text) {
        const bool is_binary = radix_of_word(text, width) == radix::bin;
        digit_bits = is_binary ? 1 : bits_per_hex_digit;
        const std::uint32_t top_bits =
            width - digit_bits * static_cast<std::uint32_t>(text.size() - 1); // width of the first digit
        const unsigned top = kvr::digit_value(text.front());
        needed.as_unsigned = std::max(needed.as_unsigned, bits_beside(text, '0', 0));
        needed.as_signed = std::max(needed.as_signed, signed_bits(text, top, top_bits));
    }

    [[nodiscard]] const needed_width& result() const noexcept { return needed; }

private:
    /// @param top the first digit of @p text, which has @p top_bits bits
    [[nodiscard]] std::uint32_t signed_bits(std::string_view text, unsigned top,
                                            std::uint32_t top_bits) const {
        if (top >= kvr::dont_care_digit) {
            return width;
        }
        if ((top >> (top_bits - 1) & 1U) == 0) {
            return std::min(bits_beside(text, '0', 0) + 1, width);
        }
        const unsigned ones_of_top = (1U << top_bits) - 1;
        if (top != ones_of_top) {
            return bits_of_rest(text, 0) + bits_of(top ^ ones_of_top) + 1;
        }
        const unsigned ones = (1U << digit_bits) - 1;
        return std::min(bits_beside(text.substr(1), digit_bits == 1 ? '1' : 'F', ones) + 1, width);
    }
    /// Returns the index plus 1 of the highest bit that differs from @p filler_bits, the bits of the digit
    /// @p filler, or 0 if there is none.
    [[nodiscard]] std::uint32_t bits_beside(std::string_view text, char filler, unsigned filler_bits) const {
        const std::size_t at = std::min(text.find_first_not_of(filler), text.size());
        if (at == text.size()) {
            return 0;
        }
        const unsigned digit = kvr::digit_value(text[at]);
        const std::uint32_t bits_here =
            digit >= kvr::dont_care_digit ? digit_bits : bits_of(digit ^ filler_bits);
        return std::min(bits_of_rest(text, at) + bits_here, width);
    }
    /// Returns the bits of the digits after the one at @p at.
    [[nodiscard]] std::uint32_t bits_of_rest(std::string_view text, std::size_t at) const {
        return digit_bits * static_cast<std::uint32_t>(text.size() - 1 - at);
    }

    needed_width needed = {1, 1};
    std::uint32_t width;
    std::uint32_t digit_bits = bits_per_hex_digit; ///< of the current word
};

} // namespace

needed_width needed_width_of(const memory_image& image) {
    needed_width_finder finder(image.width());
    for_each_word_or_turn(
        image.words(),
        [&finder](std::string_view text, std::uint64_t /*offset*/, std::uint64_t /*length*/) {
            if (!text.empty()) {
                finder.take(text);
            }
        },
        [](std::uint64_t /*offset*/, std::uint32_t /*period*/, std::uint64_t /*turns*/) {});
    return finder.result();
}

} // namespace kvrimage
