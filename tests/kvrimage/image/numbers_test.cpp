#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/numbers.h"
#include "kvrimage/image/word.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

template <class Number>
std::vector<Number> numbers_of(const memory_image& image, std::uint64_t first, std::size_t count,
                               std::uint64_t unset = 0) {
    std::vector<Number> numbers(count, 99);
    copy_numbers(image, first, numbers, unset);
    return numbers;
}

memory_image image_with_words(std::uint32_t width, const std::vector<std::uint64_t>& values) {
    memory_image image(width, values.size(), 0x10);
    for (std::uint64_t index = 0; index < values.size(); ++index) {
        image.set(0x10 + index, word::of(values[index], width));
    }
    return image;
}

std::vector<bool> set_mask_of(const memory_image& image) {
    const std::size_t words = image.depth();
    const auto mask = std::make_unique<bool[]>(words);
    copy_is_set(image, {mask.get(), words});
    return std::vector<bool>(mask.get(), mask.get() + words);
}

template <class Number>
void words_set_one_by_one_are_copied(std::uint32_t width) {
    const std::uint64_t mask = std::numeric_limits<std::uint64_t>::max() >> (64U - width);
    std::vector<std::uint64_t> values;
    std::vector<Number> expected;
    for (std::uint64_t index = 0; index < 3000; ++index) { // more than one page of the store
        values.push_back(index * 0x9E3779B97F4A7C15U & mask);
        expected.push_back(static_cast<Number>(values.back()));
    }
    const memory_image image = image_with_words(width, values);
    EXPECT_EQ(numbers_of<Number>(image, 0x10, values.size()), expected) << width;
    const std::vector<Number> part(expected.begin() + 1001, expected.begin() + 1018);
    EXPECT_EQ(numbers_of<Number>(image, 0x10 + 1001, part.size()), part) << width;
}

TEST(Numbers, WordsThatWereSetOneByOneAreCopied) {
    for (const std::uint32_t width : {1U, 4U, 5U, 8U}) {
        words_set_one_by_one_are_copied<std::uint8_t>(width);
    }
    for (const std::uint32_t width : {3U, 9U, 12U, 13U, 16U}) {
        words_set_one_by_one_are_copied<std::uint16_t>(width);
    }
    for (const std::uint32_t width : {8U, 17U, 24U, 31U, 32U}) {
        words_set_one_by_one_are_copied<std::uint32_t>(width);
    }
    for (const std::uint32_t width : {16U, 33U, 48U, 61U, 64U}) {
        words_set_one_by_one_are_copied<std::uint64_t>(width);
    }
}

TEST(Numbers, UnsetWordsAndRunsAreFilled) {
    memory_image image(16, 8);
    image.fill({2, 4}, std::vector{word::of(0x1234, 16)});
    image.set(6, word::of(7, 16));
    EXPECT_EQ(numbers_of<std::uint16_t>(image, 0, 8, 0xABCDE),
              (std::vector<std::uint16_t>{0xBCDE, 0xBCDE, 0x1234, 0x1234, 0x1234, 0xBCDE, 7, 0xBCDE}));
    EXPECT_EQ(set_mask_of(image), (std::vector<bool>{false, false, true, true, true, false, true, false}));
}

TEST(Numbers, BytesOfEitherOrderAreCopied) {
    constexpr std::string_view bytes("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C", 12);
    const memory_image little = image_of_bytes(bytes, {.width = 32, .order = byte_order::little});
    EXPECT_EQ(numbers_of<std::uint32_t>(little, 0, 3),
              (std::vector<std::uint32_t>{0x04030201, 0x08070605, 0x0C0B0A09}));
    const memory_image big = image_of_bytes(bytes, {.width = 32, .order = byte_order::big, .base = 4});
    EXPECT_EQ(numbers_of<std::uint32_t>(big, 5, 2), (std::vector<std::uint32_t>{0x05060708, 0x090A0B0C}));
    EXPECT_EQ(numbers_of<std::uint64_t>(big, 5, 2), (std::vector<std::uint64_t>{0x05060708, 0x090A0B0C}));
    const memory_image odd = image_of_bytes(bytes, {.width = 24, .order = byte_order::little});
    EXPECT_EQ(numbers_of<std::uint32_t>(odd, 2, 2), (std::vector<std::uint32_t>{0x090807, 0x0C0B0A}));
}

TEST(Numbers, GapsBetweenBlocksOfBytesAreFilled) {
    const read_result file = parse(":020002001234B6\n:0200060056782A\n:00000001FF\n",
                                   {.as = format_of_name("hexbytes"), .width = 16, .order = byte_order::big});
    ASSERT_TRUE(file.image);
    EXPECT_FALSE(numbers_in_place(*file.image));
    EXPECT_EQ(numbers_of<std::uint16_t>(*file.image, 0, 4, 1),
              (std::vector<std::uint16_t>{1, 0x1234, 1, 0x5678}));
    EXPECT_EQ(numbers_of<std::uint16_t>(*file.image, 2, 1, 1), (std::vector<std::uint16_t>{1}));
    EXPECT_EQ(set_mask_of(*file.image), (std::vector<bool>{false, true, false, true}));
}

TEST(Numbers, DontCareBitsAreRefusedWithTheWordsBeforeThemCopied) {
    for (const char* text : {"XX", "0000XXXX"}) {
        memory_image image = image_with_words(8, {1, 2, 3, 4});
        image.set(0x12,
                  *word::parse(text, std::string_view(text).size() == 8 ? radix::bin : radix::hex, 8).value);
        std::array<std::uint8_t, 4> out = {9, 9, 9, 9};
        EXPECT_THROW(copy_numbers(image, 0x10, std::span(out)), std::domain_error) << text;
        EXPECT_EQ(out[0], 1);
        EXPECT_EQ(out[1], 2);
        EXPECT_NO_THROW(copy_numbers(image, 0x13, std::span(out).first(1)));
    }
}

TEST(Numbers, DontCareDigitsAmongShortWordsAreRefused) {
    memory_image image = image_with_words(12, {1, 2, 3, 4, 5, 6});
    image.set(0x12, *word::parse("XXX", radix::hex, 12).value);
    std::array<std::uint16_t, 6> out = {9, 9, 9, 9, 9, 9};
    EXPECT_THROW(copy_numbers(image, 0x10, std::span(out)), std::domain_error);
    EXPECT_EQ(out[1], 2);
    EXPECT_EQ(numbers_of<std::uint16_t>(image, 0x13, 3), (std::vector<std::uint16_t>{4, 5, 6}));
}

TEST(Numbers, DontCareDigitsInTheLastShortWordAreRefused) {
    memory_image image = image_with_words(12, {1, 2, 3, 4, 5, 6});
    image.set(0x15, *word::parse("XXX", radix::hex, 12).value);
    std::array<std::uint16_t, 6> out = {9, 9, 9, 9, 9, 9};
    EXPECT_THROW(copy_numbers(image, 0x10, std::span(out)), std::domain_error);
    EXPECT_EQ(out[4], 5);
}

/// The message of the refusal to copy @p count numbers of @p image, starting at @p first.
template <class Number>
std::string refusal_of_numbers(const memory_image& image, std::uint64_t first, std::size_t count) {
    try {
        static_cast<void>(numbers_of<Number>(image, first, count));
    } catch (const std::exception& error) {
        return error.what();
    }
    return "none";
}

template <class Number>
void words_are_copied_however_they_are_held() {
    EXPECT_EQ(numbers_of<Number>(image_of_bytes("abc"), 1, 2), (std::vector<Number>{'b', 'c'}));

    memory_image gaps(8, 5);
    gaps.set(0, word::of(5, 8));
    gaps.fill({2, 3}, std::array{word::of(7, 8)});
    EXPECT_EQ(numbers_of<Number>(gaps, 0, 5, 9), (std::vector<Number>{5, 9, 7, 7, 9}));
    EXPECT_EQ(refusal_of_numbers<Number>(gaps, 5, 1), "address 0x5: the memory has 0x0 to 0x4");
    EXPECT_EQ(refusal_of_numbers<Number>(gaps, 4, 2),
              "2 words from address 0x4 on: the memory ends with 0x4");

    const std::vector<std::string> texts = page_of_words(2);
    memory_image row(8, texts.size());
    set_in_row(row, 0, texts);
    ASSERT_EQ(row.words().row_at(0).count, texts.size());
    std::vector<Number> expected;
    for (const std::string& text : texts) {
        expected.push_back(static_cast<Number>(std::stoul(text, nullptr, 16)));
    }
    EXPECT_EQ(numbers_of<Number>(row, 0, texts.size()), expected);
    row.words().set(5, "1X");
    ASSERT_EQ(row.words().row_at(0).count, texts.size());
    EXPECT_EQ(refusal_of_numbers<Number>(row, 0, texts.size()),
              "the word at address 0x5 has don't-care bits: 1X");
}

TEST(Numbers, OfAllSizesAreCopiedHoweverTheWordsAreHeld) {
    words_are_copied_however_they_are_held<std::uint8_t>();
    words_are_copied_however_they_are_held<std::uint16_t>();
    words_are_copied_however_they_are_held<std::uint32_t>();
    words_are_copied_however_they_are_held<std::uint64_t>();
}

TEST(Numbers, WordsThatAreTooWideAreRefused) {
    std::array<std::uint8_t, 1> bytes{};
    std::array<std::uint16_t, 1> shorts{};
    std::array<std::uint32_t, 1> longs{};
    std::array<std::uint64_t, 1> longest{};
    EXPECT_THROW(copy_numbers(memory_image(9, 1), 0, std::span(bytes)), std::domain_error);
    EXPECT_THROW(copy_numbers(memory_image(17, 1), 0, std::span(shorts)), std::domain_error);
    EXPECT_THROW(copy_numbers(memory_image(33, 1), 0, std::span(longs)), std::domain_error);
    EXPECT_THROW(copy_numbers(memory_image(65, 1), 0, std::span(longest)), std::domain_error);
}

TEST(Numbers, AddressesBeyondTheMemoryAreRefused) {
    const memory_image image = image_with_words(8, {1, 2});
    std::array<std::uint8_t, 2> out{};
    EXPECT_THROW(copy_numbers(image, 0x0F, std::span(out)), std::out_of_range);
    EXPECT_THROW(copy_numbers(image, 0x11, std::span(out)), std::out_of_range);
    EXPECT_THROW(copy_numbers(image, 0x12, std::span(out)), std::out_of_range);
    EXPECT_NO_THROW(copy_numbers(image, 0, std::span(out).first(0)));
    std::array<bool, 3> mask{};
    EXPECT_THROW(copy_is_set(image, mask), std::invalid_argument);
}

TEST(Numbers, WholeBytesAreFoundInPlace) {
    const memory_image image = image_of_bytes("abcdefgh", {.width = 32, .order = byte_order::big});
    const auto found = numbers_in_place(image);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bytes, 4U);
    EXPECT_EQ(found->order, byte_order::big);
    EXPECT_EQ(found->count, 2U);
    EXPECT_EQ(std::string_view(static_cast<const char*>(found->numbers), 8), "abcdefgh");
}

TEST(Numbers, WordsWithSurplusBitsAreFoundInPlace) {
    const auto found = numbers_in_place(image_of_bytes("\1\2\3\4", {.width = 12}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bytes, 2U);
    EXPECT_EQ(found->count, 2U);
    const memory_image with_check_bits =
        protected_by(image_of_bytes("abcd", {.width = 8}), ecc_scheme::named("hamming", 8));
    EXPECT_EQ(with_check_bits.width(), 13U);
    const auto of_check_bits = numbers_in_place(with_check_bits);
    ASSERT_TRUE(of_check_bits);
    EXPECT_EQ(of_check_bits->bytes, 2U);
}

TEST(Numbers, InPlaceTheyOutliveTheMemory) {
    std::optional<number_array> found;
    {
        memory_image image = image_of_bytes(std::string(1000, 'a'), {.width = 8});
        found = numbers_in_place(image);
        image.set(0, word::of('b', 8));
        EXPECT_FALSE(numbers_in_place(image)) << "it holds texts now";
    }
    ASSERT_TRUE(found);
    EXPECT_EQ(std::string_view(static_cast<const char*>(found->numbers), 1000), std::string(1000, 'a'));
}

TEST(Numbers, OtherWordsAreNotInPlace) {
    EXPECT_FALSE(numbers_in_place(memory_image(8, 4)));
    EXPECT_FALSE(numbers_in_place(image_of_bytes("abcdef", {.width = 24})));
    EXPECT_FALSE(numbers_in_place(image_of_bytes("0123456789abcdef", {.width = 128})));
    const read_result shorter =
        parse("abc", {.as = format_of_name("binary"), .width = 8, .depth = 4, .order = byte_order::big});
    ASSERT_TRUE(shorter.image);
    ASSERT_EQ(shorter.image->depth(), 4U);
    EXPECT_FALSE(numbers_in_place(*shorter.image)) << "the last word is not set";
}

} // namespace
