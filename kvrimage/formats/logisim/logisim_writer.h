#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// The choice of a writer, "variant": "v3" (words with addresses; what is written without a choice),
/// "v3-plain", and "v2", with runs.
inline constexpr std::string_view logisim_variant_choice = "variant";
inline constexpr std::string_view logisim_variant_names = "v3 v3-plain v2";

/// format::can_write() for Logisim files.
[[nodiscard]] std::vector<diagnostic> can_write_logisim(const memory_image& image,
                                                        const write_options& options);

/// format::write() for Logisim files: sixteen words a line, in the variant of the options.
void write_logisim(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size() for Logisim files.
[[nodiscard]] std::uint64_t written_logisim_size(const memory_image& image, const write_options& options);

} // namespace kvrimage
