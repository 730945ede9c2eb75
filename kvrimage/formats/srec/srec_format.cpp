#include "kvrimage/formats/srec/srec_format.h"

#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/formats/srec/srec_formatter.h"
#include "kvrimage/formats/srec/srec_pieces.h"
#include "kvrimage/formats/srec/srec_reader.h"
#include "kvrimage/formats/srec/srec_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 5> srec_extensions = {"srec", "s19", "s28", "s37", "mot"};
constexpr std::array<choice_kind, 1> srec_write_choices = {record_length_choice};

} // namespace

const format srec_format = {
    .id = "srec",
    .title = "S-records",
    .extensions = srec_extensions,
    .counts = address_unit::byte,
    .sniff = sniff_srec,
    .read = read_srec,
    .find_word = find_srec_word,
    .find_comments = find_srec_comments,
    .find_pieces = find_srec_pieces,
    .lay_out = lay_out_srec,
    .can_write = can_write_srec,
    .write = write_srec,
    .written_size = size_of_srec,
    .write_choices = srec_write_choices,
    .largest_start = 0xFFFFFFFF,
};

} // namespace kvrimage
