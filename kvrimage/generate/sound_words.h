#pragma once

#include "kvrimage/export.h"
#include "kvrimage/generate/numbers.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/rounding.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The greatest width of a word for a sample, in bits.
inline constexpr std::uint32_t widest_sample_word = 64;

/// The header of a WAVE file and its samples.
struct wave_file {
    std::uint32_t channels = 0;    ///< at least 1
    std::uint32_t rate = 0;        ///< samples per second
    std::uint32_t sample_bits = 0; ///< 8, 16, 24 or 32; for floating-point samples 32 or 64
    bool has_fractions = false;    ///< true for floating-point samples, which range from -1 to 1
    std::uint64_t frames = 0;      ///< samples in each channel
    std::string_view samples; ///< view of the contents: whole frames, each with one sample of each channel

    /// Returns the bytes of a sample.
    [[nodiscard]] std::uint32_t sample_size() const noexcept { return (sample_bits + 7) / 8; }
};

/// Parses the header of @p contents, a RIFF file of type WAVE. The samples must be uncompressed: integers of
/// 8 to 32 bits or floating-point numbers of 32 or 64 bits. The result refers to @p contents. The time does
/// not depend on the number of samples.
/// @throws std::invalid_argument if the file has another format or is truncated; what() gives the reason
[[nodiscard]] KVRIMAGE_API wave_file read_wave(std::string_view contents);

/// Returns the samples of one channel as two's complement words. A word is the sample times 2^(width -
/// sample_bits), or 2^(width - 1) for floating-point samples, rounded according to @p how. A sample that
/// exceeds the range only by rounding becomes the largest word, and so does a floating-point sample of
/// exactly 1.
/// @param channel counted from 1
/// @param saturate clips floating-point samples beyond -1..1 to the smallest or the largest word
/// @throws std::out_of_range if there is no such channel
/// @throws std::invalid_argument if there are no frames, or the width exceeds 64 bits
/// @throws std::overflow_error for a floating-point sample beyond -1..1, infinity included, unless
/// @p saturate is set; what() names the sample and its address
/// @throws std::domain_error for a sample that is not a number, and with @p saturate for an infinite one
[[nodiscard]] KVRIMAGE_API memory_image sound_words(const wave_file& sound, std::uint32_t channel,
                                                    std::uint32_t width, rounding how = rounding::nearest,
                                                    bool saturate = false);

} // namespace kvrimage
