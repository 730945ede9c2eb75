#pragma once

#include "kvrimage/image/radix.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// A variant of the format, determined by the first line.
struct logisim_variant {
    std::string_view line;
    bool is_addressed;               ///< each row begins with an address
    std::optional<byte_order> bytes; ///< byte order within a word; nothing: a file of words
};

/// Returns the variant for the line @p first, ignoring trailing blanks; null if it is unknown.
[[nodiscard]] const logisim_variant* logisim_variant_of(std::string_view first) noexcept;

} // namespace kvrimage
