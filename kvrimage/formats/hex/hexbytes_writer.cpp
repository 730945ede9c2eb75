#include "kvrimage/formats/hex/hexbytes_writer.h"

#include "kvr/memory/io/digit_pairs.h"
#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/hex_text.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/image/word_text.h"

#include <array>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t largest_byte_of_hex = 0xFFFFFFFF;
constexpr std::uint32_t usual_hexbytes = 16;
constexpr std::uint64_t frame_of_hexbytes = 12; ///< colon, length, address, type, checksum, line end
constexpr std::uint64_t page_record_size = frame_of_hexbytes + 4;
constexpr std::size_t longest_hexbytes_record = frame_of_hexbytes + 2 * std::size_t{most_data_bytes};
constexpr std::string_view hexbytes_end = ":00000001FF\n";

std::uint32_t hexbytes_a_record(const write_options& options) {
    return chosen_record_length(options, usual_hexbytes, most_data_bytes).value_or(usual_hexbytes);
}

class hexbytes_lines {
public:
    explicit hexbytes_lines(text_sink& to) : output(to) {}

    void add(std::uint64_t address, std::string_view data) {
        if (address >> hex_page_shift != page) {
            page = address >> hex_page_shift;
            const std::array<char, 2> upper = {static_cast<char>(page >> bits_per_byte),
                                               static_cast<char>(page)};
            add_record(0, linear_address, {upper.data(), upper.size()});
        }
        add_record(static_cast<std::uint32_t>(address % hex_page_size), 0, data);
    }
    void finish() {
        output.write(hexbytes_end);
        output.flush();
    }

private:
    static constexpr char linear_address = 4;

    void add_record(std::uint32_t address, char type, std::string_view data) {
        const std::array<char, 4> first = {static_cast<char>(data.size()),
                                           static_cast<char>(address >> bits_per_byte),
                                           static_cast<char>(address), type};
        output.write_with([&first, data](kvr::output_file& file) {
            const std::string_view fields(first.data(), first.size());
            char* const begin = file.room(longest_hexbytes_record);
            begin[0] = ':';
            char* place = begin + 1;
            encode_hex(fields, place);
            place += 2 * fields.size();
            encode_hex(data, place);
            place += 2 * data.size();
            const unsigned sum = sum_of_bytes(fields) + sum_of_bytes(data);
            place = kvr::upper_hex_pairs.put(-sum & 0xFFU, place);
            *place++ = '\n';
            file.used(static_cast<std::size_t>(place - begin));
            return true;
        });
    }

    sink_buffer output;
    std::uint64_t page = 0;
};

} // namespace

std::vector<diagnostic> can_write_hexbytes(const memory_image& image, const write_options& options) {
    std::vector<diagnostic> found;
    if (auto beyond = byte_address_obstacle(image, largest_byte_of_hex, "Intel HEX")) {
        found.push_back(std::move(*beyond));
    }
    if (!chosen_record_length(options, usual_hexbytes, most_data_bytes)) {
        found.push_back(improper_record_length(options, most_data_bytes));
    }
    return found;
}

void write_hexbytes(const memory_image& image, const write_options& options, text_sink& output) {
    hexbytes_lines lines(output);
    byte_row_cutter rows(hexbytes_a_record(options), [&lines](std::uint64_t address, std::string_view bytes) {
        lines.add(address, bytes);
    });
    for_each_byte_block(image, options.order.value_or(byte_order::big),
                        [&rows](std::uint64_t address, std::string_view bytes) { rows.add(address, bytes); });
    rows.finish();
    lines.finish();
}

std::uint64_t size_of_hexbytes(const memory_image& image, const write_options& options) {
    const byte_row_counts counts = count_byte_rows(image, hexbytes_a_record(options));
    return hexbytes_end.size() + 2 * counts.bytes + frame_of_hexbytes * counts.rows +
           page_record_size * counts.pages;
}

} // namespace kvrimage
