#include "kvrimage/formats/logisim/logisim_writer.h"

#include "kvrimage/formats/plain_words.h"
#include "kvrimage/formats/shown_words.h"
#include "kvrimage/formats/sink_buffer.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

constexpr std::uint64_t words_per_logisim_line = 16;
/// Shorter runs are written as single words, which take less space.
constexpr std::uint64_t shortest_logisim_run = 4;

constexpr std::string_view target_without_addresses = "a file without addresses";

enum class layout : std::uint8_t { addressed, plain, runs };

layout layout_of(const write_options& options) {
    const auto name = chosen(options.choices, logisim_variant_choice);
    if (name == "v2") {
        return layout::runs;
    }
    return name == "v3-plain" ? layout::plain : layout::addressed;
}

std::string_view first_line_of(layout of) {
    switch (of) {
    case layout::plain:
        return "v3.0 hex words plain\n";
    case layout::runs:
        return "v2.0 raw\n";
    default: // layout::addressed
        break;
    }
    return "v3.0 hex words addressed\n";
}

std::size_t address_digits_of(const memory_image& image) {
    return fmt::formatted_size("{:x}", image.bounds().value_or(address_range{0, 0}).last);
}

/// Writes the tokens of a file without addresses.
class token_lines {
public:
    explicit token_lines(sink_buffer& target) : output(target) {}

    void write(std::string_view token) {
        if (on_line == words_per_logisim_line) {
            output.write("\n");
            on_line = 0;
        }
        output.write(on_line == 0 ? "" : " ");
        output.write(token);
        ++on_line;
    }
    /// Ends the file. Requires at least one token.
    void finish() { output.write("\n"); }

private:
    sink_buffer& output;
    std::uint64_t on_line = 0;
};

void write_addressed(const memory_image& image, sink_buffer& output) {
    const std::size_t digits = address_digits_of(image);
    std::uint64_t next = ~std::uint64_t{0};
    bool line_open = false;
    for_each_shown_word(image, radix::hex, [&](std::uint64_t address, std::string_view word) {
        if (address != next || address % words_per_logisim_line == 0) {
            output.write(fmt::format("{}{:0{}x}:", line_open ? "\n" : "", address, digits));
            line_open = true;
        }
        output.write(" ");
        output.write(word);
        next = address + 1;
    });
    output.write(line_open ? "\n" : "");
}

void write_plain(const memory_image& image, sink_buffer& output) {
    token_lines lines(output);
    for_each_shown_word(image, radix::hex,
                        [&lines](std::uint64_t /*address*/, std::string_view word) { lines.write(word); });
    lines.finish();
}

void write_runs(const memory_image& image, sink_buffer& output) {
    token_lines lines(output);
    for_each_set_run(image.words(), [&lines](const text_run& run) {
        if (length_of(run) >= shortest_logisim_run) {
            lines.write(fmt::format("{}*{}", length_of(run), run.text));
            return;
        }
        for (std::uint64_t offset = run.first; offset <= run.last; ++offset) {
            lines.write(run.text);
        }
    });
    lines.finish();
}

/// Counts the lines of a file with addresses.
std::uint64_t count_addressed_lines(const memory_image& image) {
    std::uint64_t lines = 0;
    std::uint64_t next = ~std::uint64_t{0};
    for_each_set_stretch(image.words(), [&](std::uint64_t first_offset, std::uint64_t last_offset) {
        const std::uint64_t first = image.base() + first_offset;
        const std::uint64_t last = image.base() + last_offset;
        const bool goes_on = first == next && first % words_per_logisim_line != 0;
        lines += last / words_per_logisim_line - first / words_per_logisim_line + (goes_on ? 0 : 1);
        next = last + 1;
    });
    return lines;
}

/// Returns the size of the tokens, each with a blank or line end.
std::uint64_t size_of_run_tokens(const memory_image& image, std::uint64_t word) {
    std::uint64_t size = 0;
    for_each_cycle_or_run(
        image.words(),
        [&](const text_cycle& cycle) {
            size += cycle.length() * word;
            return cycle.length();
        },
        [&](const text_run& run) {
            const std::uint64_t length = length_of(run);
            size +=
                length >= shortest_logisim_run ? fmt::formatted_size("{}*", length) + word : length * word;
        });
    return size;
}

} // namespace

std::vector<diagnostic> can_write_logisim(const memory_image& image, const write_options& options) {
    if (layout_of(options) == layout::addressed) {
        return {};
    }
    std::vector<diagnostic> found;
    refuse_base(image, target_without_addresses, found);
    refuse_gaps(image, target_without_addresses, found);
    return found;
}

void write_logisim(const memory_image& image, const write_options& options, text_sink& output) {
    sink_buffer buffer(output);
    buffer.write(first_line_of(layout_of(options)));
    switch (layout_of(options)) {
    case layout::addressed:
        write_addressed(image, buffer);
        break;
    case layout::plain:
        write_plain(image, buffer);
        break;
    default: // layout::runs
        write_runs(image, buffer);
        break;
    }
    buffer.flush();
}

std::uint64_t written_logisim_size(const memory_image& image, const write_options& options) {
    const std::uint64_t word = most_characters_of_word(radix::hex, image.width()) + 1;
    const std::uint64_t first_line = first_line_of(layout_of(options)).size();
    switch (layout_of(options)) {
    case layout::addressed:
        return first_line + image.count_set() * word +
               count_addressed_lines(image) * (address_digits_of(image) + 2);
    case layout::runs:
        return first_line + size_of_run_tokens(image, word);
    default: // layout::plain
        break;
    }
    return first_line + image.count_set() * word;
}

} // namespace kvrimage
