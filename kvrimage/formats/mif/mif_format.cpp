#include "kvrimage/formats/mif/mif_format.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> mif_extensions = {"mif"};

} // namespace

const format mif_format = {
    .id = "mif",
    .title = "MIF",
    .extensions = mif_extensions,
};

} // namespace kvrimage
