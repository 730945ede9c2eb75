#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// The values of words of up to 64 bits as keys: numbers that compare as the values do, signed or not. A key
/// is the distance from the least value that a word can have.
class value_order {
public:
    /// @param width 1 to widest_waveform
    value_order(std::uint32_t width, bool is_signed) : bits(width), has_sign(is_signed) {}

    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    [[nodiscard]] bool is_signed() const noexcept { return has_sign; }
    /// The key of the word @p text, in the form that image_words holds; nothing for one that is not set or
    /// has don't-care bits.
    [[nodiscard]] std::optional<std::uint64_t> key_of(std::string_view text) const;
    [[nodiscard]] std::uint64_t key_of_zero() const noexcept;
    [[nodiscard]] std::uint64_t highest_key() const noexcept;
    /// The value in decimal.
    [[nodiscard]] std::string text_of(std::uint64_t key) const;

private:
    std::uint32_t bits;
    bool has_sign;
};

} // namespace kvrimage
