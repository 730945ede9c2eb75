#include "kvrimage/formats/hex/hex_writer.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/hex/hex_parser.h"
#include "kvrimage/formats/hex/hex_rows.h"
#include "kvrimage/image/text_rows.h"
#include "kvrimage/image/word_runs.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t page_mask = hex_page_size - 1;
constexpr std::uint64_t record_frame = 12; ///< characters: colon, length, address, type, checksum, line end
constexpr std::uint64_t page_digits = 4;

std::uint32_t bytes_of_word(const memory_image& image) {
    return hex_layout{.width = image.width()}.bytes_per_word();
}

class hex_writer {
public:
    hex_writer(const memory_image& image, text_sink& to)
        : base(image.base()),
          bytes(bytes_of_word(image)),
          rows(bytes, to) {}

    /// Writes the first words of @p row, which begins @p offset words above the lowest address. Returns the
    /// number of words written.
    std::uint32_t write(const kvr::word_row& row, std::uint64_t offset) {
        const std::uint64_t address = base + offset;
        begin_page_of(address);
        return rows.write(row, static_cast<std::uint32_t>(address & page_mask));
    }
    void write(std::uint64_t offset, std::string_view word) {
        const std::uint64_t address = base + offset;
        begin_page_of(address);
        fields.clear();
        fmt::format_to(std::back_inserter(fields), "{:02X}{:04X}00", bytes, address & page_mask);
        fields.append(2 * std::size_t{bytes} - word.size(), '0').append(word);
        add();
    }
    void finish() {
        rows.add(":00000001FF\n");
        rows.flush();
    }

private:
    void begin_page_of(std::uint64_t address) {
        if (address >> hex_page_shift != page) {
            page = address >> hex_page_shift;
            fields = fmt::format("02000004{:04X}", page);
            add();
        }
    }
    void add() {
        record.clear();
        fmt::format_to(std::back_inserter(record), ":{}{}\n", fields, hex_checksum(fields));
        rows.add(record);
    }

    std::uint64_t base;
    std::uint32_t bytes;
    hex_rows rows;
    std::uint64_t page = 0;
    std::string fields;
    std::string record;
};

/// Counts the characters of word and page records.
class hex_size {
public:
    explicit hex_size(const memory_image& image)
        : base(image.base()),
          record(record_frame + 2 * std::uint64_t{bytes_of_word(image)}) {}

    void take(std::uint64_t first, std::uint64_t last) {
        const std::uint64_t first_page = (base + first) >> hex_page_shift;
        const std::uint64_t last_page = (base + last) >> hex_page_shift;
        size += (last - first + 1) * record;
        size += (last_page - first_page + (first_page != page ? 1U : 0U)) * (record_frame + page_digits);
        page = last_page;
    }
    [[nodiscard]] std::uint64_t result() const { return size; }

private:
    std::uint64_t base;
    std::uint64_t record;
    std::uint64_t size = record_frame; ///< begins with the end record
    std::uint64_t page = 0;
};

} // namespace

std::vector<diagnostic> can_write_hex(const memory_image& image, const write_options&) {
    std::vector<diagnostic> reasons;
    if (bytes_of_word(image) > most_record_bytes) {
        reasons.push_back(diagnose::record_too_small({}, image.width(), most_record_bytes * bits_per_byte));
    }
    const auto bounds = image.bounds();
    if (bounds && bounds->last >= deepest_memory) {
        reasons.push_back(diagnose::hex_address({}, bounds->last, deepest_memory - 1));
    }
    return reasons;
}

void write_hex(const memory_image& image, const write_options&, text_sink& output) {
    hex_writer writer(image, output);
    const auto write_row = [&writer](const kvr::word_row& row, std::uint64_t offset) {
        return writer.write(row, offset);
    };
    for_each_text(image.words(), write_row, [&writer](const text_run& run) {
        for (std::uint64_t offset = run.first; offset <= run.last; ++offset) {
            writer.write(offset, run.text);
        }
    });
    writer.finish();
}

std::uint64_t size_of_hex(const memory_image& image, const write_options&) {
    hex_size size(image);
    for_each_set_stretch(image.words(),
                         [&size](std::uint64_t first, std::uint64_t last) { size.take(first, last); });
    return size.result();
}

} // namespace kvrimage
