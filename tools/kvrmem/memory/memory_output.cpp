#include "tools/kvrmem/memory/memory_output.h"

#include "kvr/memory/hex_record_rows.h"
#include "kvr/memory/mif_line_rows.h"
#include "kvr/memory/mif_reader.h"
#include "kvr/memory/mif_writer.h"
#include "kvr/numeric/digit_value.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <array>
#include <iterator>
#include <string_view>

namespace kvrmem {

namespace {

/// Goes over the words that are set, in order. Where they stand in a row it calls @p take_row with the row
/// and the address of its first word, which answers how many of them it has taken; where it took none, and
/// everywhere else, @p take_run with the run of equal words.
template <class TakeRow, class TakeRun>
void for_each_row_or_run(const kvr::word_store& words, TakeRow&& take_row, TakeRun&& take_run) {
    for (std::uint64_t address = 0; address < words.size();) {
        const auto first = static_cast<std::uint32_t>(address);
        const kvr::word_row row = words.row_at(first);
        if (row.count != 0 && row.length != 0) {
            if (const std::uint32_t taken = take_row(row, first)) {
                address += taken;
                continue;
            }
        }
        const kvr::word_run run = words.run_at(first);
        if (!run.text.empty()) {
            take_run(run);
        }
        address = std::uint64_t{run.last} + 1;
    }
}

/// Calls @p take with every run of equal words that are set, in order.
template <class Take>
void for_each_run(const kvr::word_store& words, Take&& take) {
    for_each_row_or_run(
        words, [](const kvr::word_row&, std::uint32_t) { return 0U; }, take);
}

// --- MIF ---

/// The largest number that the header of a MIF takes.
constexpr std::uint32_t deepest_mif = 0x7FFFFFFF;

void write_mif_header(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    output.write(fmt::format("-- Memory Initialization File, written by kvrmem\n\nWIDTH={};\nDEPTH={};\n\n"
                             "ADDRESS_RADIX={};\nDATA_RADIX={};\n\nCONTENT BEGIN\n",
                             image.width, image.depth, radix_title(layout.address_radix),
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

/// True when hexadecimal is how the image holds the words of @p row.
bool is_as_shown_in_hex(const kvr::word_row& row, std::uint32_t width) {
    return row.length == kvr::digit_count(width, kvr::bits_per_digit(RADIX_HEX));
}

void write_mif(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    write_mif_header(image, layout, output);
    const std::size_t address_width = kvr::address_length(image.depth - 1, layout.address_radix);
    kvr::mif_line_rows rows(layout.address_radix, address_width,
                            layout.with_runs ? kvr::equal_words::share_a_line
                                             : kvr::equal_words::have_lines_of_their_own);
    const auto write_row = [&](const kvr::word_row& row, std::uint32_t address) {
        return layout.data_radix == RADIX_HEX && is_as_shown_in_hex(row, image.width)
                   ? rows.write(row, address, output)
                   : 0;
    };
    std::string text;
    for_each_row_or_run(image.words, write_row, [&](const kvr::word_run& run) {
        show_word(run.text, layout.data_radix, image.width, text);
        write_mif_run(run, text, layout, address_width, output);
    });
    output.write("END;\n");
}

// --- Intel HEX: one word a record, addresses count words ---

constexpr std::uint32_t bits_per_byte = 8;
constexpr std::uint32_t longest_record = 255;
constexpr std::uint32_t page_shift = 16;

unsigned digit(char character) {
    return static_cast<unsigned>(character <= '9' ? character - '0' : character - 'A' + 10);
}

/// The sum of the bytes that the hexadecimal @p text (an even number of digits) encodes.
unsigned byte_sum(std::string_view text) {
    unsigned sum = 0;
    for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
        sum += digit(text[at]) * 16 + digit(text[at + 1]);
    }
    return sum;
}

/// Appends the record with the fields @p fields (record length up to the data).
void append_record(std::string& out, std::string_view fields) {
    const unsigned checksum = (0U - byte_sum(fields)) & 0xFFU;
    fmt::format_to(std::back_inserter(out), ":{}{:02X}\n", fields, checksum);
}

class hex_writer {
public:
    hex_writer(const memory_image& image, kvr::output_file& to)
        : output(to),
          bytes((image.width + bits_per_byte - 1) / bits_per_byte),
          rows(bytes, kvr::letter_case::upper) {}

    /// Writes the first words of @p row, the first with the address @p address; how many, is the answer.
    std::uint32_t write(const kvr::word_row& row, std::uint32_t address) {
        begin_page_of(address);
        return rows.write(row, address & page_mask, output);
    }

    void write(std::uint32_t address, std::string_view word) {
        begin_page_of(address);
        fields.clear();
        fmt::format_to(std::back_inserter(fields), "{:02X}{:04X}00", bytes, address & page_mask);
        fields.append(2 * std::size_t{bytes} - word.size(), '0').append(word);
        add(fields);
    }

private:
    static constexpr std::uint32_t page_mask = (1U << page_shift) - 1;

    void begin_page_of(std::uint32_t address) {
        if ((address >> page_shift) != page) {
            page = address >> page_shift;
            add(fmt::format("02000004{:04X}", page));
        }
    }
    void add(std::string_view record_fields) {
        record.clear();
        append_record(record, record_fields);
        output.write(record);
    }

    kvr::output_file& output;
    std::uint32_t bytes;
    kvr::hex_record_rows rows;
    std::uint32_t page = 0;
    std::string fields;
    std::string record;
};

void write_hex(const memory_image& image, kvr::output_file& output) {
    hex_writer writer(image, output);
    const auto write_row = [&](const kvr::word_row& row, std::uint32_t address) {
        return writer.write(row, address);
    };
    for_each_row_or_run(image.words, write_row, [&](const kvr::word_run& run) {
        for (std::uint64_t address = run.first; address <= run.last; ++address) {
            writer.write(static_cast<std::uint32_t>(address), run.text);
        }
    });
    output.write(":00000001FF\n");
}

// --- RIF: eight words a line, an address line before each of these and behind every gap ---

constexpr std::uint32_t words_per_line = 8;

class rif_writer {
public:
    explicit rif_writer(kvr::output_file& to) : output(to) {}

    void write(std::uint32_t address, std::string_view word) {
        if (address != next || address % words_per_line == 0) {
            output.write(fmt::format("{}@{:x}\n", line_open ? "\n" : "", address));
        }
        output.write(word);
        output.write(' ');
        line_open = true;
        next = std::uint64_t{address} + 1;
    }
    void finish() {
        if (line_open) {
            output.write('\n');
        }
    }

private:
    static constexpr std::uint64_t nowhere = ~std::uint64_t{0};

    kvr::output_file& output;
    std::uint64_t next = nowhere;
    bool line_open = false;
};

void write_rif(const memory_image& image, kvr::output_file& output) {
    rif_writer writer(output);
    std::string text;
    for_each_run(image.words, [&](const kvr::word_run& run) {
        show_word(run.text, RADIX_HEX, image.width, text);
        for (std::uint64_t address = run.first; address <= run.last; ++address) {
            writer.write(static_cast<std::uint32_t>(address), text);
        }
    });
    writer.finish();
}

// --- don't-care digits ---

bool can_show_dont_cares(std::string_view word, const memory_image& image, const output_layout& layout) {
    std::string text;
    switch (layout.format) {
    case FILE_TYPE_MIF:
        return show_word(word, layout.data_radix, image.width, text);
    case FILE_TYPE_HEX:
        return false;
    default:
        return show_word(word, RADIX_HEX, image.width, text);
    }
}

std::string reason_against_dont_cares(const output_layout& layout) {
    switch (layout.format) {
    case FILE_TYPE_MIF:
        return fmt::format("has a don't-care digit, which {} cannot show", radix_title(layout.data_radix));
    case FILE_TYPE_HEX:
        return "has a don't-care digit, which Intel HEX cannot hold";
    default:
        return "has a don't-care bit beside a plain one, which RIF cannot hold";
    }
}

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

} // namespace

unwritable_word::unwritable_word(std::uint32_t word_address, std::string_view word, std::string_view reason)
    : tool_error(exit_code::bad_input, fmt::format("word {} at address {} {}", word, word_address, reason)),
      place(word_address) {}

void require_writable(const memory_image& image, const output_layout& layout) {
    if (layout.format == FILE_TYPE_HEX && image.width > longest_record * bits_per_byte) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("words of {} bits do not fit an Intel HEX record, which holds {} bits",
                                     image.width, longest_record * bits_per_byte));
    }
    if (layout.format == FILE_TYPE_MIF && image.depth > deepest_mif) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("a MIF holds at most {} words, these are {}", deepest_mif, image.depth));
    }
    if (layout.format == FILE_TYPE_MIF) {
        require_short_lines(image, layout);
    }
    // Words without don't-care digits can be written in every format and radix.
    const auto pass_row = [](const kvr::word_row& row, std::uint32_t) {
        const std::size_t dont_care = row.all().find('X');
        return dont_care == std::string_view::npos ? row.count
                                                   : static_cast<std::uint32_t>(dont_care / row.length);
    };
    for_each_row_or_run(image.words, pass_row, [&](const kvr::word_run& run) {
        if (!is_plain(run.text) && !can_show_dont_cares(run.text, image, layout)) {
            throw unwritable_word(run.first, run.text, reason_against_dont_cares(layout));
        }
    });
}

void write_memory(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    switch (layout.format) {
    case FILE_TYPE_MIF:
        write_mif(image, layout, output);
        break;
    case FILE_TYPE_HEX:
        write_hex(image, output);
        break;
    default:
        write_rif(image, output);
        break;
    }
}

} // namespace kvrmem
