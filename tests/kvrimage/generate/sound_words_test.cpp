#include "kvrimage/generate/sound_words.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

std::string little_endian(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (; bytes.size() < size; value >>= 8U) {
        bytes += static_cast<char>(value & 0xFFU);
    }
    return bytes;
}

std::string wave_chunk_of(const std::string& name, const std::string& body) {
    return name + little_endian(body.size(), 4) + body + (body.size() % 2 != 0 ? std::string(1, '\0') : "");
}

std::string format_of_samples(unsigned kind, unsigned channels, unsigned bits) {
    const unsigned frame = channels * ((bits + 7) / 8);
    return little_endian(kind, 2) + little_endian(channels, 2) + little_endian(8000, 4) +
           little_endian(8000 * frame, 4) + little_endian(frame, 2) + little_endian(bits, 2);
}

std::string wave_of(const std::string& format, const std::string& samples) {
    const std::string body = "WAVE" + wave_chunk_of("fmt ", format) + wave_chunk_of("data", samples);
    return "RIFF" + little_endian(body.size(), 4) + body;
}

std::vector<std::string> words_of_sound(const std::string& file, std::uint32_t channel, std::uint32_t width,
                                        rounding how = rounding::nearest, bool saturate = false) {
    const memory_image image = sound_words(read_wave(file), channel, width, how, saturate);
    std::vector<std::string> words;
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        words.push_back(image[address].value().to_text(radix::hex).value());
    }
    return words;
}

std::string refusal_of_wave(const std::string& file) {
    try {
        static_cast<void>(read_wave(file));
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

using sample_texts = std::vector<std::string>;

TEST(ReadWave, FindsWhatTheFileSays) {
    const std::string file = wave_of(format_of_samples(1, 2, 16), little_endian(0x1111222233334444, 8));
    const wave_file sound = read_wave(file);
    EXPECT_EQ(sound.channels, 2U);
    EXPECT_EQ(sound.rate, 8000U);
    EXPECT_EQ(sound.sample_bits, 16U);
    EXPECT_FALSE(sound.has_fractions);
    EXPECT_EQ(sound.frames, 2U);
    EXPECT_EQ(sound.samples.data(), file.data() + file.size() - 8);
}

TEST(ReadWave, SkipsOtherChunks) {
    const std::string body = "WAVE" + wave_chunk_of("LIST", "odd") +
                             wave_chunk_of("fmt ", format_of_samples(1, 1, 8)) +
                             wave_chunk_of("data", "\x80") + "rest";
    EXPECT_EQ(read_wave("RIFF" + little_endian(body.size(), 4) + body).frames, 1U);
}

TEST(ReadWave, TakesTheExtensibleForm) {
    const std::string format = format_of_samples(0xFFFE, 1, 16) + little_endian(22, 2) +
                               little_endian(16, 2) + little_endian(4, 4) + little_endian(1, 2);
    EXPECT_EQ(read_wave(wave_of(format, "ab")).frames, 1U);
}

TEST(ReadWave, RefusesOtherFiles) {
    EXPECT_EQ(refusal_of_wave(""), "this is not a WAVE file");
    EXPECT_EQ(refusal_of_wave("RIFX1234WAVE"), "this is not a WAVE file");
    EXPECT_EQ(refusal_of_wave("RIFF1234AVI "), "this is not a WAVE file");
    EXPECT_EQ(refusal_of_wave("RIFF1234WAVE"), "the file has no samples");
    EXPECT_EQ(refusal_of_wave("RIFF1234WAVE" + wave_chunk_of("data", "ab")),
              "the samples come before their format");
    EXPECT_EQ(refusal_of_wave("RIFF1234WAVE" + wave_chunk_of("fmt ", "abc")),
              "the format of the samples has 3 bytes; it needs 16");
    EXPECT_EQ(refusal_of_wave(wave_of(format_of_samples(2, 1, 16), "")),
              "the samples are in the format 2; only integers (1) and floating-point numbers (3) are read");
    EXPECT_EQ(
        refusal_of_wave(wave_of(format_of_samples(0xFFFE, 1, 16), "")),
        "the samples are in the format 65534; only integers (1) and floating-point numbers (3) are read");
    EXPECT_EQ(refusal_of_wave(wave_of(format_of_samples(1, 1, 12), "")), "samples of 12 bits are not read");
    EXPECT_EQ(refusal_of_wave(wave_of(format_of_samples(3, 1, 16), "")), "samples of 16 bits are not read");
    EXPECT_EQ(refusal_of_wave(wave_of(format_of_samples(1, 0, 16), "")),
              "0 channels of 16 bits do not make the 0 bytes of a frame");
    std::string odd_frame = format_of_samples(1, 2, 16);
    odd_frame[12] = 5;
    EXPECT_EQ(refusal_of_wave(wave_of(odd_frame, "")),
              "2 channels of 16 bits do not make the 5 bytes of a frame");
    EXPECT_EQ(refusal_of_wave(wave_of(format_of_samples(1, 1, 16), "abc")),
              "3 bytes of samples are not whole frames of 2");
}

TEST(ReadWave, RefusesEveryFileThatIsCutOff) {
    const std::string file = wave_of(format_of_samples(1, 1, 16), "abcdef");
    for (std::size_t size = 0; size < file.size(); ++size) {
        EXPECT_NE(refusal_of_wave(file.substr(0, size)), "") << size;
    }
    EXPECT_EQ(refusal_of_wave(file.substr(0, file.size() - 1)),
              "the file is cut off: a chunk of 6 bytes has 5");
    EXPECT_EQ(refusal_of_wave(file.substr(0, 40)), "the file is cut off within the head of a chunk");
    EXPECT_EQ(refusal_of_wave(file), "");
}

TEST(SoundWords, AreTwosComplement) {
    EXPECT_EQ(words_of_sound(wave_of(format_of_samples(1, 1, 16), little_endian(0x7FFF8000FFFF, 6)), 1, 16),
              (sample_texts{"FFFF", "8000", "7FFF"}));
    EXPECT_EQ(words_of_sound(wave_of(format_of_samples(1, 1, 8), std::string("\0\x80\xFF", 3)), 1, 8),
              (sample_texts{"80", "00", "7F"}));
    EXPECT_EQ(words_of_sound(wave_of(format_of_samples(1, 1, 24), little_endian(0x800001, 3)), 1, 24),
              (sample_texts{"800001"}));
    EXPECT_EQ(words_of_sound(wave_of(format_of_samples(1, 1, 32), little_endian(0x7FFFFFFF, 4)), 1, 32),
              (sample_texts{"7FFFFFFF"}));
}

TEST(SoundWords, AreThoseOfOneChannel) {
    const std::string file = wave_of(format_of_samples(1, 2, 16), little_endian(0x0004000300020001, 8));
    EXPECT_EQ(words_of_sound(file, 1, 16), (sample_texts{"0001", "0003"}));
    EXPECT_EQ(words_of_sound(file, 2, 16), (sample_texts{"0002", "0004"}));
    EXPECT_THROW(words_of_sound(file, 0, 16), std::out_of_range);
    EXPECT_THROW(words_of_sound(file, 3, 16), std::out_of_range);
}

TEST(SoundWords, AreScaledToOtherWidths) {
    const std::string file = wave_of(format_of_samples(1, 1, 16), little_endian(0x7FFF8000017F, 6));
    EXPECT_EQ(words_of_sound(file, 1, 20), (sample_texts{"017F0", "80000", "7FFF0"}));
    EXPECT_EQ(words_of_sound(file, 1, 64),
              (sample_texts{"017F000000000000", "8000000000000000", "7FFF000000000000"}));
    EXPECT_EQ(words_of_sound(file, 1, 8), (sample_texts{"01", "80", "7F"})); // 127.996 does not become 128
    EXPECT_EQ(words_of_sound(file, 1, 8, rounding::down), (sample_texts{"01", "80", "7F"}));
    EXPECT_EQ(words_of_sound(file, 1, 9, rounding::nearest), (sample_texts{"003", "100", "0FF"}));
    EXPECT_THROW(words_of_sound(file, 1, 65), std::invalid_argument);
}

TEST(SoundWords, TakeFractions) {
    const auto half = std::bit_cast<std::uint32_t>(0.5F);
    const auto minus_one = std::bit_cast<std::uint32_t>(-1.0F);
    const auto one = std::bit_cast<std::uint32_t>(1.0F);
    EXPECT_EQ(
        words_of_sound(wave_of(format_of_samples(3, 1, 32),
                               little_endian(half, 4) + little_endian(minus_one, 4) + little_endian(one, 4)),
                       1, 8),
        (sample_texts{"40", "80", "7F"}));
    EXPECT_EQ(words_of_sound(
                  wave_of(format_of_samples(3, 1, 64), little_endian(std::bit_cast<std::uint64_t>(-0.25), 8)),
                  1, 16),
              (sample_texts{"E000"}));
}

TEST(SoundWords, RefuseFractionsBeyondOne) {
    const auto loud = std::bit_cast<std::uint32_t>(-1.5F);
    const std::string file =
        wave_of(format_of_samples(3, 1, 32), little_endian(0, 4) + little_endian(loud, 4));
    try {
        words_of_sound(file, 1, 8);
        FAIL();
    } catch (const std::overflow_error& error) {
        EXPECT_STREQ(error.what(), "the sample -1.5 at address 0x1 is beyond -1..1");
    }
    EXPECT_EQ(words_of_sound(file, 1, 8, rounding::nearest, true), (sample_texts{"00", "80"}));
}

TEST(SoundWords, RefuseWhatIsNoNumber) {
    const auto nan = std::bit_cast<std::uint32_t>(std::numeric_limits<float>::quiet_NaN());
    EXPECT_THROW(words_of_sound(wave_of(format_of_samples(3, 1, 32), little_endian(nan, 4)), 1, 8),
                 std::domain_error);
}

TEST(SoundWords, RefuseInfiniteFractionsAlsoWhereTheySaturate) {
    const auto infinity = std::bit_cast<std::uint32_t>(std::numeric_limits<float>::infinity());
    const std::string file = wave_of(format_of_samples(3, 1, 32), little_endian(infinity, 4));
    EXPECT_THROW(words_of_sound(file, 1, 8), std::overflow_error);
    EXPECT_THROW(words_of_sound(file, 1, 8, rounding::nearest, true), std::domain_error);
}

TEST(SoundWords, RefuseNoSamples) {
    EXPECT_THROW(words_of_sound(wave_of(format_of_samples(1, 1, 16), ""), 1, 16), std::invalid_argument);
}

} // namespace
