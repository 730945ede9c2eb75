#include "kvrimage/formats/hex/hexbytes_writer.h"

#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/record_text.h"
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
constexpr std::uint64_t start_record_size = frame_of_hexbytes + 8;
constexpr std::string_view hexbytes_end = ":00000001FF\n";

std::uint32_t hexbytes_a_record(const write_options& options) {
    return chosen_record_length(options, usual_hexbytes, most_record_bytes).value_or(usual_hexbytes);
}

class hexbytes_lines {
public:
    explicit hexbytes_lines(text_sink& to) : output(to) {}

    void add(std::uint64_t address, std::string_view data) {
        if (address >> hex_page_shift != page) {
            page = address >> hex_page_shift;
            add_number(linear_address, page, 2);
        }
        add_record(data_record, address % hex_page_size, data);
    }
    void add_start(std::uint64_t address) { add_number(start_linear_address, address, 4); }
    void finish() {
        output.write(hexbytes_end);
        output.flush();
    }

private:
    static constexpr char data_record = 0;
    static constexpr char linear_address = 4;
    static constexpr char start_linear_address = 5;

    /// Adds a record of @p type with the lowest @p count bytes of @p number, at most 4.
    void add_number(char type, std::uint64_t number, std::size_t count) {
        std::array<char, 4> bytes{};
        for (std::size_t index = count; index-- > 0; number >>= bits_per_byte) {
            bytes[index] = static_cast<char>(number);
        }
        add_record(type, 0, {bytes.data(), count});
    }
    void add_record(char type, std::uint64_t address, std::string_view data) {
        const record_style style = hex_style_of_type({&type, 1});
        output.write_with([&](kvr::output_file& file) {
            char* const begin = file.room(longest_record);
            file.used(static_cast<std::size_t>(put_record(style, address, data, begin) - begin));
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
    if (!chosen_record_length(options, usual_hexbytes, most_record_bytes)) {
        found.push_back(improper_record_length(options, most_record_bytes));
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
    if (options.start_address) {
        lines.add_start(*options.start_address);
    }
    lines.finish();
}

std::uint64_t size_of_hexbytes(const memory_image& image, const write_options& options) {
    const byte_row_counts counts = count_byte_rows(image, hexbytes_a_record(options));
    return hexbytes_end.size() + 2 * counts.bytes + frame_of_hexbytes * counts.rows +
           page_record_size * counts.pages + (options.start_address ? start_record_size : 0);
}

} // namespace kvrimage
