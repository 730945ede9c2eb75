#include "kvrimage/formats/mif/mif_format.h"

#include "kvrimage/formats/mif/mif_kvr.h"
#include "kvrimage/formats/mif/mif_reader.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> mif_extensions = {"mif"};

constexpr std::array<consumer, 1> mif_consumers = {
    {{"kvr", "the kvr library", check_mif_with_kvr, "holds 0 there"}}};

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
    .sniff = sniff_mif,
    .read = read_whole_mif,
    .find_word = find_mif_word,
    .consumers = mif_consumers,
};

} // namespace kvrimage
