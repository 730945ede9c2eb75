#pragma once

#include "kvrimage/image/radix.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// How a Logisim file is to be read, by its first line.
struct logisim_variant {
    std::string_view line;
    bool is_addressed;               ///< each row begins with an address
    std::optional<byte_order> bytes; ///< of the bytes of a word; nothing: a file of words
};

/// What the line @p first says, blanks at its end aside; null when it is none of those that are known.
[[nodiscard]] const logisim_variant* logisim_variant_of(std::string_view first) noexcept;

} // namespace kvrimage
