#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <optional>
#include <string>

namespace kvrmem {

/// A memory that was made by a rule, or of something that is no memory file.
struct generated_memory {
    std::string source; ///< "photo.png (4 x 4 pixels)", for messages
    kvrimage::memory_image image;
    std::optional<kvrimage::memory_image> palette = std::nullopt;
    std::string note = {}; ///< what the user needs to know of it; may be ""
};

/// What the generator among the options of @p given makes; nothing when there is none. Words that it does not
/// make are not set.
/// @throws tool_error for options that do not go together, a width or depth that does not fit, more than 2^24
/// words or 2^30 bits, and what cannot be read
[[nodiscard]] std::optional<generated_memory> generate(const arguments& given);

} // namespace kvrmem
