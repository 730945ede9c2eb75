#include "tools/kvrmem/memory/mif_output.h"

#include "kvr/memory/mif/fast_mif_rows.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/memory/mif/mif_writer.h"
#include "kvr/numeric/digit_value.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"

#include <fmt/format.h>

namespace kvrmem {

namespace {

/// The largest number that the header of a MIF takes.
constexpr std::uint32_t deepest_mif = 0x7FFFFFFF;

/// A reader takes lines of a MIF up to a limit.
void require_short_lines(const memory_image& image, const output_layout& layout) {
    std::string line;
    const std::size_t address_width = kvr::address_length(image.depth - 1, layout.address_radix);
    const std::string longest_word(most_characters_of_word({layout.data_radix}, image.width), '0');
    kvr::append_content_line(line, 0, layout.with_runs ? image.depth - 1 : 0, longest_word,
                             layout.address_radix, address_width, {});
    const std::size_t length = line.size() - 1;
    if (length > kvr::mif_reader::line_limit) {
        throw tool_error(
            exit_code::bad_input,
            fmt::format("words of {} bits in {} need lines of {} characters, and a MIF may have {}",
                        image.width, radix_title(layout.data_radix), length, kvr::mif_reader::line_limit));
    }
}

void write_mif_header(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    output.write(fmt::format("{}\n\nWIDTH={};\nDEPTH={};\n\n"
                             "ADDRESS_RADIX={};\nDATA_RADIX={};\n\nCONTENT BEGIN\n",
                             mif_first_line, image.width, image.depth, radix_title(layout.address_radix),
                             radix_title(layout.data_radix)));
}

void write_mif_run(const kvr::word_run& run, std::string_view text, const output_layout& layout,
                   std::size_t address_width, kvr::output_file& output) {
    std::string line;
    if (layout.with_runs) {
        kvr::append_content_line(line, run.first, run.last, text, layout.address_radix, address_width, {});
        output.write(line);
        return;
    }
    for (std::uint64_t address = run.first; address <= run.last; ++address) {
        const auto single = static_cast<std::uint32_t>(address);
        line.clear();
        kvr::append_content_line(line, single, single, text, layout.address_radix, address_width, {});
        output.write(line);
    }
}

/// The words of one turn of @p cycle, as a range line repeats them. They go on in further lines, too, where
/// a reader would not take a longer one; @p line_begin characters stand before them in the first line.
std::string words_of_turn(const memory_image& image, const kvr::word_cycle& cycle, KVR_MEMORY_RADIXES radix,
                          std::size_t line_begin) {
    std::string words;
    std::string text;
    std::size_t line_length = line_begin;
    for (std::uint32_t index = 0; index < cycle.period; ++index) {
        show_word(image.words[cycle.first + index], radix, image.width, text);
        // The ";" needs a place, too.
        const bool fits = line_length + 1 + text.size() + 1 <= kvr::mif_reader::line_limit;
        if (index != 0) {
            words.append(fits ? " " : "\n\t");
        }
        line_length = (fits ? line_length : 0) + 1 + text.size();
        words.append(text);
    }
    return words;
}

/// Writes @p cycle as one range, and answers how many words that are: none where a range is not wanted.
std::uint64_t write_mif_cycle(const memory_image& image, const kvr::word_cycle& cycle,
                              const output_layout& layout, std::size_t address_width,
                              kvr::output_file& output) {
    if (!layout.with_runs) {
        return 0;
    }
    std::string line;
    kvr::append_content_line(line, cycle.first, cycle.last, {}, layout.address_radix, address_width, {});
    const std::string words = words_of_turn(image, cycle, layout.data_radix, line.size());
    line.clear();
    kvr::append_content_line(line, cycle.first, cycle.last, words, layout.address_radix, address_width, {});
    output.write(line);
    return length_of(cycle);
}

/// True when hexadecimal is how the image holds the words of @p row.
bool is_as_shown_in_hex(const kvr::word_row& row, std::uint32_t width) {
    return row.length == kvr::digit_count(width, kvr::bits_per_digit(RADIX_HEX));
}

} // namespace

void require_writable_mif(const memory_image& image, const output_layout& layout) {
    if (image.depth > deepest_mif) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("a MIF holds at most {} words, these are {}", deepest_mif, image.depth));
    }
    require_short_lines(image, layout);
}

void write_mif(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    write_mif_header(image, layout, output);
    const std::size_t address_width = kvr::address_length(image.depth - 1, layout.address_radix);
    kvr::fast_mif_rows rows(layout.address_radix, address_width,
                            layout.with_runs ? kvr::equal_words::share_a_line
                                             : kvr::equal_words::have_lines_of_their_own);
    const auto write_row = [&](const kvr::word_row& row, std::uint32_t address) {
        return layout.data_radix == RADIX_HEX && is_as_shown_in_hex(row, image.width)
                   ? rows.write(row, address, output)
                   : 0;
    };
    std::string text;
    const auto write_cycle = [&](const kvr::word_cycle& cycle) {
        return write_mif_cycle(image, cycle, layout, address_width, output);
    };
    for_each_row_cycle_or_run(image.words, write_row, write_cycle, [&](const kvr::word_run& run) {
        show_word(run.text, layout.data_radix, image.width, text);
        write_mif_run(run, text, layout, address_width, output);
    });
    output.write("END;\n");
}

} // namespace kvrmem
