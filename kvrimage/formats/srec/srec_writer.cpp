#include "kvrimage/formats/srec/srec_writer.h"

#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/record_text.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/srec/srec_parser.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::uint64_t largest_byte_of_srec = 0xFFFFFFFF;
constexpr std::uint32_t usual_srec_bytes = 32;
constexpr std::uint32_t most_srec_bytes = 250; ///< with an address of 4 bytes and a checksum
constexpr std::string_view header_record = "S0030000FC\n";
constexpr std::uint64_t most_in_s5 = 0xFFFF;
constexpr std::uint64_t most_in_s6 = 0xFFFFFF;

/// Returns the type of data records for addresses up to @p last.
unsigned type_for(std::uint64_t last) {
    constexpr std::uint64_t last_of_s1 = 0xFFFF;
    constexpr std::uint64_t last_of_s2 = 0xFFFFFF;
    return last <= last_of_s1 ? 1 : (last <= last_of_s2 ? 2 : 3);
}

/// The last record contains the start address and has as many address bytes as the data records.
unsigned data_type_of(const memory_image& image, const write_options& options) {
    return type_for(std::max(last_byte_address(image).value_or(0), options.start_address.value_or(0)));
}

/// A record without data.
struct closing_record {
    unsigned type;
    std::uint64_t address;
};

/// Returns the records after @p records data records of @p type: their count, if a record can hold it, and
/// the start address.
std::vector<closing_record> closing_records(std::uint64_t records, unsigned type,
                                            const write_options& options) {
    std::vector<closing_record> found;
    if (records <= most_in_s6) {
        found.push_back({records <= most_in_s5 ? 5U : 6U, records});
    }
    constexpr unsigned types = 10; // type of the data records + type of the last record
    found.push_back({types - type, options.start_address.value_or(0)});
    return found;
}

class srec_lines {
public:
    explicit srec_lines(text_sink& to) : output(to) {}

    void add_text(std::string_view text) { output.write(text); }
    void add(unsigned type, std::uint64_t address, std::string_view data) {
        output.write_with([=](kvr::output_file& file) {
            char* const begin = file.room(longest_record);
            file.used(static_cast<std::size_t>(put_record(srec_styles[type], address, data, begin) - begin));
            return true;
        });
    }
    void finish() { output.flush(); }

private:
    sink_buffer output;
};

std::uint64_t size_of_srec_record(unsigned type) {
    constexpr std::uint64_t frame = 7; // "S", type, count, checksum and line end
    return frame + 2 * std::uint64_t{srec_address_bytes[type]};
}

} // namespace

std::vector<diagnostic> can_write_srec(const memory_image& image, const write_options& options) {
    std::vector<diagnostic> found;
    if (auto beyond = byte_address_obstacle(image, largest_byte_of_srec, "an S-record")) {
        found.push_back(std::move(*beyond));
    }
    if (!chosen_record_length(options, usual_srec_bytes, most_srec_bytes)) {
        found.push_back(improper_record_length(options, most_srec_bytes));
    }
    return found;
}

void write_srec(const memory_image& image, const write_options& options, text_sink& output) {
    const std::uint32_t length =
        chosen_record_length(options, usual_srec_bytes, most_srec_bytes).value_or(usual_srec_bytes);
    const unsigned type = data_type_of(image, options);
    srec_lines lines(output);
    std::uint64_t records = 0;
    lines.add_text(header_record);
    byte_row_cutter rows(length, [&](std::uint64_t address, std::string_view bytes) {
        lines.add(type, address, bytes);
        ++records;
    });
    for_each_byte_block(image, options.order.value_or(byte_order::big),
                        [&rows](std::uint64_t address, std::string_view bytes) { rows.add(address, bytes); });
    rows.finish();
    for (const closing_record& each : closing_records(records, type, options)) {
        lines.add(each.type, each.address, "");
    }
    lines.finish();
}

std::uint64_t size_of_srec(const memory_image& image, const write_options& options) {
    const std::uint32_t length =
        chosen_record_length(options, usual_srec_bytes, most_srec_bytes).value_or(usual_srec_bytes);
    const byte_row_counts counts = count_byte_rows(image, length);
    const unsigned type = data_type_of(image, options);
    std::uint64_t size = header_record.size() + 2 * counts.bytes + counts.rows * size_of_srec_record(type);
    for (const closing_record& each : closing_records(counts.rows, type, options)) {
        size += size_of_srec_record(each.type);
    }
    return size;
}

} // namespace kvrimage
