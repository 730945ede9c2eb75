#include "tools/kvrmem/memory_output.h"

#include "kvr/memory/mif_writer.h"
#include "tools/kvrmem/file_format.h"
#include "tools/kvrmem/tool_error.h"
#include "tools/kvrmem/word_text.h"

#include <fmt/format.h>

#include <array>
#include <iterator>
#include <string_view>

namespace kvrmem {

namespace {

/// Calls @p take with every run of equal words that are set, in order.
template <class Take>
void for_each_run(const kvr::word_store& words, Take&& take) {
    for (std::uint64_t address = 0; address < words.size();) {
        const kvr::word_run run = words.run_at(static_cast<std::uint32_t>(address));
        if (!run.text.empty()) {
            take(run);
        }
        address = std::uint64_t{run.last} + 1;
    }
}

// --- MIF ---

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

void write_mif(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    write_mif_header(image, layout, output);
    const std::size_t address_width = kvr::address_length(image.depth - 1, layout.address_radix);
    std::string text;
    for_each_run(image.words, [&](const kvr::word_run& run) {
        if (!show_word(run.text, layout.data_radix, image.width, text)) {
            throw unwritable_word{
                run.first, std::string(run.text),
                fmt::format("has a don't-care digit, which {} cannot show", radix_title(layout.data_radix))};
        }
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
          bytes((image.width + bits_per_byte - 1) / bits_per_byte) {}

    void write(std::uint32_t address, std::string_view word) {
        if ((address >> page_shift) != page) {
            page = address >> page_shift;
            add(fmt::format("02000004{:04X}", page));
        }
        constexpr std::uint32_t page_mask = (1U << page_shift) - 1;
        fields.clear();
        fmt::format_to(std::back_inserter(fields), "{:02X}{:04X}00", bytes, address & page_mask);
        fields.append(2 * std::size_t{bytes} - word.size(), '0').append(word);
        add(fields);
    }

private:
    void add(std::string_view record_fields) {
        record.clear();
        append_record(record, record_fields);
        output.write(record);
    }

    kvr::output_file& output;
    std::uint32_t bytes;
    std::uint32_t page = 0;
    std::string fields;
    std::string record;
};

void write_hex(const memory_image& image, kvr::output_file& output) {
    hex_writer writer(image, output);
    for_each_run(image.words, [&](const kvr::word_run& run) {
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

} // namespace

void require_writable(const memory_image& image, const output_layout& layout) {
    if (layout.format == FILE_TYPE_HEX && image.width > longest_record * bits_per_byte) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("words of {} bits do not fit an Intel HEX record, which holds {} bits",
                                     image.width, longest_record * bits_per_byte));
    }
    // Words without don't-care digits can be written in every format and radix.
    for_each_run(image.words, [&](const kvr::word_run& run) {
        if (!is_plain(run.text) && !can_show_dont_cares(run.text, image, layout)) {
            throw unwritable_word{run.first, std::string(run.text), reason_against_dont_cares(layout)};
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
