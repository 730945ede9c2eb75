#include "kvrimage/formats/binary/binary_format.h"

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/plain_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 3> binary_extensions = {"bin", "img", "rom"};

/// Returns whether @p character is a control character that text does not contain.
bool is_no_text(char character) {
    const auto byte = static_cast<unsigned char>(character);
    constexpr unsigned char first_printable = 0x20;
    constexpr unsigned char first_blank = '\t';
    constexpr unsigned char last_blank = '\r';
    constexpr unsigned char escape = 0x1B;
    return byte < first_printable && (byte < first_blank || byte > last_blank) && byte != escape;
}

/// Returns whether @p character is a byte that UTF-8 never contains.
bool is_in_no_utf8(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte == 0xC0 || byte == 0xC1 || byte >= 0xF5;
}

certainty sniff_binary(std::string_view head) {
    return std::ranges::any_of(head, is_no_text) || std::ranges::any_of(head, is_in_no_utf8)
               ? certainty::possible
               : certainty::no;
}

read_result read_binary(std::string_view contents, const read_options& options) {
    diagnostic_list list(options.most_diagnostics, options.wants_repairs);
    read_result result;
    result.facts.as = &binary_format;
    if (options.base) {
        list.add(diagnose::no_addresses({}, "a binary file", fmt::format("{:X}", *options.base)));
    } else {
        byte_blocks blocks(options.keeper);
        if (!contents.empty()) {
            blocks.add(0, contents);
        }
        // Lines have no meaning here; messages state the address instead.
        make_words_of_bytes(
            blocks, options, [](std::uint64_t) { return span(); }, list, result);
    }
    finish_byte_reading(contents, options, list, result);
    return result;
}

void write_binary(const memory_image& image, const write_options& options, text_sink& output) {
    for_each_byte_block(image, options.order.value_or(byte_order::big),
                        [&output](std::uint64_t, std::string_view bytes) { output.write(bytes); });
}

std::vector<diagnostic> can_write_binary(const memory_image& image, const write_options& /*options*/) {
    std::vector<diagnostic> found;
    refuse_base(image, "a binary file", found);
    return found;
}

std::uint64_t size_of_binary(const memory_image& image, const write_options& /*options*/) {
    return count_byte_rows(image, byte_page_size).bytes;
}

} // namespace

const format binary_format = {
    .id = "binary",
    .title = "raw binary",
    .extensions = binary_extensions,
    .counts = address_unit::byte,
    .holds_unset = false,
    .has_lines = false,
    .fits_anything = true,
    .sniff = sniff_binary,
    .read = read_binary,
    .can_write = can_write_binary,
    .write = write_binary,
    .written_size = size_of_binary,
};

} // namespace kvrimage
