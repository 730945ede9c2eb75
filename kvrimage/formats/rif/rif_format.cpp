#include "kvrimage/formats/rif/rif_format.h"

#include "kvrimage/formats/reading_from_base.h"
#include "kvrimage/formats/rif/rif_comments.h"
#include "kvrimage/formats/rif/rif_edit.h"
#include "kvrimage/formats/rif/rif_kvr_reading.h"
#include "kvrimage/formats/rif/rif_reader.h"
#include "kvrimage/formats/rif/rif_search.h"
#include "kvrimage/formats/rif/rif_sniff.h"
#include "kvrimage/formats/rif/rif_writer.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> rif_extensions = {"rif"};

const std::array<consumer, 1> rif_consumers = {
    consumer{.name = "kvr", .title = "the library kvr", .check = check_rif_for_kvr}};

constexpr reading_from_zero rif_from_zero = {read_rif, find_rif_word};

read_result read_rif_from_base(std::string_view contents, const read_options& options) {
    return read_from_base(contents, options, rif_from_zero);
}

std::optional<place> find_rif_word_from_base(std::string_view contents, const read_options& options,
                                             std::uint64_t address) {
    return find_from_base(contents, options, address, rif_from_zero);
}

} // namespace

const format rif_format = {
    .id = "rif",
    .title = "RIF",
    .extensions = rif_extensions,
    .counts = address_unit::word,
    .holds_unset = true,
    .holds_dont_care = true,
    .sniff = sniff_rif,
    .read = read_rif_from_base,
    .find_word = find_rif_word_from_base,
    .find_comments = find_rif_comments,
    .edit = edit_rif,
    .can_write = can_write_rif,
    .write = write_rif,
    .written_size = written_rif_size,
    .consumers = rif_consumers,
};

} // namespace kvrimage
