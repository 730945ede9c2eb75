#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/readmem/readmem_reader.h"
#include "kvrimage/formats/readmem/readmem_writer.h"
#include "tests/kvrimage/rounds.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

/// A memory whose first @p count words are their address times 17.
memory_image counting_readmem_image(std::uint32_t width, std::uint64_t depth, std::uint64_t count) {
    memory_image image(width, depth);
    for (std::uint64_t address = 0; address < count; ++address) {
        const std::uint64_t value = address * 17;
        image.set(address, word::of(width < 64 ? value & ((std::uint64_t{1} << width) - 1) : value, width));
    }
    return image;
}

std::string as_readmemh(const memory_image& image, const std::vector<choice>& choices = {}) {
    write_options options;
    options.as = &readmemh_format;
    options.choices = choices;
    return to_text(image, options);
}

std::string as_readmemb(const memory_image& image) {
    write_options options;
    options.as = &readmemb_format;
    return to_text(image, options);
}

TEST(ReadmemWriter, WritesEightWordsALine) {
    EXPECT_EQ(as_readmemh(counting_readmem_image(8, 10, 10)), "00 11 22 33 44 55 66 77\n88 99\n");
    EXPECT_EQ(as_readmemb(counting_readmem_image(2, 3, 3)), "00 01 10\n");
}

TEST(ReadmemWriter, LinesStayWithinEightyColumns) {
    for (const std::uint32_t width : {1U, 8U, 36U, 40U, 64U, 76U, 152U, 156U, 300U}) {
        const std::string text = as_readmemh(counting_readmem_image(width, 16, 16));
        const std::size_t length = text.find('\n');
        const std::size_t digits = (width + 3) / 4;
        EXPECT_TRUE(length <= 80 || length == digits) << width;
        EXPECT_TRUE(length * 2 + 1 > 80 || length == 8 * (digits + 1) - 1) << width;
    }
}

TEST(ReadmemWriter, AddressesComeAfterGapsOnly) {
    memory_image image(8, 64);
    image.set(1, word::of(0x12, 8));
    image.set(2, word::of(0x34, 8));
    image.set(8, word::of(0x56, 8));
    image.set(63, word::of(0x78, 8));
    EXPECT_EQ(as_readmemh(image), "@01 12 34\n@08 56\n@3F 78\n");
}

TEST(ReadmemWriter, EveryAddressIsWrittenOnDemand) {
    EXPECT_EQ(as_readmemh(counting_readmem_image(8, 10, 10), {{"every-address", ""}}),
              "@0 00 11 22 33 44 55 66 77\n@8 88 99\n");
}

TEST(ReadmemWriter, WritesAsManyWordsALineAsAreWanted) {
    EXPECT_EQ(as_readmemh(counting_readmem_image(8, 3, 3), {{"words-per-line", "2"}}), "00 11\n22\n");
    EXPECT_EQ(as_readmemh(counting_readmem_image(8, 3, 3), {{"words-per-line", "1"}}), "00\n11\n22\n");
}

TEST(ReadmemWriter, WordsPerLineIsANumber) {
    for (const char* const value : {"0", "1025", "x", "1x", "", "-1"}) {
        write_options options;
        options.as = &readmemh_format;
        options.choices = {{"words-per-line", value}};
        const std::vector<diagnostic> found = can_write(counting_readmem_image(8, 3, 3), options);
        ASSERT_EQ(found.size(), 1U) << value;
        EXPECT_EQ(found[0].id, diagnostic_id::choice_value);
        EXPECT_EQ(found[0].hint, "use one of: 1 to 1024");
    }
}

TEST(ReadmemWriter, ABannerIsWrittenOnDemand) {
    EXPECT_EQ(as_readmemh(counting_readmem_image(8, 4, 2), {{"banner", ""}}),
              "// 4 words of 8 bits\n00 11\n");
}

TEST(ReadmemWriter, WritesDontCareBitsInBinary) {
    memory_image image(8, 2);
    image.set(0, *word::parse("1010X1X0", radix::bin, 8).value);
    image.set(1, *word::parse("XXXX0001", radix::bin, 8).value);
    EXPECT_EQ(as_readmemb(image), "1010X1X0 XXXX0001\n");
    write_options options;
    options.as = &readmemh_format;
    const std::vector<diagnostic> found = can_write(image, options);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, diagnostic_id::readmem_dont_care_bit);
    EXPECT_EQ(found[0].address, 0U);
    image.unset({0, 0});
    EXPECT_EQ(as_readmemh(image), "@1 X1\n");
}

TEST(ReadmemWriter, LooksForDontCareBitsInFills) {
    memory_image image(8, 1000);
    const std::vector<word> pattern = {word::of(1, 8), *word::parse("0000000X", radix::bin, 8).value};
    image.fill({0, 999}, pattern);
    write_options options;
    options.as = &readmemh_format;
    ASSERT_EQ(can_write(image, options).size(), 1U);
    EXPECT_EQ(can_write(image, options)[0].address, 1U);
    const std::vector<word> plain = {word::of(1, 8), word::of(2, 8)};
    image.fill({0, 999}, plain);
    EXPECT_TRUE(can_write(image, options).empty());
    EXPECT_EQ(as_readmemh(image).substr(0, 12), "01 02 01 02 ");
    EXPECT_GE(written_readmemh_size(image, options), 3000U);
}

TEST(ReadmemWriter, AMemoryWithoutWordsCannotBeWritten) {
    write_options options;
    options.as = &readmemb_format;
    const std::vector<diagnostic> found = can_write(memory_image(8, 4), options);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].id, diagnostic_id::readmem_nothing_to_write);
}

/// A memory with some words set, and with don't-care bits if @p digits_radix can show them.
memory_image random_readmem_image(std::uint32_t width, std::mt19937& random, radix digits_radix) {
    memory_image image(width, 1 + random() % 200);
    const auto random_word = [&] {
        std::string digits;
        const bool plain = random() % 2 == 0;
        for (std::uint32_t digit = 0; digit < (digits_radix == radix::bin ? width : (width + 3) / 4);
             ++digit) {
            const bool is_top = digits_radix == radix::hex && digit == 0;
            const unsigned values = digits_radix == radix::bin ? 2
                                    : is_top                   ? 1U << ((width - 1) % 4 + 1)
                                                               : 16;
            digits += !plain && random() % 8 == 0 ? 'X' : "0123456789ABCDEF"[random() % values];
        }
        return *word::parse(digits, digits_radix, width).value;
    };
    image.set(image.last_address(), random_word());
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        if (random() % 3 != 0) {
            image.set(address, random_word());
        }
    }
    return image;
}

/// The text of @p image, written one word at a time. All words must be hexadecimal digits.
std::string plain_readmemh(const memory_image& image, std::uint64_t words_per_line, bool every_address) {
    const std::size_t digits = fmt::formatted_size("{:X}", image.bounds()->last);
    std::string text;
    std::uint64_t next = 0;
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        if (!image[address]) {
            continue;
        }
        const bool goes_on = address == next && address % words_per_line != 0;
        text += goes_on ? " " : (text.empty() ? "" : "\n");
        if (address != next || (every_address && !goes_on)) {
            text += fmt::format("@{:0{}X} ", address, digits);
        }
        text += image[address]->to_text(radix::hex).value();
        next = address + 1;
    }
    return text + "\n";
}

TEST(ReadmemWriter, RowsAreWrittenAsWordsAre) {
    std::mt19937 random(23);
    for (int round = 0; round < rounds(60); ++round) {
        const auto width = static_cast<std::uint32_t>(4 * (1 + random() % (random() % 8 == 0 ? 300 : 10)));
        memory_image image(width, 3000);
        std::uint64_t address = random() % 3 * 5;
        for (int part = 0; part < 3; ++part) {
            for (auto count = 1 + random() % 900; count > 0 && address < image.depth(); --count) {
                std::string digits(width / 4, '0');
                std::ranges::generate(digits, [&random] { return "0123456789ABCDEF"[random() % 16]; });
                image.set(address++, *word::parse(digits, radix::hex, width).value);
            }
            address += random() % 50;
        }
        const std::uint64_t per_line = 1 + random() % (random() % 4 == 0 ? 1024 : 10);
        const bool every_address = random() % 3 == 0;
        std::vector<choice> choices = {{"words-per-line", std::to_string(per_line)}};
        if (every_address) {
            choices.push_back({"every-address", ""});
        }
        EXPECT_EQ(as_readmemh(image, choices), plain_readmemh(image, per_line, every_address));
    }
}

TEST(ReadmemWriter, WhatIsWrittenReadsAsTheSameWords) {
    std::mt19937 random(3);
    const std::vector<std::vector<choice>> layouts = {
        {}, {{"every-address", ""}}, {{"words-per-line", "3"}, {"banner", ""}}};
    for (std::uint32_t width = 1; width <= 300; width += sweep_step) {
        for (const format* as : {&readmemh_format, &readmemb_format}) {
            const memory_image image =
                random_readmem_image(width, random, as == &readmemh_format ? radix::hex : radix::bin);
            write_options options;
            options.as = as;
            options.choices = layouts[width % layouts.size()];
            const std::string text = to_text(image, options);
            read_options back;
            back.as = as;
            back.width = width;
            const read_result result = parse(text, back);
            ASSERT_TRUE(result.image) << text;
            EXPECT_TRUE(*result.image == image) << text;
            EXPECT_TRUE(result.diagnostics.empty()) << text;
            const std::uint64_t size = as->written_size(image, options);
            EXPECT_GE(size, text.size());
            EXPECT_LE(size, text.size() + text.size() / 5 + 20) << width;
        }
    }
}

} // namespace
