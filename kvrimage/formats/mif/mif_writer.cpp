#include "kvrimage/formats/mif/mif_writer.h"

#include "kvr/memory/mif/fast_mif_rows.h"
#include "kvr/memory/mif/mif_writer.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_tokens.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

/// How the lines of a MIF look.
struct mif_layout {
    mif_layout(const memory_image& image, const write_options& options)
        : address_radix(options.address_radix.value_or(radix::hex)),
          data_radix(options.data_radix.value_or(radix::hex)),
          runs(options.runs),
          width(image.width()),
          address_width(
              kvr::address_length(static_cast<std::uint32_t>(image.depth() - 1), kvr_radix(address_radix))) {}

    /// The line that gives @p data to addresses; its LF is part of it.
    void append_line(std::string& out, std::uint64_t first, std::uint64_t last, std::string_view data) const {
        kvr::append_content_line(out, static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(last),
                                 data, kvr_radix(address_radix), address_width, {});
    }
    /// True when the image holds its words as they are written: can_write_mif() has refused the ones that it
    /// holds as binary digits, which have don't-care bits beside others.
    [[nodiscard]] bool shows_words() const noexcept { return data_radix == radix::hex; }

    radix address_radix;
    radix data_radix;
    bool runs;
    std::uint32_t width;
    std::size_t address_width;
};

// --- can it be written? ---

/// Characters of the longest line with words in @p data_radix, without its LF.
std::size_t longest_line(const memory_image& image, const mif_layout& layout, radix data_radix) {
    std::string line;
    const std::string word(most_characters_of_word(data_radix, image.width()), '0');
    layout.append_line(line, 0, layout.runs ? image.depth() - 1 : 0, word);
    return line.size() - 1;
}

void add_fault_of_lines(std::vector<diagnostic>& faults, const memory_image& image,
                        const mif_layout& layout) {
    const std::size_t length = longest_line(image, layout, layout.data_radix);
    if (length > longest_kvr_line) {
        const bool hex_fits = longest_line(image, layout, radix::hex) <= longest_kvr_line;
        faults.push_back(diagnose::mif_line_length({}, image.width(), title_of(layout.data_radix), length,
                                                   longest_kvr_line, hex_fits ? "write them in HEX" : ""));
    }
}

/// Looks for a word that the data radix cannot show.
class dont_care_search {
public:
    dont_care_search(const memory_image& searched, radix shown_in) : image(searched), data_radix(shown_in) {}

    [[nodiscard]] std::optional<std::uint64_t> first() {
        for_each_row_cycle_or_run(
            image.words(), [](const kvr::word_row& row, std::uint64_t) { return pass_row(row); },
            [this](const text_cycle& cycle) { return pass_cycle(cycle); },
            [this](const text_run& run) { look_at(run.first, run.text); });
        return found;
    }

private:
    /// Words without don't-care digits are shown in every radix.
    static std::uint32_t pass_row(const kvr::word_row& row) {
        const std::size_t dont_care = row.all().find('X');
        return dont_care == std::string_view::npos ? row.count
                                                   : static_cast<std::uint32_t>(dont_care / row.length);
    }
    std::uint64_t pass_cycle(const text_cycle& cycle) {
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            look_at(cycle.first + index, image.words()[cycle.first + index]);
        }
        return cycle.length();
    }
    void look_at(std::uint64_t address, std::string_view word) {
        if (!found && !is_plain(word) && !show_word(word, data_radix, image.width(), text)) {
            found = address;
        }
    }

    const memory_image& image;
    radix data_radix;
    std::optional<std::uint64_t> found;
    std::string text;
};

void add_fault_of_words(std::vector<diagnostic>& faults, const memory_image& image, radix data_radix) {
    if (const auto address = dont_care_search(image, data_radix).first()) {
        const std::string_view word = image.words()[*address];
        std::string in_hex;
        const bool hex_shows = show_word(word, radix::hex, image.width(), in_hex);
        faults.push_back(diagnose::mif_dont_care({}, word, *address, title_of(data_radix),
                                                 hex_shows ? "write it in HEX" : "write it in BIN"));
        faults.back().address = *address;
    }
}

// --- writing ---

class mif_writing {
public:
    mif_writing(const memory_image& written, const mif_layout& of_lines, text_sink& sink)
        : image(written),
          layout(of_lines),
          rows(kvr_radix(layout.address_radix), layout.address_width,
               layout.runs ? kvr::equal_words::share_a_line : kvr::equal_words::have_lines_of_their_own),
          output(sink) {}

    void write() {
        write_header();
        for_each_row_cycle_or_run(
            image.words(),
            [this](const kvr::word_row& row, std::uint64_t address) { return write_row(row, address); },
            [this](const text_cycle& cycle) { return write_cycle(cycle); },
            [this](const text_run& run) { write_run(run); });
        output.write("END;\n");
        output.flush();
    }

private:
    void write_header() {
        output.write(
            fmt::format("{}\n\nWIDTH={};\nDEPTH={};\n\nADDRESS_RADIX={};\nDATA_RADIX={};\n\nCONTENT BEGIN\n",
                        mif_first_line, image.width(), image.depth(), title_of(layout.address_radix),
                        title_of(layout.data_radix)));
    }
    std::uint32_t write_row(const kvr::word_row& row, std::uint64_t address) {
        if (!layout.shows_words()) {
            return 0;
        }
        const std::size_t most_lines = sink_buffer::room_limit / (row_line + row.length);
        const kvr::word_row part =
            row.part(0, static_cast<std::uint32_t>(std::min<std::size_t>(row.count, most_lines)));
        return output.write_with([&](kvr::output_file& file) {
            return rows.write(part, static_cast<std::uint32_t>(address), file);
        });
    }
    void write_line(std::uint64_t first, std::uint64_t last, std::string_view data) {
        line.clear();
        layout.append_line(line, first, last, data);
        output.write(line);
    }
    void write_run(const text_run& run) {
        show_word(run.text, layout.data_radix, layout.width, text);
        if (layout.runs) {
            write_line(run.first, run.last, text);
            return;
        }
        for (std::uint64_t address = run.first; address <= run.last; ++address) {
            write_line(address, address, text);
        }
    }
    /// Returns how many words were written: none where a range is not wanted.
    std::uint64_t write_cycle(const text_cycle& cycle) {
        if (!layout.runs) {
            return 0;
        }
        line.clear();
        layout.append_line(line, cycle.first, cycle.last, {});
        write_line(cycle.first, cycle.last,
                   words_of_turn(cycle, line.size() - std::string_view(";\n").size()));
        return cycle.length();
    }
    /// The words of one turn of @p cycle, as a range repeats them. They go on in further lines where one
    /// would be too long, in the column of the first one;
    /// @p line_begin characters come before them in each line.
    std::string words_of_turn(const text_cycle& cycle, std::size_t line_begin) {
        const std::string next_line = fmt::format("\n\t{:{}}", "", line_begin - 1);
        std::string words;
        std::size_t line_length = line_begin;
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            show_word(image.words()[cycle.first + index], layout.data_radix, layout.width, text);
            if (index != 0) {
                // The ";" needs a place, too.
                const bool fits = line_length + 1 + text.size() + 1 <= longest_kvr_line;
                words.append(fits ? " " : next_line);
                line_length = fits ? line_length + 1 : line_begin;
            }
            line_length += text.size();
            words.append(text);
        }
        return words;
    }

    const memory_image& image;
    const mif_layout& layout;
    kvr::fast_mif_rows rows;
    sink_buffer output;
    /// At least the characters of the line of one address, without its word.
    std::size_t row_line = layout.address_width + 16;
    std::string line;
    std::string text;
};

// --- size ---

class mif_size {
public:
    mif_size(const memory_image& measured, const mif_layout& of_lines)
        : image(measured),
          layout(of_lines),
          single_line(length_of_line(0, 0)),
          range_line(length_of_line(image.depth() - 2, image.depth() - 1)) {}

    [[nodiscard]] std::uint64_t total() {
        for_each_row_cycle_or_run(
            image.words(), [this](const kvr::word_row& row, std::uint64_t) { return add_row(row); },
            [this](const text_cycle& cycle) { return add_cycle(cycle); },
            [this](const text_run& run) { add_run(run); });
        return size;
    }

private:
    /// Without a word.
    [[nodiscard]] std::uint64_t length_of_line(std::uint64_t first, std::uint64_t last) const {
        std::string line;
        layout.append_line(line, first, last, {});
        return line.size();
    }
    std::uint64_t length_of_word(std::string_view word) {
        show_word(word, layout.data_radix, layout.width, text);
        return text.size();
    }
    /// The words up to one that the next word equals, or the last, whose next is not known.
    std::uint32_t add_row(const kvr::word_row& row) {
        if (!layout.shows_words()) {
            return 0;
        }
        std::uint32_t count = layout.runs ? 0 : row.count;
        while (count + 1 < row.count && row[count] != row[count + 1]) {
            ++count;
        }
        size += count * (single_line + row.length);
        return count;
    }
    void add_run(const text_run& run) {
        const std::uint64_t lines = layout.runs ? 1 : length_of(run);
        const bool is_range = layout.runs && run.first != run.last;
        size += lines * ((is_range ? range_line : single_line) + length_of_word(run.text));
    }
    std::uint64_t add_cycle(const text_cycle& cycle) {
        std::uint64_t turn = 0;
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            turn += length_of_word(image.words()[cycle.first + index]) + (layout.runs ? 1 : single_line);
        }
        const std::uint64_t turns = length_of(cycle) / cycle.period;
        size += layout.runs ? turn + range_line : turn * turns;
        return layout.runs ? length_of(cycle) : turns * cycle.period;
    }

    const memory_image& image;
    const mif_layout& layout;
    std::uint64_t single_line;
    std::uint64_t range_line;
    std::uint64_t size = 0;
    std::string text;
};

} // namespace

std::vector<diagnostic> can_write_mif(const memory_image& image, const write_options& options) {
    std::vector<diagnostic> faults;
    if (image.base() != 0) {
        faults.push_back(diagnose::mif_base({}, image.base()));
    }
    if (image.depth() > deepest_mif) {
        faults.push_back(diagnose::mif_too_deep({}, image.depth(), deepest_mif));
        return faults;
    }
    const mif_layout layout(image, options);
    add_fault_of_lines(faults, image, layout);
    add_fault_of_words(faults, image, layout.data_radix);
    return faults;
}

void write_mif(const memory_image& image, const write_options& options, text_sink& output) {
    const mif_layout layout(image, options);
    mif_writing(image, layout, output).write();
}

std::uint64_t written_size_of_mif(const memory_image& image, const write_options& options) {
    constexpr std::uint64_t longest_header = 160;
    const mif_layout layout(image, options);
    return longest_header + mif_size(image, layout).total();
}

} // namespace kvrimage
