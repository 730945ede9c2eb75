#pragma once

#include "kvrimage/formats/format.h"

#include <array>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// The layout options; see format::write_choices.
inline constexpr std::array<choice_kind, 3> readmem_write_choices = {{
    {"words-per-line", "N", "", "words per line (default: up to 8, in 80 columns)"},
    {"every-address", "", "", "begin each line with its address"},
    {"banner", "", "", "begin with a comment that states depth and width"},
}};

// Implement format::can_write, format::write and format::written_size. Lines break at addresses that are
// multiples of the words per line. An address precedes each word that follows an unset word.

[[nodiscard]] std::vector<diagnostic> can_write_readmemh(const memory_image& image,
                                                         const write_options& options);
void write_readmemh(const memory_image& image, const write_options& options, text_sink& output);
[[nodiscard]] std::uint64_t written_readmemh_size(const memory_image& image, const write_options& options);

[[nodiscard]] std::vector<diagnostic> can_write_readmemb(const memory_image& image,
                                                         const write_options& options);
void write_readmemb(const memory_image& image, const write_options& options, text_sink& output);
[[nodiscard]] std::uint64_t written_readmemb_size(const memory_image& image, const write_options& options);

} // namespace kvrimage
