#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for Python.
[[nodiscard]] std::vector<diagnostic> can_write_python(const memory_image& image,
                                                       const write_options& options);

/// Implements format::write for Python: a module with a tuple of numbers.
void write_python(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for Python.
[[nodiscard]] std::uint64_t written_python_size(const memory_image& image, const write_options& options);

/// Implements format::find_comments for Python.
void find_python_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
