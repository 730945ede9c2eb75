#include "tools/kvrmem/memory/hex_output.h"

#include "kvr/memory/hex/fast_hex_rows.h"
#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/word_runs.h"

#include <fmt/format.h>

#include <iterator>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

class hex_writer {
public:
    hex_writer(const memory_image& image, kvr::output_file& to)
        : output(to),
          bytes(bytes_for(image.width)),
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
    static constexpr std::uint32_t page_mask = hex_page_words - 1;

    void begin_page_of(std::uint32_t address) {
        if ((address >> hex_page_shift) != page) {
            page = address >> hex_page_shift;
            add(fmt::format("02000004{:04X}", page));
        }
    }
    void add(std::string_view record_fields) {
        record.clear();
        fmt::format_to(std::back_inserter(record), ":{}{}\n", record_fields, checksum_of(record_fields));
        output.write(record);
    }

    kvr::output_file& output;
    std::uint32_t bytes;
    kvr::fast_hex_rows rows;
    std::uint32_t page = 0;
    std::string fields;
    std::string record;
};

} // namespace

void require_writable_hex(const memory_image& image) {
    if (image.width > most_data_bytes * bits_per_byte) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("words of {} bits do not fit an Intel HEX record, which holds {} bits",
                                     image.width, most_data_bytes * bits_per_byte));
    }
}

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

} // namespace kvrmem
