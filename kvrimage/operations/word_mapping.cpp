#include "kvrimage/operations/word_mapping.h"

#include "kvr/numeric/digit_blocks.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/byte_mapping.h"

#include <fmt/format.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

class word_mapper {
public:
    word_mapper(const memory_image& of, const word_mapping& by)
        : image(of),
          mapping(by),
          digits(most_characters_of_word(radix::hex, by.width)),
          has_numbers(of.width() <= widest_number_word && by.width <= widest_number_word),
          made(std::make_unique<image_words>(of.depth())) {}

    std::uint64_t visit_row(const kvr::word_row& row, std::uint64_t offset) {
        texts.clear();
        for (std::uint32_t index = 0; index < row.count; ++index) {
            if (!append_text(row[index], offset + index)) {
                set_texts(offset + index);
                made->set(offset + index, odd_text);
            }
        }
        set_texts(offset + row.count);
        return row.count;
    }
    std::uint64_t visit_cycle(const text_cycle& cycle) {
        std::vector<std::string> pattern;
        for (std::uint64_t offset = cycle.first; offset < cycle.first + cycle.period; ++offset) {
            pattern.push_back(text_of(image.words()[offset], offset));
        }
        const std::vector<std::string_view> values(pattern.begin(), pattern.end());
        made->fill(cycle.first, cycle.last, values);
        return cycle.length();
    }
    void visit_run(const text_run& run) { made->fill(run.first, run.last, {text_of(run.text, run.first)}); }

    [[nodiscard]] memory_image result() { return {mapping.width, std::move(made), image.base()}; }

private:
    /// Appends the new word of @p word to `texts`. Returns false if it has another length than the others; it
    /// is then in `odd_text`.
    bool append_text(std::string_view word, std::uint64_t offset) {
        if (has_numbers) {
            if (const auto value = wide_number_of(word)) {
                append_number(mapping.number(*value));
                return true;
            }
        }
        make_text(word, offset);
        if (odd_text.size() != digits) {
            return false;
        }
        texts += odd_text;
        return true;
    }
    void append_number(const wide_number& value) {
        texts.resize(texts.size() + digits);
        char* const place = texts.data() + texts.size() - digits;
        const std::size_t above = digits > most_small_digits ? digits - most_small_digits : 0;
        kvr::write_hex_digits(place, above, value.high);
        kvr::write_hex_digits(place + above, digits - above, value.low);
    }
    /// Sets the words before @p end to the collected texts.
    void set_texts(std::uint64_t end) {
        if (!texts.empty()) {
            made->set_side_by_side(end - texts.size() / digits, texts, digits);
            texts.clear();
        }
    }
    [[nodiscard]] std::string text_of(std::string_view word, std::uint64_t offset) {
        texts.clear();
        return append_text(word, offset) ? std::exchange(texts, {}) : odd_text;
    }
    /// Makes `odd_text` from binary digits.
    void make_text(std::string_view word, std::uint64_t offset) {
        static_cast<void>(show_word(word, radix::bin, image.width(), bits));
        const std::optional<std::string> mapped = mapping.bits(bits);
        if (!mapped) {
            throw std::domain_error(fmt::format("the word at address 0x{:X} has don't-care bits: {}",
                                                image.base() + offset, bits));
        }
        static_cast<void>(make_word(*mapped, radix::bin, mapping.width, odd_text));
    }

    const memory_image& image;
    const word_mapping& mapping;
    std::size_t digits; ///< digits of a new word
    bool has_numbers;
    std::unique_ptr<image_words> made;
    std::string texts; ///< collected new words, concatenated
    std::string odd_text;
    std::string bits;
};

} // namespace

std::optional<wide_number> wide_number_of(std::string_view digits) noexcept {
    wide_number value;
    const std::size_t above = digits.size() > most_small_digits ? digits.size() - most_small_digits : 0;
    const bool is_number = digits.size() <= 2 * most_small_digits &&
                           read_small_word(digits.substr(above), value.low) &&
                           read_small_word(digits.substr(0, above), value.high);
    return is_number ? std::optional(value) : std::nullopt;
}

memory_image mapped_words(const memory_image& image, const word_mapping& mapping) {
    if (auto bytes = mapped_bytes(image.words(), mapping)) {
        return {mapping.width, std::make_unique<image_words>(image.depth(), std::move(*bytes)), image.base()};
    }
    word_mapper mapper(image, mapping);
    for_each_row_cycle_or_run(
        image.words(),
        [&mapper](const kvr::word_row& row, std::uint64_t offset) { return mapper.visit_row(row, offset); },
        [&mapper](const text_cycle& cycle) { return mapper.visit_cycle(cycle); },
        [&mapper](const text_run& run) { mapper.visit_run(run); });
    return mapper.result();
}

} // namespace kvrimage
