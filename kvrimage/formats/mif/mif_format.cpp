#include "kvrimage/formats/mif/mif_format.h"

#include "kvrimage/formats/mif/mif_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> mif_extensions = {"mif"};

} // namespace

const format mif_format = {
    .id = "mif",
    .title = "MIF",
    .extensions = mif_extensions,
    .can_write = can_write_mif,
    .write = write_mif,
    .written_size = written_size_of_mif,
};

} // namespace kvrimage
