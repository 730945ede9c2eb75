#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// The option "variant" of the writer: "v3" (words with addresses; the default), "v3-plain", or "v2" (with
/// runs).
inline constexpr std::string_view logisim_variant_choice = "variant";
inline constexpr std::string_view logisim_variant_names = "v3 v3-plain v2";

/// Implements format::can_write for Logisim files.
[[nodiscard]] std::vector<diagnostic> can_write_logisim(const memory_image& image,
                                                        const write_options& options);

/// Implements format::write for Logisim files: sixteen words per line, in the variant of the options.
void write_logisim(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for Logisim files.
[[nodiscard]] std::uint64_t written_logisim_size(const memory_image& image, const write_options& options);

} // namespace kvrimage
