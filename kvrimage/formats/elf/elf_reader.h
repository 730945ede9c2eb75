#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// format::read for ELF: the bytes of the segments that are loaded, at the addresses where they are loaded,
/// or of the sections that the options choose.
[[nodiscard]] read_result read_elf(std::string_view contents, const read_options& options);

/// format::sniff for ELF.
[[nodiscard]] certainty sniff_elf(std::string_view head);

} // namespace kvrimage
