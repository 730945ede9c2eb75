// Reads sound files, compares the words with a second reading of the samples, and reads a file that is
// written from these.

#include "fuzz/exact_bytes.h"
#include "fuzz/expectation.h"
#include "fuzz/resource_limits.h"
#include "fuzz/tool_targets.h"
#include "kvrimage/generate/sound_words.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>

namespace kvr_fuzz {

namespace {

using kvrimage::memory_image;
using kvrimage::wave_file;

constexpr std::uint32_t most_channels = 3;
constexpr std::uint64_t most_frames = 64;

std::optional<wave_file> read_within_limits(std::string_view contents) {
    const resource_limits limits(contents.size());
    try {
        return kvrimage::read_wave(contents);
    } catch (const std::invalid_argument& refusal) {
        expect(*refusal.what() != '\0', "a sound is refused without a reason");
        return std::nullopt;
    }
}

std::string little_endian(std::uint64_t value, unsigned size) {
    std::string bytes;
    for (; size > 0; --size, value /= 256) {
        bytes += static_cast<char>(value % 256);
    }
    return bytes;
}

/// A plain file with the samples of @p sound.
std::string written_sound(const wave_file& sound) {
    const std::uint32_t frame = sound.channels * sound.sample_bits / 8;
    std::string text = "RIFF" + little_endian(36 + sound.samples.size(), 4) + "WAVEfmt " +
                       little_endian(16, 4) + little_endian(sound.has_fractions ? 3 : 1, 2) +
                       little_endian(sound.channels, 2) + little_endian(sound.rate, 4) +
                       little_endian(std::uint64_t{sound.rate} * frame, 4) + little_endian(frame, 2) +
                       little_endian(sound.sample_bits, 2) + "data" + little_endian(sound.samples.size(), 4);
    return text.append(sound.samples);
}

void expect_same_sound(const wave_file& one, const wave_file& other) {
    expect(one.channels == other.channels && one.rate == other.rate && one.sample_bits == other.sample_bits &&
               one.has_fractions == other.has_fractions && one.frames == other.frames &&
               one.samples == other.samples,
           "a sound that is written again is another one");
}

/// The bytes of a sample.
std::string_view sample_at(const wave_file& sound, std::uint32_t channel, std::uint64_t frame) {
    const std::uint32_t size = sound.sample_bits / 8;
    return sound.samples.substr((frame * sound.channels + channel - 1) * size, size);
}

std::int64_t whole_sample(std::string_view bytes) {
    std::int64_t value = 0;
    for (std::size_t at = bytes.size(); at-- > 0;) {
        value = value * 256 + static_cast<unsigned char>(bytes[at]);
    }
    const std::int64_t values = std::int64_t{1} << (8 * bytes.size());
    if (bytes.size() == 1) {
        return value - values / 2;
    }
    return value < values / 2 ? value : value - values;
}

double fraction_sample(std::string_view bytes) {
    if (bytes.size() == sizeof(float)) {
        float value = 0;
        std::memcpy(&value, bytes.data(), sizeof value);
        return static_cast<double>(value);
    }
    double value = 0;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

/// Words of the width of the samples are their values; words @p more bits wider are multiples of them.
void expect_whole_words(const wave_file& sound, std::uint32_t channel, std::uint32_t more) {
    const memory_image image = sound_words(sound, channel, sound.sample_bits + more);
    expect(image.depth() == sound.frames && image.count_set() == sound.frames, "the number of words");
    for (std::uint64_t frame = 0; frame < sound.frames; ++frame) {
        const std::int64_t value = whole_sample(sample_at(sound, channel, frame)) * (std::int64_t{1} << more);
        expect(image[frame]->to_signed() == value, "the word of a sample");
    }
}

/// Narrower words are the nearest values.
void expect_narrow_words(const wave_file& sound, std::uint32_t channel, std::uint32_t width) {
    const memory_image image = sound_words(sound, channel, width);
    const double unit = std::ldexp(1.0, static_cast<int>(sound.sample_bits - width));
    const double largest = std::ldexp(1.0, static_cast<int>(width - 1)) - 1;
    for (std::uint64_t frame = 0; frame < sound.frames; ++frame) {
        const double exact = static_cast<double>(whole_sample(sample_at(sound, channel, frame))) / unit;
        const auto word = static_cast<double>(image[frame]->to_signed().value());
        expect(std::abs(word - std::min(exact, largest)) <= 0.5, "the word of a sample with fewer bits");
    }
}

void expect_fraction_words(const wave_file& sound, std::uint32_t channel) {
    constexpr std::uint32_t width = 16;
    bool is_loud = false;
    bool is_number = true;
    for (std::uint64_t frame = 0; frame < sound.frames; ++frame) {
        const double value = fraction_sample(sample_at(sound, channel, frame));
        is_loud = is_loud || std::abs(value) > 1;
        is_number = is_number && !std::isnan(value);
    }
    try {
        const memory_image image = sound_words(sound, channel, width);
        expect(!is_loud && is_number, "a sample that is no number from -1 to 1 has a word");
        for (std::uint64_t frame = 0; frame < sound.frames; ++frame) {
            const double exact = fraction_sample(sample_at(sound, channel, frame)) * 32768;
            const auto word = static_cast<double>(image[frame]->to_signed().value());
            expect(std::abs(word - std::min(exact, 32767.0)) <= 0.5, "the word of a fraction");
        }
    } catch (const std::overflow_error&) {
        expect(is_loud, "a sample is said to be beyond -1..1");
    } catch (const std::domain_error&) {
        expect(!is_number, "a sample is said to be no number");
    }
}

} // namespace

void try_sound(std::string_view input) {
    const exact_bytes file(input);
    const auto sound = read_within_limits(file.view());
    if (!sound) {
        return;
    }
    expect(sound->channels != 0 &&
               sound->frames * sound->channels * sound->sample_bits / 8 == sound->samples.size(),
           "the samples are not those of whole frames");
    const std::string written = written_sound(*sound);
    expect_same_sound(*sound, kvrimage::read_wave(written));
    if (sound->frames == 0 || sound->frames > most_frames) {
        return;
    }
    for (std::uint32_t channel = 1; channel <= std::min(sound->channels, most_channels); ++channel) {
        if (sound->has_fractions) {
            expect_fraction_words(*sound, channel);
        } else {
            expect_whole_words(*sound, channel, 0);
            expect_whole_words(*sound, channel, 64 - sound->sample_bits);
            expect_narrow_words(*sound, channel, 5);
        }
    }
}

} // namespace kvr_fuzz
