#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for C.
[[nodiscard]] std::vector<diagnostic> can_write_c(const memory_image& image, const write_options& options);

/// Implements format::write for C: an array of the smallest unsigned type that holds a word, or of 64-bit
/// limbs, least significant first. The file is a header unless its name ends with ".c".
void write_c(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for C.
[[nodiscard]] std::uint64_t written_c_size(const memory_image& image, const write_options& options);

/// Implements format::find_comments for C.
void find_c_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
