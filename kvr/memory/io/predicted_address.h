#pragma once

#include "kvr/numeric/character_block.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Predicts the text before the values of the next content line of a MIF file: it is written like the
/// previous line and has the next address. A comparison is much faster than parsing the address; a line that
/// does not match is parsed.
class predicted_address {
public:
    /// The number of characters from the start of the line that must be readable.
    static constexpr std::size_t readable = 24;

    /// True if the line begins as predicted.
    [[nodiscard]] bool matches(const char* line) const noexcept {
        // Word by word: loading what advance() has just stored together with the adjacent word would stall.
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (((load_eight(line + 8 * i) ^ words[i]) & masks[i]) != 0) {
                return false;
            }
        }
        return length != 0;
    }
    /// Returns the address of a line that matches.
    [[nodiscard]] std::uint64_t address() const noexcept { return next; }
    /// Returns the length of the text before the values of a line that matches.
    [[nodiscard]] std::size_t size() const noexcept { return length; }

    /// Returns the number of lines, at least one, that may be compared at once if the first matches: up to
    /// the next line whose address differs in more than its last digit.
    [[nodiscard]] std::size_t lines_at_once() const noexcept { return steps_left + 1; }

    /// Counts the lines from @p lines on that match, have one value each, and continue with what @p is_rest
    /// accepts. All lines have @p line_size characters. @p most, at most lines_at_once(), limits the count.
    /// There must be a prediction: size() is not 0.
    template <class IsRest>
    [[nodiscard]] std::size_t count_predicted(const char* lines, std::size_t line_size, std::size_t most,
                                              IsRest is_rest) const {
        std::array<std::uint64_t, readable / 8> now = words;
        std::array<std::uint64_t, readable / 8> step{};
        step[last_digit / 8] = std::uint64_t{1} << (last_digit % 8 * 8);
        std::size_t count = 0;
        for (const char* line = lines; count < most; line += line_size, ++count) {
            std::uint64_t different = 0;
            for (std::size_t i = 0; i < now.size(); ++i) {
                different |= (load_eight(line + 8 * i) ^ now[i]) & masks[i];
                now[i] += step[i];
            }
            if (different != 0 || !is_rest(line + length)) {
                break;
            }
        }
        return count;
    }

    /// Learns from a line that did not match. @p before is the text before its values, @p digits are the
    /// digits of its address within it, in @p number_base, and @p count is the number of values.
    void learn(std::string_view before, std::string_view digits, unsigned number_base, std::uint64_t address,
               std::uint64_t count) noexcept;

    /// Advances after a line that matched and has @p count values.
    void advance(std::uint64_t count) noexcept {
        next += count;
        if (count <= steps_left) {
            words[last_digit / 8] += count << (last_digit % 8 * 8);
            steps_left -= count;
        } else {
            add_to_digits(steps - steps_left + count);
        }
    }

private:
    void add_to_digits(std::uint64_t count) noexcept;
    void put_digit(std::size_t at, char digit) noexcept;

    std::uint64_t next = 0; ///< the address after the values of the previous line
    std::size_t length = 0; ///< 0 if nothing is predicted
    std::size_t first_digit = 0;
    std::size_t last_digit = 0;
    unsigned base = 16;
    bool lower_case = false; ///< letter case of the digits
    std::array<char, readable> text{};
    std::uint64_t steps = 0; ///< steps of the last digit without a carry, or without a step from "9" to "A"
    std::uint64_t steps_left = 0;                    ///< remaining steps
    std::array<std::uint64_t, readable / 8> words{}; ///< `text` with the steps so far
    std::array<std::uint64_t, readable / 8> masks{}; ///< all bits of the characters that are compared
};

} // namespace kvr
