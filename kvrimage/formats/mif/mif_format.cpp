#include "kvrimage/formats/mif/mif_format.h"

#include "kvrimage/formats/mif/mif_comments.h"
#include "kvrimage/formats/mif/mif_edit.h"
#include "kvrimage/formats/mif/mif_kvr.h"
#include "kvrimage/formats/mif/mif_reader.h"
#include "kvrimage/formats/mif/mif_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> mif_extensions = {"mif"};

constexpr std::array<consumer, 1> mif_consumers = {
    {{"kvr", "the library kvr", check_mif_with_kvr, "holds 0 there"}}};

read_result read_whole_mif(std::string_view contents, const read_options& options) {
    return read_mif(contents, options);
}

} // namespace

const format mif_format = {
    .id = "mif",
    .title = "MIF",
    .extensions = mif_extensions,
    .states_width = true,
    .states_depth = true,
    .states_radix = true,
    .holds_unset = true,
    .holds_dont_care = true,
    .holds_ranges = true,
    .sniff = sniff_mif,
    .read = read_whole_mif,
    .find_word = find_mif_word,
    .find_comments = find_mif_comments,
    .edit = edit_mif,
    .can_write = can_write_mif,
    .write = write_mif,
    .written_size = written_size_of_mif,
    .consumers = mif_consumers,
};

} // namespace kvrimage
