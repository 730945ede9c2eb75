#include "kvrimage/formats/source/verilog_format.h"

#include "kvrimage/formats/source/source_name.h"
#include "kvrimage/formats/source/verilog_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 2> verilog_extensions = {"sv", "v"};

} // namespace

const format verilog_format = {
    .id = "verilog",
    .title = "Verilog",
    .extensions = verilog_extensions,
    .states_width = true,
    .states_depth = true,
    .counts = address_unit::word,
    .holds_unset = false,
    .holds_dont_care = true,
    .find_comments = find_verilog_comments,
    .can_write = can_write_verilog,
    .write = write_verilog,
    .written_size = written_verilog_size,
    .write_choices = source_write_choices,
};

} // namespace kvrimage
