#include "kvrimage/formats/source/vhdl_format.h"

#include "kvrimage/formats/source/source_name.h"
#include "kvrimage/formats/source/vhdl_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 2> vhdl_extensions = {"vhd", "vhdl"};

} // namespace

const format vhdl_format = {
    .id = "vhdl",
    .title = "VHDL",
    .extensions = vhdl_extensions,
    .states_width = true,
    .states_depth = true,
    .counts = address_unit::word,
    .holds_unset = false,
    .holds_dont_care = true,
    .find_comments = find_vhdl_comments,
    .can_write = can_write_vhdl,
    .write = write_vhdl,
    .written_size = written_vhdl_size,
    .write_choices = source_write_choices,
};

} // namespace kvrimage
