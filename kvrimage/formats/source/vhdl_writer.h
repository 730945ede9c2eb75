#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for VHDL.
[[nodiscard]] std::vector<diagnostic> can_write_vhdl(const memory_image& image, const write_options& options);

/// Implements format::write for VHDL: a package with the words, and an entity with a synchronous read, in
/// VHDL-93.
void write_vhdl(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for VHDL.
[[nodiscard]] std::uint64_t written_vhdl_size(const memory_image& image, const write_options& options);

/// Implements format::find_comments for VHDL.
void find_vhdl_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
