#include "kvrimage/formats/source/python_format.h"

#include "kvrimage/formats/source/python_writer.h"
#include "kvrimage/formats/source/source_name.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> python_extensions = {"py"};

} // namespace

const format python_format = {
    .id = "python",
    .title = "Python",
    .extensions = python_extensions,
    .states_width = true,
    .states_depth = true,
    .counts = address_unit::word,
    .holds_unset = false,
    .find_comments = find_python_comments,
    .can_write = can_write_python,
    .write = write_python,
    .written_size = written_python_size,
    .write_choices = source_write_choices,
};

} // namespace kvrimage
