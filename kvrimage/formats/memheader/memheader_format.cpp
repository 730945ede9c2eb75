#include "kvrimage/formats/memheader/memheader_format.h"

#include "kvrimage/formats/memheader/memheader_formatter.h"
#include "kvrimage/formats/memheader/memheader_pieces.h"
#include "kvrimage/formats/memheader/memheader_reader.h"
#include "kvrimage/formats/memheader/memheader_search.h"
#include "kvrimage/formats/memheader/memheader_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> memheader_extensions = {"mem"};
constexpr std::array<radix, 2> memheader_data_radixes = {radix::hex, radix::bin};
constexpr std::array<radix, 1> memheader_address_radixes = {radix::hex};

} // namespace

const format memheader_format = {
    .id = "memheader",
    .title = "MEM with header",
    .extensions = memheader_extensions,
    .states_width = true,
    .states_depth = true,
    .states_radix = true,
    .counts = address_unit::word,
    .holds_unset = true,
    .sniff = sniff_memheader,
    .read = read_memheader,
    .find_word = find_memheader_word,
    .find_pieces = find_memheader_pieces,
    .lay_out = lay_out_memheader,
    .can_write = can_write_memheader,
    .write = write_memheader,
    .written_size = written_memheader_size,
    .data_radixes = memheader_data_radixes,
    .address_radixes = memheader_address_radixes,
};

} // namespace kvrimage
