#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for Verilog.
[[nodiscard]] std::vector<diagnostic> can_write_verilog(const memory_image& image,
                                                        const write_options& options);

/// Implements format::write for Verilog: a module with a synchronous read, in Verilog-2001, which is also
/// valid SystemVerilog.
void write_verilog(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for Verilog.
[[nodiscard]] std::uint64_t written_verilog_size(const memory_image& image, const write_options& options);

/// Implements format::find_comments for Verilog.
void find_verilog_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
