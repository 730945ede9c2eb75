#include "kvrimage/formats/mif/mif_reader.h"
#include "kvrimage/formats/mif/mif_writer.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

struct mif_text_sink : text_sink {
    void write(std::string_view part) override { text.append(part); }
    std::string text;
};

std::string written_mif(const memory_image& image, const write_options& options = {}) {
    EXPECT_TRUE(can_write_mif(image, options).empty());
    mif_text_sink sink;
    write_mif(image, options, sink);
    return sink.text;
}

word parsed(std::string_view text, std::uint32_t width, radix digits_radix = radix::hex) {
    return *word::parse(text, digits_radix, width).value;
}

/// The text after "CONTENT BEGIN".
std::string lines_of(const memory_image& image, const write_options& options = {}) {
    const std::string text = written_mif(image, options);
    const std::string_view begin = "CONTENT BEGIN\n";
    return text.substr(text.find(begin) + begin.size());
}

write_options shown_in(radix addresses, radix data, bool runs = true) {
    write_options options;
    options.address_radix = addresses;
    options.data_radix = data;
    options.runs = runs;
    return options;
}

TEST(MifWriter, StatesWidthDepthAndRadixes) {
    EXPECT_EQ(written_mif(memory_image(8, 16), shown_in(radix::oct, radix::dec)),
              "-- Memory Initialization File, written by kvrmem\n\nWIDTH=8;\nDEPTH=16;\n\n"
              "ADDRESS_RADIX=OCT;\nDATA_RADIX=DEC;\n\nCONTENT BEGIN\nEND;\n");
}

TEST(MifWriter, IsHexadecimalUnlessAsked) {
    const std::string text = written_mif(memory_image(8, 16));
    EXPECT_NE(text.find("ADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\n"), std::string::npos);
}

TEST(MifWriter, EqualNeighboursShareALine) {
    memory_image image(8, 256);
    image.set(1, word::of(0xAB, 8));
    image.fill({0x10, 0x1F}, std::vector{word::of(1, 8)});
    EXPECT_EQ(lines_of(image), "\t01  :   AB;\n\t[10..1f]  :   01;\nEND;\n");
}

TEST(MifWriter, WithoutRunsEveryWordHasALine) {
    memory_image image(4, 16);
    image.fill({1, 3}, std::vector{word::of(1, 4), word::of(2, 4)});
    EXPECT_EQ(lines_of(image, shown_in(radix::dec, radix::bin, false)),
              "\t1   :   0001;\n\t2   :   0010;\n\t3   :   0001;\nEND;\n");
}

TEST(MifWriter, RepeatedWordsAreOneRange) {
    memory_image image(8, 1U << 20U);
    image.fill({0, (1U << 20U) - 1}, std::vector{word::of(1, 8), word::of(2, 8)});
    EXPECT_EQ(lines_of(image), "\t[00000..fffff]  :   01 02;\nEND;\n");
}

TEST(MifWriter, LongTurnsGoOnInFurtherLines) {
    memory_image image(256, 1024);
    const std::vector<word> turn = {word::of(1, 256), word::of(2, 256), word::of(3, 256), word::of(4, 256),
                                    word::of(5, 256), word::of(6, 256), word::of(7, 256), word::of(8, 256)};
    image.fill({0, 1023}, turn);
    std::string text = written_mif(image);
    for (std::size_t begin = 0, end = text.find('\n'); end != std::string::npos;
         end = text.find('\n', begin)) {
        EXPECT_LE(end - begin, 511U);
        begin = end + 1;
    }
    EXPECT_TRUE(*read_mif(text, {}).image == image);
}

TEST(MifWriter, BaseOtherThanZeroIsRefused) {
    const auto faults = can_write_mif(memory_image(8, 16, 0x100), {});
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].message, "the addresses begin at 256, but those of a MIF begin at 0");
}

TEST(MifWriter, TooDeepMemoryIsRefused) {
    EXPECT_TRUE(can_write_mif(memory_image(8, 0x7FFFFFFF), {}).empty());
    const auto faults = can_write_mif(memory_image(8, 0x80000000), {});
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].id, diagnostic_id::mif_too_deep);
}

TEST(MifWriter, WordsTooWideForALineAreRefused) {
    const memory_image image(2000, 16);
    const auto faults = can_write_mif(image, shown_in(radix::hex, radix::bin));
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].message,
              "words of 2000 bits in BIN need lines of 2014 characters; a MIF may have 511");
    EXPECT_EQ(faults[0].hint, "");
    const auto narrower = can_write_mif(memory_image(1900, 16), shown_in(radix::hex, radix::bin));
    ASSERT_EQ(narrower.size(), 1U);
    EXPECT_EQ(narrower[0].hint, "write them in HEX");
    EXPECT_TRUE(can_write_mif(memory_image(1900, 16), {}).empty());
}

TEST(MifWriter, DontCareBitsThatTheRadixCannotShowAreRefused) {
    memory_image image(8, 16);
    image.fill({0, 9}, std::vector{word::of(1, 8), word::of(2, 8)});
    image.set(11, parsed("1X", 8));
    const auto faults = can_write_mif(image, shown_in(radix::hex, radix::dec));
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].message, "word 1X at address 11 has don't-care bits, which DEC cannot show");
    EXPECT_EQ(faults[0].hint, "write it in HEX");
    EXPECT_TRUE(can_write_mif(image, {}).empty());
    image.set(12, parsed("0001000X", 8, radix::bin));
    const auto in_hex = can_write_mif(image, {});
    ASSERT_EQ(in_hex.size(), 1U);
    EXPECT_EQ(in_hex[0].hint, "write it in BIN");
    EXPECT_TRUE(can_write_mif(image, shown_in(radix::hex, radix::bin)).empty());
}

TEST(MifWriter, DontCareBitsWithinARepeatedFillAreFound) {
    memory_image image(8, 1U << 16U);
    image.fill({0, 0xFFFF}, std::vector{word::of(1, 8), parsed("X1", 8)});
    const auto faults = can_write_mif(image, shown_in(radix::hex, radix::uns));
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].message, "word X1 at address 1 has don't-care bits, which UNS cannot show");
}

TEST(MifWriter, MemoriesOfManyBlocksComeBack) {
    memory_image image(16, 200000);
    std::vector<word> turn;
    for (std::uint64_t address = 0; address < 60000; ++address) {
        turn.push_back(word::of(address * 40503 % 65536, 16));
        image.set(address, turn.back());
    }
    image.fill({60000, 199999}, turn);
    const std::string text = written_mif(image);
    EXPECT_GT(text.size(), 900000U);
    EXPECT_TRUE(*read_mif(text, {}).image == image);
}

/// A memory of runs, single words, repeated fills, and unset words.
memory_image random_image(std::mt19937& random) {
    const auto below = [&random](std::uint64_t limit) { return random() % limit; };
    const auto width = static_cast<std::uint32_t>(1 + below(40));
    memory_image image(width, 1 + below(3000));
    for (std::uint64_t count = below(12); count > 0; --count) {
        const std::uint64_t first = below(image.depth());
        const std::uint64_t last = std::min(first + below(600), image.last_address());
        std::vector<word> words(1 + below(3), word(width));
        for (word& each : words) {
            each = word::of(below(2) == 0 ? below(2)
                                          : random() & ((std::uint64_t{1} << std::min(width, 32U)) - 1),
                            width);
        }
        if (below(2) == 0) {
            image.fill({first, last}, words);
            continue;
        }
        for (std::uint64_t address = first; address <= last; ++address) {
            image.set(address, below(3) == 0 ? words.front() : word::of(address & 1U, width));
        }
    }
    return image;
}

TEST(MifWriter, RandomMemoriesComeBackAndHaveTheSizeThatWasTold) {
    std::mt19937 random(7);
    for (int round = 0; round < rounds(1000); ++round) {
        SCOPED_TRACE(round);
        const memory_image image = random_image(random);
        const write_options options =
            shown_in(static_cast<radix>(random() % 5), static_cast<radix>(random() % 5), random() % 2 == 0);
        const std::string text = written_mif(image, options);
        const read_result found = read_mif(text, {});
        ASSERT_TRUE(found.image && *found.image == image) << text.substr(0, 2000);
        const std::uint64_t size = written_size_of_mif(image, options);
        EXPECT_GE(size, text.size());
        EXPECT_LE(size, text.size() + text.size() / 3 + 200);
    }
}

} // namespace
