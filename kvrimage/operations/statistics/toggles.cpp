#include "kvrimage/operations/statistics/toggles.h"

#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/statistics/word_walk.h"

#include <algorithm>
#include <bit>
#include <string>

namespace kvrimage {

namespace {

/// Sets @p toggled to the number of bits that differ between two texts of equal length in hexadecimal digits.
/// Returns false if one has a don't-care digit.
bool count_differing_bits(std::string_view left, std::string_view right, std::uint64_t& toggled) {
    toggled = 0;
    for (std::size_t at = 0; at < left.size(); at += most_small_digits) {
        std::uint64_t left_part = 0;
        std::uint64_t right_part = 0;
        if (!read_small_word(left.substr(at, most_small_digits), left_part) ||
            !read_small_word(right.substr(at, most_small_digits), right_part)) {
            return false;
        }
        toggled += static_cast<std::uint64_t>(std::popcount(left_part ^ right_part));
    }
    return true;
}

class toggle_counter {
public:
    explicit toggle_counter(std::uint32_t width_of_words) : width(width_of_words) {}

    void take(std::string_view text, std::uint64_t length) {
        add_next(text, 1);
        if (length > 1) {
            add_next(text, length - 1);
        }
    }
    /// Compares @p text with the previous word and counts the result @p times.
    void add_next(std::string_view text, std::uint64_t times) {
        if (!text.empty() && !previous.empty()) {
            compare(text, times);
        }
        previous = text;
    }

    [[nodiscard]] const toggle_statistics& result() const noexcept { return statistics; }

private:
    void compare(std::string_view text, std::uint64_t times) {
        std::uint64_t toggled = 0;
        std::uint64_t compared = width;
        if (text.size() != previous.size() || !count_differing_bits(previous, text, toggled)) {
            compare_bits(text, compared, toggled);
        }
        statistics.pairs += times;
        statistics.compared += times * compared;
        statistics.toggled += times * toggled;
    }
    /// Compares by binary digits.
    void compare_bits(std::string_view text, std::uint64_t& compared, std::uint64_t& toggled) {
        static_cast<void>(show_word(previous, radix::bin, width, bits_before));
        static_cast<void>(show_word(text, radix::bin, width, bits));
        compared = 0;
        toggled = 0;
        for (std::size_t at = 0; at < bits.size(); ++at) {
            const bool is_compared = bits[at] != 'X' && bits_before[at] != 'X';
            compared += is_compared ? 1U : 0U;
            toggled += is_compared && bits[at] != bits_before[at] ? 1U : 0U;
        }
    }

    toggle_statistics statistics;
    std::uint32_t width;
    std::string_view previous;
    std::string bits;
    std::string bits_before;
};

} // namespace

toggle_statistics toggles_of(const memory_image& image) {
    const image_words& words = image.words();
    toggle_counter counter(image.width());
    for_each_word_or_turn(
        words,
        [&counter](std::string_view text, std::uint64_t /*offset*/, std::uint64_t length) {
            counter.take(text, length);
        },
        [&](std::uint64_t offset, std::uint32_t period, std::uint64_t turns) {
            for (std::uint32_t index = 0; index < period; ++index) {
                counter.add_next(words[offset + index], turns);
            }
        });
    return counter.result();
}

} // namespace kvrimage
