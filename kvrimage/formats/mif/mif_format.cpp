#include "kvrimage/formats/mif/mif_format.h"

#include "kvrimage/formats/mif/mif_comments.h"
#include "kvrimage/formats/mif/mif_edit.h"
#include "kvrimage/formats/mif/mif_formatter.h"
#include "kvrimage/formats/mif/mif_kvr.h"
#include "kvrimage/formats/mif/mif_pieces.h"
#include "kvrimage/formats/mif/mif_reader.h"
#include "kvrimage/formats/mif/mif_writer.h"
#include "kvrimage/formats/reading_from_base.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> mif_extensions = {"mif"};

constexpr std::array<consumer, 1> mif_consumers = {
    {{"kvr", "the library kvr", check_mif_with_kvr, "holds 0 there"}}};

constexpr reading_from_zero mif_from_zero = {
    [](std::string_view contents, const read_options& options) { return read_mif(contents, options); },
    find_mif_word};

read_result read_mif_from_base(std::string_view contents, const read_options& options) {
    return read_from_base(contents, options, mif_from_zero);
}

std::optional<place> find_mif_word_from_base(std::string_view contents, const read_options& options,
                                             std::uint64_t address) {
    return find_from_base(contents, options, address, mif_from_zero);
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
    .read = read_mif_from_base,
    .find_word = find_mif_word_from_base,
    .find_comments = find_mif_comments,
    .find_pieces = find_mif_pieces,
    .edit = edit_mif,
    .lay_out = lay_out_mif,
    .can_write = can_write_mif,
    .write = write_mif,
    .written_size = written_size_of_mif,
    .consumers = mif_consumers,
};

} // namespace kvrimage
