#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What write_mif() begins with: a comment that says who has written the file.
inline constexpr std::string_view mif_first_line = "-- Memory Initialization File, written by kvrmem";

/// Why @p image cannot be written as MIF: it does not begin at address 0, is deeper than a header can say,
/// has words too wide for a line, or don't-care bits that the data radix cannot show (the first such word is
/// reported). See format.h.
[[nodiscard]] std::vector<diagnostic> can_write_mif(const memory_image& image, const write_options& options);

/// Writes @p image, which can_write_mif() has passed. Words that are not set are left out; a fill that
/// repeats several words is one range with @p options.runs.
void write_mif(const memory_image& image, const write_options& options, text_sink& output);

/// The bytes that write_mif() makes; addresses of decimal ranges count with all of their digits.
[[nodiscard]] std::uint64_t written_size_of_mif(const memory_image& image, const write_options& options);

} // namespace kvrimage
