#include "kvrimage/formats/hex/hex_format.h"

#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/formats/hex/hex_comments.h"
#include "kvrimage/formats/hex/hex_edit.h"
#include "kvrimage/formats/hex/hex_formatter.h"
#include "kvrimage/formats/hex/hex_kvr.h"
#include "kvrimage/formats/hex/hex_pieces.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "kvrimage/formats/hex/hex_writer.h"
#include "kvrimage/formats/hex/hexbytes_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 2> hex_extensions = {"hex", "ihex"};
constexpr std::array<std::string_view, 3> hexbytes_extensions = {"hex", "ihex", "ihx"};
constexpr std::array<choice_kind, 1> hexbytes_write_choices = {record_length_choice};
constexpr std::array<consumer, 1> hex_consumers = {
    {{"kvr", "the library kvr", check_hex_for_kvr, "holds 0 there"}}};

} // namespace

const format hex_format = {
    .id = "hex",
    .title = "Intel HEX",
    .extensions = hex_extensions,
    .counts = address_unit::either,
    .sniff = sniff_hex,
    .read = read_hex,
    .find_word = find_hex_word,
    .find_comments = find_hex_comments,
    .find_pieces = find_hex_pieces,
    .edit = edit_hex,
    .lay_out = lay_out_hex,
    .can_write = can_write_hex,
    .write = write_hex,
    .written_size = size_of_hex,
    .consumers = hex_consumers,
};

const format hexbytes_format = {
    .id = "hexbytes",
    .title = "Intel HEX of bytes",
    .extensions = hexbytes_extensions,
    .counts = address_unit::byte,
    .read = read_hexbytes,
    .find_word = find_hexbytes_word,
    .find_comments = find_hex_comments,
    .find_pieces = find_hex_pieces,
    .edit = edit_hex,
    .lay_out = lay_out_hex,
    .can_write = can_write_hexbytes,
    .write = write_hexbytes,
    .written_size = size_of_hexbytes,
    .write_choices = hexbytes_write_choices,
    .largest_start = 0xFFFFFFFF,
};

} // namespace kvrimage
