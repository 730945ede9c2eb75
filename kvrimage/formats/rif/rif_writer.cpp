#include "kvrimage/formats/rif/rif_writer.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_search.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <iterator>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t words_per_line = 8;

class rif_line_writer {
public:
    explicit rif_line_writer(text_sink& target) : output(target) {}

    void write(std::uint64_t address, std::string_view word) {
        if (address != next || address % words_per_line == 0) {
            begin_line(address);
        }
        line.append(word);
        line += ' ';
        next = address + 1;
    }
    /// Ends the file. Requires at least one word.
    void finish() {
        line += '\n';
        output.write(line);
        output.flush();
    }

private:
    void begin_line(std::uint64_t address) {
        line += line.empty() ? "" : "\n";
        output.write(line);
        line.clear();
        fmt::format_to(std::back_inserter(line), "@{:x}\n", address);
    }

    sink_buffer output;
    std::string line; ///< with the preceding address line
    std::uint64_t next = ~std::uint64_t{0};
};

/// Counts words, each with a blank, and address lines.
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
    const image_words& words = image.words();
    if (const auto offset = find_unshown_word(words, image.width(), radix::hex, 0, words.size())) {
        found.push_back(diagnose::dont_care_bit({}, words[*offset], image.base() + *offset));
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
    for_each_set_stretch(image.words(),
                         [&size](std::uint64_t first, std::uint64_t last) { size.take(first, last); });
    return size.result();
}

} // namespace kvrimage
