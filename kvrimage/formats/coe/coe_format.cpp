#include "kvrimage/formats/coe/coe_format.h"

#include "kvrimage/formats/coe/coe_formatter.h"
#include "kvrimage/formats/coe/coe_pieces.h"
#include "kvrimage/formats/coe/coe_reader.h"
#include "kvrimage/formats/coe/coe_search.h"
#include "kvrimage/formats/coe/coe_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> coe_extensions = {"coe"};

constexpr std::array<radix, 3> coe_radixes = {radix::hex, radix::uns, radix::bin};

} // namespace

const format coe_format = {
    .id = "coe",
    .title = "COE",
    .extensions = coe_extensions,
    .states_radix = true,
    .counts = address_unit::word,
    .holds_unset = false,
    .sniff = sniff_coe,
    .read = read_coe,
    .find_word = find_coe_word,
    .find_comments = find_coe_comments,
    .find_pieces = find_coe_pieces,
    .lay_out = lay_out_coe,
    .can_write = can_write_coe,
    .write = write_coe,
    .written_size = written_coe_size,
    .data_radixes = coe_radixes,
};

} // namespace kvrimage
