#include "kvrimage/formats/titxt/titxt_writer.h"

#include "kvr/memory/io/digit_pairs.h"
#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/formats/sink_buffer.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

constexpr std::uint64_t largest_byte_of_titxt = 0xFFFFFFFF;
constexpr std::uint32_t titxt_bytes_a_line = 16;
constexpr std::uint64_t characters_a_byte = 3;

class titxt_lines {
public:
    explicit titxt_lines(text_sink& to) : output(to) {}

    void add(std::uint64_t address, std::string_view bytes) {
        if (address != next || is_first) {
            output.write(fmt::format("@{:04X}\n", address));
        }
        is_first = false;
        next = address + bytes.size();
        output.write_with([bytes](kvr::output_file& file) {
            char* place = file.room(characters_a_byte * titxt_bytes_a_line);
            for (const char byte : bytes) {
                place = kvr::upper_hex_pairs.put(static_cast<unsigned char>(byte), place);
                *place++ = ' ';
            }
            place[-1] = '\n';
            file.used(characters_a_byte * bytes.size());
            return true;
        });
    }
    void finish() {
        output.write("q\n");
        output.flush();
    }

private:
    sink_buffer output;
    std::uint64_t next = 0;
    bool is_first = true;
};

} // namespace

std::vector<diagnostic> can_write_titxt(const memory_image& image, const write_options& /*options*/) {
    std::vector<diagnostic> found;
    if (auto beyond = byte_address_obstacle(image, largest_byte_of_titxt, "TI-TXT")) {
        found.push_back(std::move(*beyond));
    }
    return found;
}

void write_titxt(const memory_image& image, const write_options& options, text_sink& output) {
    titxt_lines lines(output);
    byte_row_cutter rows(titxt_bytes_a_line, [&lines](std::uint64_t address, std::string_view bytes) {
        lines.add(address, bytes);
    });
    for_each_byte_block(image, options.order.value_or(byte_order::big),
                        [&rows](std::uint64_t address, std::string_view bytes) { rows.add(address, bytes); });
    rows.finish();
    lines.finish();
}

std::uint64_t size_of_titxt(const memory_image& image, const write_options& /*options*/) {
    const byte_row_counts counts = count_byte_rows(image, titxt_bytes_a_line);
    const std::uint64_t address_line = fmt::formatted_size("@{:04X}\n", last_byte_address(image).value_or(0));
    return characters_a_byte * counts.bytes + address_line * counts.stretches + 2;
}

} // namespace kvrimage
