#include "kvrimage/bytes/byte_rows.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"

#include <fmt/format.h>

#include <charconv>
#include <limits>

namespace kvrimage {

namespace {

/// Counts the rows of ascending stretches.
class row_counter {
public:
    explicit row_counter(std::uint32_t bytes_a_row)
        : length(bytes_a_row),
          rows_a_page((byte_page_size + length - 1) / length) {}

    void take(std::uint64_t first, std::uint64_t last) {
        const bool goes_on = counts.bytes != 0 && first == next;
        const std::uint64_t first_row = row_of(first);
        const bool in_same_row = goes_on && first_row == last_row;
        const bool in_same_page = counts.bytes != 0 && first / byte_page_size == (next - 1) / byte_page_size;
        counts.stretches += goes_on ? 0 : 1;
        counts.rows += row_of(last) - first_row + (in_same_row ? 0 : 1);
        counts.pages += last / byte_page_size - first / byte_page_size + (in_same_page ? 0 : 1);
        counts.bytes += last - first + 1;
        next = last + 1;
        last_row = row_of(last);
    }
    [[nodiscard]] const byte_row_counts& result() const { return counts; }

private:
    [[nodiscard]] std::uint64_t row_of(std::uint64_t address) const {
        return address / byte_page_size * rows_a_page + address % byte_page_size / length;
    }

    std::uint64_t length;
    std::uint64_t rows_a_page;
    std::uint64_t next = 0;
    std::uint64_t last_row = 0;
    byte_row_counts counts;
};

std::string_view record_length_text(const write_options& options) {
    return chosen(options.choices, record_length_choice.name).value_or("");
}

} // namespace

byte_row_counts count_byte_rows(const memory_image& image, std::uint32_t length) {
    row_counter counter(length);
    const std::uint64_t bytes = bytes_of_width(image.width());
    for_each_set_stretch(image.words(), [&](std::uint64_t first, std::uint64_t last) {
        counter.take((image.base() + first) * bytes, (image.base() + last + 1) * bytes - 1);
    });
    return counter.result();
}

std::optional<std::uint64_t> last_byte_address(const memory_image& image) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const auto bounds = image.bounds();
    if (!bounds) {
        return std::nullopt;
    }
    const std::uint64_t bytes = bytes_of_width(image.width());
    return bounds->last >= largest / bytes ? largest : (bounds->last + 1) * bytes - 1;
}

std::optional<diagnostic> byte_address_obstacle(const memory_image& image, std::uint64_t largest,
                                                std::string_view title) {
    const auto last = last_byte_address(image);
    if (!last || *last <= largest) {
        return std::nullopt;
    }
    return diagnose::byte_address({}, fmt::format("{:X}", *last), fmt::format("{:X}", largest), title);
}

std::optional<std::uint32_t> chosen_record_length(const write_options& options, std::uint32_t usual,
                                                  std::uint32_t most) {
    const std::string_view text = record_length_text(options);
    if (text.empty() && !chosen(options.choices, record_length_choice.name)) {
        return usual;
    }
    std::uint32_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    const bool is_number = error == std::errc() && end == text.data() + text.size();
    if (is_number && length >= 1 && length <= most) {
        return length;
    }
    return std::nullopt;
}

diagnostic improper_record_length(const write_options& options, std::uint32_t most) {
    return diagnose::choice_value({}, record_length_choice.name, record_length_text(options),
                                  fmt::format("1 to {}", most));
}

} // namespace kvrimage
