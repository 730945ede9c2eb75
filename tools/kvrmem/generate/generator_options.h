#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvrmem {

/// Options for generated words.
struct generator_options {
    std::optional<std::string> expression;
    std::optional<std::string> ramp_start;
    std::optional<std::string> ramp_step;
    std::optional<std::uint64_t> seed;
    std::optional<std::string> text;
    std::optional<std::string> text_file;
    std::optional<std::string> picture_file;
    std::optional<kvrimage::pixel_format> pixel;
    std::optional<std::uint32_t> palette_colors;
    std::optional<std::string> palette_file;
    std::optional<std::string> sound_file;
    std::optional<std::uint32_t> channel;
    bool dither = false;
};

} // namespace kvrmem
