#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The first line that write_mif() writes, a comment that names the program.
inline constexpr std::string_view mif_first_line = "-- Memory Initialization File, written by kvrmem";

/// Implements format::can_write for MIF. Rejects images that do not begin at address 0, that are deeper than
/// a header can state, with words too wide for a line, or with don't-care bits that the data radix cannot
/// represent (the first such word is reported).
[[nodiscard]] std::vector<diagnostic> can_write_mif(const memory_image& image, const write_options& options);

/// Writes @p image, which can_write_mif() has accepted. Unset words are omitted. With @p options.runs a
/// repeated sequence of words becomes one range.
void write_mif(const memory_image& image, const write_options& options, text_sink& output);

/// Returns the output size of write_mif() in bytes. Decimal addresses of ranges count with their full length.
[[nodiscard]] std::uint64_t written_size_of_mif(const memory_image& image, const write_options& options);

} // namespace kvrimage
