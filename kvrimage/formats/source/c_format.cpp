#include "kvrimage/formats/source/c_format.h"

#include "kvrimage/formats/source/c_writer.h"
#include "kvrimage/formats/source/source_name.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 2> c_extensions = {"h", "c"};

} // namespace

const format c_format = {
    .id = "c",
    .title = "C",
    .extensions = c_extensions,
    .states_width = true,
    .states_depth = true,
    .counts = address_unit::word,
    .holds_unset = false,
    .find_comments = find_c_comments,
    .can_write = can_write_c,
    .write = write_c,
    .written_size = written_c_size,
    .write_choices = source_write_choices,
};

} // namespace kvrimage
