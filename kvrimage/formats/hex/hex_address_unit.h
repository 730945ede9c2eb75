#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// Says that the addresses of an Intel HEX file, which can be read where they count words, can count bytes as
/// well, and that the words differ then: with the width of @p options every record begins and ends at a word
/// of bytes, and none overlap. Nothing where the options say what the addresses count, or name the format.
[[nodiscard]] std::optional<diagnostic> doubt_of_address_unit(std::string_view contents,
                                                              const read_options& options);

} // namespace kvrimage
