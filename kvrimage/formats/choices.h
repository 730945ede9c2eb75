#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <optional>
#include <span>

namespace kvrimage {

/// Checks @p given against @p kinds of @p as: format::read_choices or format::write_choices. Returns a
/// diagnostic for the first option that the format does not offer or whose value is not allowed; nothing if
/// all are valid.
[[nodiscard]] std::optional<diagnostic> improper_choice(std::span<const choice> given, const format& as,
                                                        std::span<const choice_kind> format::*kinds);

} // namespace kvrimage
