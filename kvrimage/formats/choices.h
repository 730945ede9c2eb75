#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <optional>
#include <span>

namespace kvrimage {

/// The first of @p given that @p as does not leave open when it is read (format::read_choices) or written
/// (format::write_choices), @p kinds, or whose value is none of those that are possible; nothing when all are
/// proper.
[[nodiscard]] std::optional<diagnostic> improper_choice(std::span<const choice> given, const format& as,
                                                        std::span<const choice_kind> format::*kinds);

} // namespace kvrimage
