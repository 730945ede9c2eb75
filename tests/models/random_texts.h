#pragma once

#include "tests/models/choices.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kvr_test {

/// Texts of one style for a while, then of another. The order of the styles determines the forms that a store
/// goes through: words of one length, with shorter ones among them, of all lengths, with few or many values.
class random_texts {
public:
    explicit random_texts(choices& source) noexcept : chosen(source) {}

    std::string operator()() {
        if (chosen.once_in(100)) {
            new_style();
        }
        return text(next_length());
    }

    /// A text of @p length characters.
    std::string text(std::size_t length) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        std::string made(length, '0');
        std::uint32_t value = chosen.below(values);
        for (std::size_t at = length; at > 0 && value != 0; value /= 16) {
            made[--at] = digits[value % 16];
        }
        if (value != 0 && length != 0) {
            made.front() = '\xFF'; // texts with an allocation differ; any byte may occur
        }
        return made;
    }

    void new_style() {
        longest = any_length();
        is_mixed = chosen.once_in(2);
        values = chosen.one_of(value_counts);
    }

    /// A text length of the current style.
    std::size_t next_length() {
        if (is_mixed) {
            return chosen.once_in(200) ? any_length() : chosen.below(longest + 1);
        }
        return chosen.once_in(60) ? chosen.below(longest + 1) : longest;
    }

private:
    std::uint32_t any_length() {
        return chosen.once_in(10) ? chosen.one_of(long_lengths) : chosen.one_of(short_lengths);
    }

    // Around the lengths at which a page changes its form.
    static constexpr std::array<std::uint32_t, 12> short_lengths = {0, 1, 1, 2, 2, 2, 3, 4, 4, 8, 8, 9};
    static constexpr std::array<std::uint32_t, 7> long_lengths = {15, 16, 17, 254, 255, 256, 257};
    static constexpr std::array<std::uint32_t, 4> value_counts = {1, 2, 200, 1U << 31U};

    choices& chosen;
    std::uint32_t longest = 2;
    std::uint32_t values = 200;
    bool is_mixed = false;
};

} // namespace kvr_test
