#pragma once

#include "kvrimage/export.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kvrimage {

/// An option of one format: {"section", ".text"}.
struct choice {
    std::string name;  ///< name of a choice_kind of the format
    std::string value; ///< as the user wrote it; "" if the option has no value
};

/// Describes an option that one format offers.
struct choice_kind {
    std::string_view name;        ///< "section": --section
    std::string_view operand;     ///< "NAME", the placeholder in help texts; "" if the option has no value
    std::string_view values;      ///< the possible values, separated by blanks; "" for any value
    std::string_view description; ///< "read only the section NAME"
};

/// Returns the last value for @p name in @p choices, or nothing.
[[nodiscard]] KVRIMAGE_API std::optional<std::string_view> chosen(std::span<const choice> choices,
                                                                  std::string_view name);

} // namespace kvrimage
