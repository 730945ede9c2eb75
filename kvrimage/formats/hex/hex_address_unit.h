#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// Reports an Intel HEX file whose addresses can count words or bytes, with different words: with the width
/// of @p options each record begins and ends at a word boundary in bytes, and no records overlap. Requires a
/// file that is readable with word addresses. Returns nothing if the options state the address unit or name
/// the format.
[[nodiscard]] std::optional<diagnostic> doubt_of_address_unit(std::string_view contents,
                                                              const read_options& options);

} // namespace kvrimage
