#include "kvrimage/formats/hex/hexbytes_writer.h"

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
    static constexpr std::size_t before_data = 4;

    void add_record(std::uint32_t address, char type, std::string_view data) {
        record[0] = static_cast<char>(data.size());
        record[1] = static_cast<char>(address >> bits_per_byte);
        record[2] = static_cast<char>(address);
        record[3] = type;
        const std::size_t size = before_data + data.copy(&record[before_data], data.size());
        unsigned sum = 0;
        for (const char byte : std::string_view(record.data(), size)) {
            sum += static_cast<unsigned char>(byte);
        }
        record[size] = static_cast<char>(0U - sum);
        write({record.data(), size + 1});
    }
    void write(std::string_view bytes) {
        output.write_with([bytes](kvr::output_file& file) {
            const std::size_t length = 1 + 2 * bytes.size() + 1;
            char* const place = file.room(length);
            place[0] = ':';
            encode_hex(bytes, place + 1);
            place[length - 1] = '\n';
            file.used(length);
            return true;
        });
    }

    sink_buffer output;
    std::array<char, before_data + most_data_bytes + 1> record{};
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
