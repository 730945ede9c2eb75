#include "kvrimage/formats/rif/rif_format.h"

#include "kvrimage/formats/rif/rif_comments.h"
#include "kvrimage/formats/rif/rif_edit.h"
#include "kvrimage/formats/rif/rif_formatter.h"
#include "kvrimage/formats/rif/rif_kvr_reading.h"
#include "kvrimage/formats/rif/rif_pieces.h"
#include "kvrimage/formats/rif/rif_reader.h"
#include "kvrimage/formats/rif/rif_search.h"
#include "kvrimage/formats/rif/rif_sniff.h"
#include "kvrimage/formats/rif/rif_writer.h"

#include <array>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> rif_extensions = {"rif"};

const std::array<consumer, 1> rif_consumers = {
    consumer{.name = "kvr", .title = "the library kvr", .check = check_rif_for_kvr}};

} // namespace

const format rif_format = {
    .id = "rif",
    .title = "RIF",
    .extensions = rif_extensions,
    .counts = address_unit::word,
    .holds_unset = true,
    .holds_dont_care = true,
    .sniff = sniff_rif,
    .read = read_rif,
    .find_word = find_rif_word,
    .find_comments = find_rif_comments,
    .find_pieces = find_rif_pieces,
    .edit = edit_rif,
    .lay_out = lay_out_rif,
    .can_write = can_write_rif,
    .write = write_rif,
    .written_size = written_rif_size,
    .consumers = rif_consumers,
};

} // namespace kvrimage
