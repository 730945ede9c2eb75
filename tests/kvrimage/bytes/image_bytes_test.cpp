#include "kvrimage/bytes/image_bytes.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using std::string_literals::operator""s;
using testing::ThrowsMessage;

/// The words of a memory of up to 64 bits.
std::vector<std::uint64_t> numbers_of(const memory_image& image) {
    std::vector<std::uint64_t> word_values(image.depth());
    image.copy_to(image.base(), word_values);
    return word_values;
}

using word_values = std::vector<std::uint64_t>;

TEST(ImageBytes, AreWordsInEitherOrder) {
    EXPECT_EQ(numbers_of(image_of_bytes("\x01\x02\xFE"s)), (word_values{1, 2, 0xFE}));
    const std::string bytes = "\x01\x02\x03\x04\xF5\xF6\xF7\xF8"s;
    EXPECT_EQ(numbers_of(image_of_bytes(bytes, {.width = 16})),
              (word_values{0x0201, 0x0403, 0xF6F5, 0xF8F7}));
    EXPECT_EQ(numbers_of(image_of_bytes(bytes, {.width = 16, .order = byte_order::big})),
              (word_values{0x0102, 0x0304, 0xF5F6, 0xF7F8}));
    EXPECT_EQ(numbers_of(image_of_bytes(bytes, {.width = 32})), (word_values{0x04030201, 0xF8F7F6F5}));
    EXPECT_EQ(numbers_of(image_of_bytes(bytes, {.width = 64})), (word_values{0xF8F7F6F504030201}));
    EXPECT_EQ(numbers_of(image_of_bytes(bytes, {.width = 64, .order = byte_order::big})),
              (word_values{0x01020304F5F6F7F8}));
}

TEST(ImageBytes, OfAWidthOfNoWholeBytesHaveSurplusHighBits) {
    EXPECT_EQ(numbers_of(image_of_bytes("\x34\x02\xFF\x0F"s, {.width = 12})), (word_values{0x234, 0xFFF}));
    EXPECT_EQ(numbers_of(image_of_bytes("\x12\x34"s, {.width = 13, .order = byte_order::big})),
              (word_values{0x1234}));
    EXPECT_EQ(numbers_of(image_of_bytes("\x01\x00\x01"s, {.width = 1})), (word_values{1, 0, 1}));
    EXPECT_EQ(bytes_of_image(image_of_bytes("\x34\x02\xFF\x0F"s, {.width = 12}), byte_order::big),
              "\x02\x34\x0F\xFF"s);
}

TEST(ImageBytes, SurplusBitsThatAreNotZeroAreRefusedWithTheirAddress) {
    try {
        static_cast<void>(image_of_bytes("\x34\x02\xFF\x1F"s, {.width = 12, .base = 0x10}));
        FAIL() << "taken";
    } catch (const std::overflow_error& error) {
        EXPECT_STREQ(error.what(), "the bytes of address 0x11 do not fit a word of 12 bits");
    }
    EXPECT_THROW(static_cast<void>(image_of_bytes("\x40\x00"s, {.width = 14, .order = byte_order::big})),
                 std::overflow_error);
}

TEST(ImageBytes, AWordThatIsTooWideIsFoundAnywhere) {
    for (const std::size_t words : {1U, 63U, 64U, 65U, 128U, 200U}) {
        for (std::size_t wide = 0; wide < words; ++wide) {
            std::string bytes(3 * words, '\x01');
            bytes[3 * wide] = '\x10';
            EXPECT_THAT(
                [&] { static_cast<void>(image_of_bytes(bytes, {.width = 20, .order = byte_order::big})); },
                ThrowsMessage<std::overflow_error>(
                    fmt::format("the bytes of address 0x{:X} do not fit a word of 20 bits", wide)));
        }
    }
}

TEST(ImageBytes, BeginAtTheBase) {
    const memory_image image = image_of_bytes("ab", {.base = std::numeric_limits<std::uint64_t>::max() - 1});
    EXPECT_EQ(image.last_address(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(image[image.last_address()], word::of('b', 8));
    EXPECT_THROW(
        static_cast<void>(image_of_bytes("abc", {.base = std::numeric_limits<std::uint64_t>::max() - 1})),
        std::invalid_argument);
}

TEST(ImageBytes, OfNoWholeWordsNeedAPad) {
    EXPECT_THROW(static_cast<void>(image_of_bytes("abc", {.width = 16})), std::invalid_argument);
    EXPECT_EQ(numbers_of(image_of_bytes("\x01\x02\x03"s, {.width = 16, .pad = 0xFF})),
              (word_values{0x0201, 0xFF03}));
    EXPECT_EQ(numbers_of(image_of_bytes("\x01\x02\x03"s, {.width = 16, .order = byte_order::big, .pad = 0})),
              (word_values{0x0102, 0x0300}));
    EXPECT_EQ(numbers_of(image_of_bytes("\x01"s, {.width = 32, .pad = 0xEE})), (word_values{0xEEEEEE01}));
    EXPECT_EQ(numbers_of(image_of_bytes("\x01\x02"s, {.width = 16, .pad = 0xEE})), (word_values{0x0201}));
    EXPECT_THROW(static_cast<void>(image_of_bytes("\x01"s, {.width = 12, .pad = 0xFF})), std::overflow_error);
}

TEST(ImageBytes, OfNothingAndOfImpossibleWordsAreRefused) {
    for (const byte_options& options : {byte_options{}, byte_options{.width = 16, .pad = 0}}) {
        EXPECT_THAT([&options] { static_cast<void>(image_of_bytes("", options)); },
                    ThrowsMessage<std::invalid_argument>("a memory has at least one byte"));
    }
    EXPECT_THROW(static_cast<void>(image_of_bytes("a", {.width = 0})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(image_of_bytes("a", {.width = widest_word + 1, .pad = 0})),
                 std::invalid_argument);
}

TEST(ImageBytes, OfWordsThatAreNotSetNeedAValue) {
    memory_image image(16, 4, 0x20);
    image.set(0x21, word::of(0x1234, 16));
    try {
        static_cast<void>(bytes_of_image(image));
        FAIL() << "made";
    } catch (const std::domain_error& error) {
        EXPECT_STREQ(error.what(), "the word at address 0x20 is not set");
    }
    EXPECT_EQ(bytes_of_image(image, byte_order::little, word::of(0xFF00, 16)),
              "\x00\xFF\x34\x12\x00\xFF\x00\xFF"s);
    EXPECT_THROW(static_cast<void>(bytes_of_image(image, byte_order::little, word::of(0, 8))),
                 std::invalid_argument);
    image.fill_unset(word(16));
    EXPECT_EQ(bytes_of_image(image), "\x00\x00\x34\x12\x00\x00\x00\x00"s);
}

std::string refusal_of_bytes(const memory_image& image) {
    try {
        return bytes_of_image(image);
    } catch (const std::domain_error& error) {
        return error.what();
    }
}

TEST(ImageBytes, OfDontCareBitsDoNotExist) {
    memory_image image(16, 3);
    for (std::uint64_t address = 0; address < 3; ++address) {
        image.set(address, word::of(address, 16));
    }
    image.set(2, *word::parse("12X4", radix::hex, 16).value);
    EXPECT_EQ(refusal_of_bytes(image), "the word at address 0x2 has don't-care bits: 12X4");
    image.set(1, *word::parse("000000000000000X", radix::bin, 16).value);
    EXPECT_EQ(refusal_of_bytes(image), "the word at address 0x1 has don't-care bits: 000000000000000X");
    memory_image narrow(4, 1);
    narrow.set(0, *word::parse("X", radix::hex, 4).value);
    EXPECT_EQ(refusal_of_bytes(narrow), "the word at address 0x0 has don't-care bits: X");
}

TEST(ImageBytes, OfAGapNeedAValueWithoutDontCareBits) {
    memory_image image(8, 4);
    image.set(0, word::of(1, 8));
    image.set(2, *word::parse("1X", radix::hex, 8).value);
    const auto refusal = [&image](const std::optional<word>& unset) {
        try {
            return bytes_of_image(image, byte_order::little, unset);
        } catch (const std::domain_error& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(refusal(std::nullopt), "the word at address 0x1 is not set");
    EXPECT_EQ(refusal(*word::parse("X2", radix::hex, 8).value),
              "the word at address 0x1 has don't-care bits: X2");
    EXPECT_EQ(refusal(word::of(3, 8)), "the word at address 0x2 has don't-care bits: 1X");
    image.set(1, *word::parse("X3", radix::hex, 8).value);
    EXPECT_EQ(refusal(std::nullopt), "the word at address 0x1 has don't-care bits: X3");
    image.set(1, word::of(4, 8));
    image.set(2, word::of(5, 8));
    EXPECT_EQ(refusal(*word::parse("X2", radix::hex, 8).value),
              "the word at address 0x3 has don't-care bits: X2");
}

TEST(ImageBytes, OfFillsRepeat) {
    memory_image image(12, 10);
    image.fill({0, 6}, std::vector{word::of(0x123, 12), word::of(0x456, 12)});
    image.fill({7, 9}, std::vector{word::of(0xABC, 12)});
    EXPECT_EQ(bytes_of_image(image, byte_order::big),
              "\x01\x23\x04\x56\x01\x23\x04\x56\x01\x23\x04\x56\x01\x23"
              "\x0A\xBC\x0A\xBC\x0A\xBC"s);
}

/// Random words, in a memory and in a list.
class random_byte_words {
public:
    random_byte_words(std::uint32_t width, std::uint32_t seed) : bits(width), engine(seed) {}

    void fill_image(memory_image& image, std::vector<word>& model) {
        for (int step = 0; step < 6; ++step) {
            std::vector<word> pattern;
            for (std::uint64_t left = 1 + engine() % 3; left != 0; --left) {
                pattern.push_back(random_word());
            }
            const std::uint64_t first = engine() % model.size();
            const std::uint64_t last = first + engine() % (model.size() - first);
            image.fill({first, last}, pattern);
            for (std::uint64_t address = first; address <= last; ++address) {
                model[address] = pattern[(address - first) % pattern.size()];
            }
        }
        for (std::uint64_t left = engine() % 200; left != 0; --left) {
            const std::uint64_t address = engine() % model.size();
            model[address] = random_word();
            image.set(address, model[address]);
        }
    }

    word random_word() {
        std::string bytes((bits + 7) / 8, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(engine());
        }
        bytes.back() =
            static_cast<char>(static_cast<unsigned char>(bytes.back()) >> (bytes.size() * 8 - bits));
        return word::of_bytes(bytes, byte_order::little, bits);
    }

private:
    std::uint32_t bits;
    std::mt19937 engine;
};

std::string bytes_of_model(const std::vector<word>& words, byte_order order) {
    std::string bytes;
    for (const word& each : words) {
        bytes += each.to_bytes(order).value();
    }
    return bytes;
}

TEST(ImageBytes, AreThoseOfEachWordAndBack) {
    for (const std::uint32_t width : {1U,  4U,  5U,  8U,  9U,   12U,  16U,   20U,   24U,   31U,  32U,
                                      33U, 60U, 64U, 65U, 100U, 128U, 1023U, 1024U, 1030U, 5000U}) {
        for (const std::size_t depth : {1U, 1023U, 1024U, 2500U}) {
            random_byte_words random(width, static_cast<std::uint32_t>(width * 7 + depth));
            const word unset = random.random_word();
            memory_image image(width, depth);
            std::vector<word> model(depth, unset);
            random.fill_image(image, model);
            for (const byte_order order : {byte_order::little, byte_order::big}) {
                const std::string bytes = bytes_of_image(image, order, unset);
                ASSERT_EQ(bytes, bytes_of_model(model, order)) << width << " bits, " << depth << " words";
                memory_image filled = image;
                filled.fill_unset(unset);
                ASSERT_EQ(image_of_bytes(bytes, {.width = width, .order = order}), filled)
                    << width << " bits, " << depth << " words";
            }
        }
    }
}

TEST(ImageBytes, OfTheWidestWordAreExact) {
    std::string bytes(2 * (widest_word / 8), '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes[index] = static_cast<char>(index * 7 + index / 256);
    }
    const memory_image image = image_of_bytes(bytes, {.width = widest_word});
    EXPECT_EQ(image.depth(), 2U);
    EXPECT_EQ(image[1], word::of_bytes(std::string_view(bytes).substr(widest_word / 8), byte_order::little,
                                       widest_word));
    EXPECT_EQ(bytes_of_image(image), bytes);
}

} // namespace
