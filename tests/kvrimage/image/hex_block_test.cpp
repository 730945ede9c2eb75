// The kernels in the form for this machine and in the portable form.

#include "kvrimage/image/hex_block.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace kvrimage;

constexpr std::string_view upper_case = "0123456789ABCDEF";
constexpr std::string_view lower_case = "0123456789abcdef";

/// All byte values, starting with @p first.
std::string all_bytes_from(std::size_t first) {
    std::string bytes;
    for (std::size_t value = 0; value < 256; ++value) {
        bytes += static_cast<char>(value + first);
    }
    return bytes;
}

std::string spelt_in(std::string_view digits, std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4U];
        text += digits[static_cast<unsigned char>(byte) & 0xFU];
    }
    return text;
}

unsigned plain_sum(std::string_view bytes) {
    unsigned sum = 0;
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

template <class Decoder>
void expect_decoded(std::string_view digits, std::string_view bytes) {
    Decoder all;
    std::array<char, 16> made{};
    all.parse_double_block(digits.data(), made.data());
    ASSERT_TRUE(all.are_digits()) << digits;
    ASSERT_EQ(std::string_view(made.data(), made.size()), bytes);
    ASSERT_EQ(all.sum(), plain_sum(bytes));
    for (std::size_t summed = 1; summed <= 8; ++summed) {
        all.take(digits.data(), made.data(), summed);
        ASSERT_EQ(std::string_view(made.data(), 8), bytes.substr(0, 8));
        ASSERT_EQ(all.sum(), plain_sum(bytes) + plain_sum(bytes.substr(8 - summed, summed)));
        all = {};
        all.parse_double_block(digits.data(), made.data());
    }
}

template <class Decoder>
void expect_every_digit_is_looked_at() {
    for (std::size_t place = 0; place < 32; ++place) {
        for (int character = 0; character < 256; ++character) {
            std::string digits(32, 'b');
            digits[place] = static_cast<char>(character);
            const bool is_digit = upper_case.find(digits[place]) != std::string_view::npos ||
                                  lower_case.find(digits[place]) != std::string_view::npos;
            std::array<char, 16> made{};
            Decoder both;
            both.parse_double_block(digits.data(), made.data());
            ASSERT_EQ(both.are_digits(), is_digit) << place << " " << character;
            Decoder one;
            one.take(digits.data(), made.data(), 1);
            ASSERT_EQ(one.are_digits(), is_digit || place >= 16) << place << " " << character;
            one.take(std::string(16, '0').data(), made.data(), 8);
            ASSERT_EQ(one.are_digits(), is_digit || place >= 16) << "a fault is not forgotten";
        }
    }
}

template <class Encoder>
void expect_encoded(std::string_view bytes) {
    Encoder encoder;
    std::array<char, 32> made{};
    encoder.take(bytes.data(), made.data());
    ASSERT_EQ(std::string_view(made.data(), made.size()), spelt_in(upper_case, bytes));
    ASSERT_EQ(encoder.sum(), plain_sum(bytes));
    encoder.take(bytes.data(), made.data());
    ASSERT_EQ(encoder.sum(), 2 * plain_sum(bytes));
}

TEST(HexBlock, EveryByteAtEveryPlaceIsDecodedAndSummedUp) {
    for (std::size_t first = 0; first < 256; ++first) {
        const std::string bytes = all_bytes_from(first).substr(0, 16);
        for (const std::string_view digits : {upper_case, lower_case}) {
            expect_decoded<digit_block_decoder>(spelt_in(digits, bytes), bytes);
            expect_decoded<portable::digit_block_decoder>(spelt_in(digits, bytes), bytes);
        }
    }
}

TEST(HexBlock, EveryCharacterThatIsNoDigitIsFoundAtEveryPlace) {
    expect_every_digit_is_looked_at<digit_block_decoder>();
    expect_every_digit_is_looked_at<portable::digit_block_decoder>();
}

TEST(HexBlock, EveryByteAtEveryPlaceIsEncodedAndSummedUp) {
    for (std::size_t first = 0; first < 256; ++first) {
        const std::string bytes = all_bytes_from(first).substr(0, 16);
        expect_encoded<digit_block_encoder>(bytes);
        expect_encoded<portable::digit_block_encoder>(bytes);
    }
}

TEST(HexBlock, LimbsAreWrittenFromTheHighestDigitOn) {
    for (std::uint64_t value = 0; value < 256; ++value) {
        const std::uint64_t limb = 0x0102030405060708 * value;
        std::string bytes;
        for (unsigned shift = 64; shift != 0;) {
            shift -= 8;
            bytes += static_cast<char>(limb >> shift);
        }
        for (const auto& write : {write_limb, portable::write_limb}) {
            std::array<char, 16> made{};
            write(limb, made.data());
            ASSERT_EQ(std::string_view(made.data(), made.size()), spelt_in(upper_case, bytes));
        }
        ASSERT_EQ(sum_of_limb(limb), plain_sum(bytes));
    }
    EXPECT_EQ(sum_of_limb(~std::uint64_t{0}), 8 * 255U);
}

} // namespace
