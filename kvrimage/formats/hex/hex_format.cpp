#include "kvrimage/formats/hex/hex_format.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> hex_extensions = {"hex"};

} // namespace

const format hex_format = {
    .id = "hex",
    .title = "Intel HEX",
    .extensions = hex_extensions,
};

} // namespace kvrimage
