#include "kvrimage/formats/srec/srec_writer.h"

#include "kvr/memory/io/digit_pairs.h"
#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/hex_text.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/srec/srec_parser.h"
#include "kvrimage/image/word_text.h"

#include <array>
#include <optional>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t largest_byte_of_srec = 0xFFFFFFFF;
constexpr std::uint32_t usual_srec_bytes = 32;
constexpr std::uint32_t most_srec_bytes = 250; ///< with an address of 4 bytes and a checksum
constexpr std::string_view header_record = "S0030000FC\n";
constexpr std::uint64_t most_in_s5 = 0xFFFF;
constexpr std::uint64_t most_in_s6 = 0xFFFFFF;

/// Of data records for addresses up to @p last.
unsigned type_for(std::uint64_t last) {
    constexpr std::uint64_t last_of_s1 = 0xFFFF;
    constexpr std::uint64_t last_of_s2 = 0xFFFFFF;
    return last <= last_of_s1 ? 1 : (last <= last_of_s2 ? 2 : 3);
}

unsigned data_type_of(const memory_image& image) {
    return type_for(last_byte_address(image).value_or(0));
}

/// The type of the record that says how many data records there are; nothing where none can.
std::optional<unsigned> count_type(std::uint64_t records) {
    return records <= most_in_s5 ? std::optional(5U)
                                 : (records <= most_in_s6 ? std::optional(6U) : std::nullopt);
}

class srec_lines {
public:
    explicit srec_lines(text_sink& to) : output(to) {}

    void add_text(std::string_view text) { output.write(text); }
    void add(unsigned type, std::uint64_t address, std::string_view data) {
        std::array<char, 1 + most_address_bytes> first{};
        const std::uint32_t address_bytes = srec_address_bytes[type];
        first[0] = static_cast<char>(address_bytes + data.size() + 1);
        for (std::uint32_t index = 1; index <= address_bytes; ++index) {
            first[index] = static_cast<char>(address >> (bits_per_byte * (address_bytes - index)));
        }
        write({first.data(), 1 + address_bytes}, data, type);
    }
    void finish() { output.flush(); }

private:
    static constexpr std::size_t most_address_bytes = 4;

    /// @param first count and address
    void write(std::string_view first, std::string_view data, unsigned type) {
        output.write_with([first, data, type](kvr::output_file& file) {
            char* const begin = file.room(longest_record);
            begin[0] = 'S';
            begin[1] = static_cast<char>('0' + type);
            char* place = begin + 2;
            encode_hex(first, place);
            place += 2 * first.size();
            encode_hex(data, place);
            place += 2 * data.size();
            const unsigned sum = sum_of_bytes(first) + sum_of_bytes(data);
            place = kvr::upper_hex_pairs.put(~sum & 0xFFU, place);
            *place++ = '\n';
            file.used(static_cast<std::size_t>(place - begin));
            return true;
        });
    }

    /// With its line end: count, address, data and checksum are 256 bytes at most.
    static constexpr std::size_t longest_record = 2 + 2 * std::size_t{256} + 1;

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
    const unsigned type = data_type_of(image);
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
    if (const auto counting = count_type(records)) {
        lines.add(*counting, records, "");
    }
    constexpr unsigned types = 10; // of data records, and of the last one after them
    lines.add(types - type, 0, "");
    lines.finish();
}

std::uint64_t size_of_srec(const memory_image& image, const write_options& options) {
    const std::uint32_t length =
        chosen_record_length(options, usual_srec_bytes, most_srec_bytes).value_or(usual_srec_bytes);
    const byte_row_counts counts = count_byte_rows(image, length);
    const unsigned type = data_type_of(image);
    const auto counting = count_type(counts.rows);
    return header_record.size() + 2 * counts.bytes + counts.rows * size_of_srec_record(type) +
           (counting ? size_of_srec_record(*counting) : 0) + size_of_srec_record(type);
}

} // namespace kvrimage
