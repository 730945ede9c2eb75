#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <optional>
#include <string>

namespace kvrmem {

/// A generated memory, or one made from a file that is not a memory file.
struct generated_memory {
    std::string source; ///< "photo.png (4 x 4 pixels)", for messages
    kvrimage::memory_image image;
    std::optional<kvrimage::memory_image> palette = std::nullopt;
    std::string note = {}; ///< information for the user; may be ""
};

/// Runs the generator selected in @p given; nothing if there is none. Words not generated are unset.
/// @throws tool_error for conflicting options, an invalid width or depth, more than 2^24 words or 2^30 bits,
/// and unreadable files
[[nodiscard]] std::optional<generated_memory> generate(const arguments& given);

} // namespace kvrmem
