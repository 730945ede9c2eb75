#include "kvrimage/formats/rif/rif_writer.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t words_per_line = 8;

/// Gathers text, so that the output gets large parts of it.
class buffered_output {
public:
    explicit buffered_output(text_sink& target) : output(target) { buffer.reserve(block + spare); }

    /// Append to this, little at a time.
    std::string& text() {
        if (buffer.size() >= block) {
            flush();
        }
        return buffer;
    }
    void flush() {
        output.write(buffer);
        buffer.clear();
    }

private:
    static constexpr std::size_t block = std::size_t{64} * 1024;
    static constexpr std::size_t spare = 1024;

    text_sink& output;
    std::string buffer;
};

class rif_line_writer {
public:
    explicit rif_line_writer(text_sink& output) : buffer(output) {}

    void write(std::uint64_t address, std::string_view word) {
        std::string& text = buffer.text();
        if (address != next || address % words_per_line == 0) {
            fmt::format_to(std::back_inserter(text), "{}@{:x}\n", line_open ? "\n" : "", address);
        }
        text.append(word);
        text += ' ';
        line_open = true;
        next = address + 1;
    }
    /// After the last word; there is one at least.
    void finish() {
        buffer.text() += '\n';
        buffer.flush();
    }

private:
    buffered_output buffer;
    std::uint64_t next = ~std::uint64_t{0};
    bool line_open = false;
};

/// True for words that are written as the image holds them.
bool is_as_written(std::size_t length, std::uint32_t width) {
    return length == most_characters_of_word(radix::hex, width);
}

/// The first word in @p words that RIF cannot hold, by its offset.
std::optional<std::uint64_t> find_dont_care_bit(const image_words& words, std::uint32_t width) {
    std::optional<std::uint64_t> found;
    std::string text;
    const auto look_at = [&](std::uint64_t offset, std::string_view word) {
        if (!found && !is_as_written(word.size(), width) && !show_word(word, radix::hex, width, text)) {
            found = offset;
        }
    };
    for_each_row_cycle_or_run(
        words,
        [&](const kvr::word_row& row, std::uint64_t first) {
            for (std::uint32_t index = 0; !is_as_written(row.length, width) && index < row.count; ++index) {
                look_at(first + index, row[index]);
            }
            return row.count;
        },
        [&](const text_cycle& cycle) {
            for (std::uint32_t index = 0; index < cycle.period; ++index) {
                look_at(cycle.first + index, words[cycle.first + index]);
            }
            return cycle.length();
        },
        [&](const text_run& run) { look_at(run.first, run.text); });
    return found;
}

/// A word and a blank each, and address lines.
class rif_size {
public:
    explicit rif_size(const memory_image& image)
        : base(image.base()),
          word(most_characters_of_word(radix::hex, image.width()) + 1) {}

    void take(std::uint64_t first_offset, std::uint64_t last_offset) {
        const std::uint64_t first = base + first_offset;
        const std::uint64_t last = base + last_offset;
        const bool goes_on = first == next && first % words_per_line != 0;
        const std::uint64_t lines = last / words_per_line - first / words_per_line + (goes_on ? 0 : 1);
        size += (last - first + 1) * word + lines * (fmt::formatted_size("@{:x}\n", last) + 1);
        next = last + 1;
    }
    [[nodiscard]] std::uint64_t result() const { return size; }

private:
    std::uint64_t base;
    std::uint64_t word;
    std::uint64_t next = 0; ///< address after the last word
    std::uint64_t size = 0;
};

} // namespace

std::vector<diagnostic> can_write_rif(const memory_image& image, const write_options& /*options*/) {
    const auto bounds = image.bounds();
    if (!bounds) {
        return {diagnose::nothing_to_write({})};
    }
    std::vector<diagnostic> found;
    if (bounds->last > highest_rif_address) {
        found.push_back(
            diagnose::address_outside({}, fmt::format("{:X}", bounds->last), highest_rif_address_text));
    }
    if (const auto offset = find_dont_care_bit(image.words(), image.width())) {
        found.push_back(diagnose::dont_care_bit({}, image.words()[*offset], image.base() + *offset));
        found.back().address = image.base() + *offset;
    }
    return found;
}

void write_rif(const memory_image& image, const write_options& /*options*/, text_sink& output) {
    rif_line_writer writer(output);
    std::string text;
    for_each_row_or_run(
        image.words(),
        [&](const kvr::word_row& row, std::uint64_t first) {
            for (std::uint32_t index = 0; index < row.count; ++index) {
                writer.write(image.base() + first + index, row[index]);
            }
            return row.count;
        },
        [&](const text_run& run) {
            show_word(run.text, radix::hex, image.width(), text);
            for (std::uint64_t offset = run.first; offset <= run.last; ++offset) {
                writer.write(image.base() + offset, text);
            }
        });
    writer.finish();
}

std::uint64_t written_rif_size(const memory_image& image, const write_options& /*options*/) {
    rif_size size(image);
    for_each_row_cycle_or_run(
        image.words(),
        [&size](const kvr::word_row& row, std::uint64_t first) {
            size.take(first, first + row.count - 1);
            return row.count;
        },
        [&size](const text_cycle& cycle) {
            size.take(cycle.first, cycle.last);
            return cycle.length();
        },
        [&size](const text_run& run) { size.take(run.first, run.last); });
    return size.result();
}

} // namespace kvrimage
