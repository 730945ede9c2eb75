#include "kvrimage/formats/rif/rif_format.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> rif_extensions = {"rif"};

} // namespace

const format rif_format = {
    .id = "rif",
    .title = "RIF",
    .extensions = rif_extensions,
};

} // namespace kvrimage
