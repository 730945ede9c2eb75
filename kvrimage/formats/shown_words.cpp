#include "kvrimage/formats/shown_words.h"

namespace kvrimage {

namespace {

/// Sums up the lengths of decimal texts.
class decimal_lengths {
public:
    decimal_lengths(const memory_image& measured, radix in) : image(measured), digits_radix(in) {}

    [[nodiscard]] std::uint64_t total() {
        for_each_row_cycle_or_run(
            image.words(),
            [this](const kvr::word_row& row, std::uint64_t) {
                for (std::uint32_t index = 0; index < row.count; ++index) {
                    sum += length_of_word(row[index]);
                }
                return row.count;
            },
            [this](const text_cycle& cycle) {
                add_cycle(cycle);
                return cycle.length();
            },
            [this](const text_run& run) { sum += length_of(run) * length_of_word(run.text); });
        return sum;
    }

private:
    /// Adds a cycle as if it ended with a complete period.
    void add_cycle(const text_cycle& cycle) {
        const std::uint64_t turns = (cycle.length() + cycle.period - 1) / cycle.period;
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            sum += turns * length_of_word(image.words()[cycle.first + index]);
        }
    }
    std::uint64_t length_of_word(std::string_view word) {
        show_word(word, digits_radix, image.width(), text);
        return text.size();
    }

    const memory_image& image;
    radix digits_radix;
    std::uint64_t sum = 0;
    std::string text;
};

} // namespace

std::uint64_t count_shown_characters(const memory_image& image, radix digits_radix) {
    if (digits_radix != radix::dec && digits_radix != radix::uns) {
        return image.count_set() * most_characters_of_word(digits_radix, image.width());
    }
    return decimal_lengths(image, digits_radix).total();
}

} // namespace kvrimage
