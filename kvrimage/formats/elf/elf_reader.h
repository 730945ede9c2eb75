#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::read for ELF: reads the loadable segments at their load addresses, or the sections
/// chosen in the options.
[[nodiscard]] read_result read_elf(std::string_view contents, const read_options& options);

/// Implements format::sniff for ELF.
[[nodiscard]] certainty sniff_elf(std::string_view head);

} // namespace kvrimage
