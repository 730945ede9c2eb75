#include "kvrimage/generate/sound_words.h"

#include "kvrimage/image/number_of_bytes.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kvrimage {

namespace {

[[noreturn]] void refuse(const std::string& what) {
    throw std::invalid_argument(what);
}

/// Returns a field of a header, which must be long enough.
std::uint32_t field(std::string_view head, std::size_t at, std::size_t size) noexcept {
    return static_cast<std::uint32_t>(number_of_bytes(head.substr(at, size), byte_order::little));
}

struct wave_chunk {
    std::string_view name;
    std::string_view body;
};

/// Removes the next chunk from @p rest and returns it, or nothing at the end.
std::optional<wave_chunk> take_chunk(std::string_view& rest) {
    constexpr std::size_t head_size = 8;
    constexpr std::size_t name_size = 4;
    if (rest.empty()) {
        return std::nullopt;
    }
    if (rest.size() < head_size) {
        refuse("the file is cut off within the head of a chunk");
    }
    const std::size_t size = field(rest, name_size, name_size);
    if (size > rest.size() - head_size) {
        refuse(fmt::format("the file is cut off: a chunk of {} bytes has {}", size, rest.size() - head_size));
    }
    const wave_chunk chunk = {rest.substr(0, name_size), rest.substr(head_size, size)};
    rest.remove_prefix(std::min(rest.size(), head_size + size + size % 2)); // chunks are padded to even sizes
    return chunk;
}

/// Parses the chunk "fmt ".
void take_format(wave_file& sound, std::string_view body) {
    constexpr std::size_t least_size = 16;
    constexpr std::uint32_t whole_numbers = 1;
    constexpr std::uint32_t fractions = 3;
    constexpr std::uint32_t extensible = 0xFFFE; // the kind is in a later field
    constexpr std::size_t kind_of_extensible = 24;
    if (body.size() < least_size) {
        refuse(fmt::format("the format of the samples has {} bytes; it needs {}", body.size(), least_size));
    }
    std::uint32_t kind = field(body, 0, 2);
    if (kind == extensible && body.size() >= kind_of_extensible + 2) {
        kind = field(body, kind_of_extensible, 2);
    }
    if (kind != whole_numbers && kind != fractions) {
        refuse(fmt::format(
            "the samples are in the format {}; only integers (1) and floating-point numbers (3) are read",
            kind));
    }
    sound.has_fractions = kind == fractions;
    sound.channels = field(body, 2, 2);
    sound.rate = field(body, 4, 4);
    sound.sample_bits = field(body, 14, 2);
    const std::vector<std::uint32_t> possible =
        sound.has_fractions ? std::vector<std::uint32_t>{32, 64} : std::vector<std::uint32_t>{8, 16, 24, 32};
    if (std::ranges::find(possible, sound.sample_bits) == possible.end()) {
        refuse(fmt::format("samples of {} bits are not read", sound.sample_bits));
    }
    if (sound.channels == 0 || field(body, 12, 2) != sound.channels * sound.sample_size()) {
        refuse(fmt::format("{} channels of {} bits do not make the {} bytes of a frame", sound.channels,
                           sound.sample_bits, field(body, 12, 2)));
    }
}

/// Returns the value of a sample times 2^@p shift.
generated_number scaled_sample(const wave_file& sound, std::string_view bytes, int shift) {
    const std::uint64_t bits = number_of_bytes(bytes, byte_order::little);
    if (sound.has_fractions) {
        const double value = sound.sample_bits == 32
                                 ? static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))
                                 : std::bit_cast<double>(bits);
        return std::ldexp(value, shift);
    }
    // Samples of 8 bits are the only unsigned ones: 128 is silence.
    const std::uint64_t sign = std::uint64_t{1} << (sound.sample_bits - 1);
    const auto value = static_cast<std::int64_t>(sound.sample_bits == bits_per_byte ? bits : bits ^ sign) -
                       static_cast<std::int64_t>(sign);
    if (shift < 0) {
        return std::ldexp(static_cast<double>(value), shift); // exact: at most 32 of 53 bits
    }
    return value * (std::int64_t{1} << shift);
}

void require_quiet(const std::vector<generated_number>& samples, double loudest) {
    const auto too_loud = std::ranges::find_if(samples, [loudest](const generated_number& each) {
        return std::abs(std::get<double>(each)) > loudest;
    });
    if (too_loud != samples.end()) {
        throw std::overflow_error(fmt::format("the sample {} at address 0x{:X} is beyond -1..1",
                                              std::get<double>(*too_loud) / loudest,
                                              too_loud - samples.begin()));
    }
}

} // namespace

wave_file read_wave(std::string_view contents) {
    constexpr std::size_t head_size = 12;
    if (contents.size() < head_size || !contents.starts_with("RIFF") ||
        contents.substr(head_size - 4, 4) != "WAVE") {
        refuse("this is not a WAVE file");
    }
    wave_file sound;
    for (std::string_view rest = contents.substr(head_size);;) {
        const std::optional<wave_chunk> chunk = take_chunk(rest);
        if (!chunk) {
            refuse("the file has no samples");
        }
        if (chunk->name == "fmt ") {
            take_format(sound, chunk->body);
        } else if (chunk->name == "data") {
            sound.samples = chunk->body;
            break;
        }
    }
    if (sound.channels == 0) {
        refuse("the samples come before their format");
    }
    const std::size_t frame_size = std::size_t{sound.channels} * sound.sample_size();
    if (sound.samples.size() % frame_size != 0) {
        refuse(
            fmt::format("{} bytes of samples are not whole frames of {}", sound.samples.size(), frame_size));
    }
    sound.frames = sound.samples.size() / frame_size;
    return sound;
}

memory_image sound_words(const wave_file& sound, std::uint32_t channel, std::uint32_t width, rounding how,
                         bool saturate) {
    if (channel == 0 || channel > sound.channels) {
        throw std::out_of_range(
            fmt::format("there is no channel {}: the file has {}", channel, sound.channels));
    }
    if (width > widest_sample_word) {
        refuse(fmt::format("samples make words of up to {} bits, not {}", widest_sample_word, width));
    }
    if (sound.frames == 0) {
        refuse("the file has no samples");
    }
    const int shift =
        static_cast<int>(width) - (sound.has_fractions ? 1 : static_cast<int>(sound.sample_bits));
    const std::size_t size = sound.sample_size();
    std::vector<generated_number> samples;
    samples.reserve(sound.frames);
    for (std::size_t at = (channel - 1) * size; at < sound.samples.size(); at += size * sound.channels) {
        samples.push_back(scaled_sample(sound, sound.samples.substr(at, size), shift));
    }
    if (sound.has_fractions && !saturate) {
        require_quiet(samples, std::ldexp(1.0, shift));
    }
    return number_words(samples, width, {.how = how, .saturate = true, .is_signed = true});
}

} // namespace kvrimage
