#pragma once

#include "kvrimage/export.h"
#include "kvrimage/generate/numbers.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/rounding.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The widest words that samples become.
inline constexpr std::uint32_t widest_sample_word = 64;

/// What a sound file in the format WAVE says of its samples.
struct wave_file {
    std::uint32_t channels = 0;    ///< at least 1
    std::uint32_t rate = 0;        ///< samples a second
    std::uint32_t sample_bits = 0; ///< 8, 16, 24 or 32; 32 or 64 for fractions
    bool has_fractions = false;    ///< samples are floating-point numbers, 1 is the loudest
    std::uint64_t frames = 0;      ///< samples of each channel
    std::string_view samples;      ///< of the contents: whole frames, a sample of each channel in each

    /// Bytes of a sample.
    [[nodiscard]] std::uint32_t sample_size() const noexcept { return (sample_bits + 7) / 8; }
};

/// Reads the head of @p contents, to which the result refers: RIFF with WAVE, whose samples are whole numbers
/// of 8 to 32 bits or floating-point numbers of 32 or 64, not compressed. Cost does not depend on the
/// samples.
/// @throws std::invalid_argument when it is no such file, or is cut off; what() says what is wrong
[[nodiscard]] KVRIMAGE_API wave_file read_wave(std::string_view contents);

/// The samples of a channel of @p sound as two's complement words. Those of @p width bits are the samples'
/// values times 2^(width - sample_bits), for fractions times 2^(width - 1), rounded as @p how says. A
/// sample that only rounding takes out of range becomes the largest word, and so does a fraction of
/// exactly 1.
/// @param channel from 1 on
/// @param saturate a fraction beyond -1..1 becomes the smallest or the largest word
/// @throws std::out_of_range when there is no such channel
/// @throws std::invalid_argument when there are no frames, and for words of more than 64 bits
/// @throws std::overflow_error for a fraction beyond -1..1, also an infinite one, unless @p saturate; what()
/// says which one and its address
/// @throws std::domain_error for a sample that is no number, and with @p saturate for an infinite one
[[nodiscard]] KVRIMAGE_API memory_image sound_words(const wave_file& sound, std::uint32_t channel,
                                                    std::uint32_t width, rounding how = rounding::nearest,
                                                    bool saturate = false);

} // namespace kvrimage
