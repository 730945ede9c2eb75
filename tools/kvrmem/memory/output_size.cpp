#include "tools/kvrmem/memory/output_size.h"

#include "kvr/memory/mif/mif_writer.h"
#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

/// Intel HEX: a record a word, and one where a page begins.
class hex_size {
public:
    explicit hex_size(const memory_image& image)
        : record(record_frame + 2 * std::uint64_t{bytes_for(image.width)}) {}

    void take(std::uint32_t first, std::uint32_t last) {
        const std::uint32_t first_page = first >> hex_page_shift;
        const std::uint32_t last_page = last >> hex_page_shift;
        size += (last - std::uint64_t{first} + 1) * record;
        size += (last_page - first_page + (first_page != page ? 1U : 0U)) * (record_frame + page_digits);
        page = last_page;
    }
    [[nodiscard]] std::uint64_t result() const { return size; }

private:
    static constexpr std::uint64_t record_frame = 12; // colon, length, address, type, checksum, line end
    static constexpr std::uint64_t page_digits = 4;

    std::uint64_t record;
    std::uint64_t size = record_frame; ///< the end record
    std::uint32_t page = 0;
};

/// RIF: a word and a blank each, and address lines.
class rif_size {
public:
    explicit rif_size(const memory_image& image)
        : word(most_characters_of_word({RADIX_HEX}, image.width) + 1) {}

    void take(std::uint32_t first, std::uint32_t last) {
        constexpr std::uint32_t words_per_line = 8;
        const bool goes_on = first == next && first % words_per_line != 0;
        const std::uint64_t lines = last / words_per_line - first / words_per_line + (goes_on ? 0 : 1);
        size += (last - std::uint64_t{first} + 1) * word + lines * (fmt::formatted_size("@{:x}\n", last) + 1);
        next = std::uint64_t{last} + 1;
    }
    [[nodiscard]] std::uint64_t result() const { return size; }

private:
    std::uint64_t word;
    std::uint64_t next = 0; ///< address after the last word
    std::uint64_t size = 0;
};

template <class Size>
std::uint64_t size_of_words(const memory_image& image, Size size) {
    for_each_row_cycle_or_run(
        image.words,
        [&size](const kvr::word_row& row, std::uint32_t first) {
            size.take(first, first + row.count - 1);
            return row.count;
        },
        [&size](const kvr::word_cycle& cycle) {
            size.take(cycle.first, cycle.last);
            return length_of(cycle);
        },
        [&size](const kvr::word_run& run) { size.take(run.first, run.last); });
    return size.result();
}

/// MIF: a line for each run or cycle, or for each word.
class mif_size {
public:
    mif_size(const memory_image& memory, const output_layout& output_layout)
        : image(memory),
          layout(output_layout),
          address_width(kvr::address_length(image.depth - 1, layout.address_radix)),
          single_line(length_of_line(0, 0)) {}

    [[nodiscard]] std::uint64_t result() {
        for_each_row_cycle_or_run(
            image.words,
            [this](const kvr::word_row& row, std::uint32_t first) { return take_row(row, first); },
            [this](const kvr::word_cycle& cycle) { return take_cycle(cycle); },
            [this](const kvr::word_run& run) { take_run(run.first, run.last, run.text); });
        end_line();
        return size;
    }

private:
    /// Equal words that share a line.
    struct open_line {
        std::uint32_t first;
        std::uint32_t last;
        std::string word;
    };

    /// Without a word.
    [[nodiscard]] std::uint64_t length_of_line(std::uint32_t first, std::uint32_t last) const {
        std::string line;
        kvr::append_content_line(line, first, last, "", layout.address_radix, address_width, "");
        return line.size();
    }
    std::uint64_t length_of_word(std::string_view word) {
        show_word(word, layout.data_radix, image.width, text);
        return text.size();
    }
    void take_run(std::uint32_t first, std::uint32_t last, std::string_view word) {
        if (!layout.with_runs) {
            size += (single_line + length_of_word(word)) * (last - std::uint64_t{first} + 1);
            return;
        }
        if (!pending || first != std::uint64_t{pending->last} + 1 || word != pending->word) {
            end_line();
            pending = open_line{first, last, std::string(word)};
        }
        pending->last = last;
    }
    /// Adds the line that following words can make longer no more.
    void end_line() {
        if (pending) {
            size += length_of_line(pending->first, pending->last) + length_of_word(pending->word);
            pending.reset();
        }
    }
    std::uint32_t take_row(const kvr::word_row& row, std::uint32_t first) {
        for (std::uint32_t index = 0; index < row.count; ++index) {
            take_run(first + index, first + index, row[index]);
        }
        return row.count;
    }
    std::uint64_t take_cycle(const kvr::word_cycle& cycle) {
        end_line();
        std::uint64_t turn = 0;
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            turn += length_of_word(image.words[cycle.first + index]) + (layout.with_runs ? 1 : single_line);
        }
        size += layout.with_runs ? turn + length_of_line(cycle.first, cycle.last)
                                 : turn * (length_of(cycle) / cycle.period);
        return length_of(cycle);
    }

    const memory_image& image;
    const output_layout& layout;
    std::size_t address_width;
    std::uint64_t single_line;
    std::optional<open_line> pending;
    std::uint64_t size = 0;
    std::string text;
};

} // namespace

std::uint64_t count_set_words(const kvr::word_store& words) {
    std::uint64_t count = 0;
    const auto take_row = [&count](const kvr::word_row& row, std::uint32_t) {
        count += row.count;
        return row.count;
    };
    const auto take_cycle = [&count](const kvr::word_cycle& cycle) {
        count += length_of(cycle);
        return length_of(cycle);
    };
    for_each_row_cycle_or_run(words, take_row, take_cycle,
                              [&count](const kvr::word_run& run) { count += length_of(run); });
    return count;
}

std::uint64_t estimated_output_size(const memory_image& image, const output_layout& layout) {
    switch (layout.format) {
    case FILE_TYPE_MIF:
        return mif_size(image, layout).result();
    case FILE_TYPE_HEX:
        return size_of_words(image, hex_size(image));
    default:
        return size_of_words(image, rif_size(image));
    }
}

} // namespace kvrmem
