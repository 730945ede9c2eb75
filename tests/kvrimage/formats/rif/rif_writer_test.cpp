#include "kvrimage/formats/rif/rif_reader.h"
#include "kvrimage/formats/rif/rif_writer.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

class rif_text_sink final : public text_sink {
public:
    void write(std::string_view part) override { text += part; }
    std::string text;
};

std::string written_rif(const memory_image& image) {
    rif_text_sink sink;
    write_rif(image, {}, sink);
    return sink.text;
}

memory_image image_of(std::uint32_t width, const std::vector<std::string>& words, std::uint64_t base = 0) {
    memory_image image(width, words.size(), base);
    for (std::size_t offset = 0; offset < words.size(); ++offset) {
        image.words().set(offset, words[offset]);
    }
    return image;
}

TEST(RifWriter, WritesEightWordsALine) {
    EXPECT_EQ(written_rif(image_of(4, {"0", "1", "2", "3", "4", "5", "6", "7", "8"})),
              "@0\n0 1 2 3 4 5 6 7 \n@8\n8 \n");
}

TEST(RifWriter, WritesAnAddressAfterAGap) {
    EXPECT_EQ(written_rif(image_of(8, {"", "01", "", "", "02", "03"})), "@1\n01 \n@4\n02 03 \n");
}

TEST(RifWriter, WritesAddressesFromTheBaseOnInLowerCase) {
    EXPECT_EQ(written_rif(image_of(4, {"A", "B"}, 0xFE)), "@fe\nA B \n");
}

TEST(RifWriter, WritesRunsWordByWord) {
    memory_image image(8, 12);
    image.words().fill(3, 11, {"AB"});
    EXPECT_EQ(written_rif(image), "@3\nAB AB AB AB AB \n@8\nAB AB AB AB \n");
}

TEST(RifWriter, WritesDontCareDigits) {
    EXPECT_EQ(written_rif(image_of(8, {"1X", "XXXX0000"})), "@0\n1X X0 \n");
    EXPECT_EQ(written_rif(image_of(5, {"X1", "X0001"})), "@0\nX1 X1 \n");
}

TEST(RifWriter, RefusesADontCareBitBesideAPlainOne) {
    const auto found = can_write_rif(image_of(8, {"00", "1X", "X0000000"}), {});
    EXPECT_THAT(shown(found), ElementsAre("dont-care-bit 0:0+0"));
    EXPECT_EQ(found.front().message, "word X0000000 at address 2 mixes don't-care bits and other bits in one "
                                     "digit, which RIF cannot hold");
}

TEST(RifWriter, RefusesADontCareBitInACycleOrARun) {
    memory_image cycle(8, 100);
    cycle.words().fill(10, 99, {"00", "X0000000"});
    EXPECT_THAT(shown(can_write_rif(cycle, {})), ElementsAre("dont-care-bit 0:0+0"));
    memory_image run(8, 100);
    run.words().fill(10, 99, {"X0000000"});
    EXPECT_THAT(shown(can_write_rif(run, {})), ElementsAre("dont-care-bit 0:0+0"));
}

TEST(RifWriter, RefusesAnAddressOfMoreThan32Bits) {
    EXPECT_THAT(can_write_rif(image_of(4, {"1", ""}, 0xFFFFFFFF), {}), IsEmpty());
    const auto found = can_write_rif(image_of(4, {"1", "2"}, 0xFFFFFFFF), {});
    EXPECT_THAT(shown(found), ElementsAre("address-outside 0:0+0"));
    EXPECT_EQ(found.front().message, "address 100000000 is beyond the largest, FFFFFFFF");
}

TEST(RifWriter, RefusesAMemoryWithoutWords) {
    EXPECT_THAT(shown(can_write_rif(memory_image(8, 4), {})), ElementsAre("nothing-to-write 0:0+0"));
}

/// Words, runs, cycles and gaps.
memory_image random_image(std::mt19937& random, std::uint32_t width) {
    memory_image image(width, 64 + random() % 64);
    const auto random_word = [&random, width] {
        std::string bits;
        for (std::uint32_t bit = 0; bit < width; ++bit) {
            const bool ends_digit = (width - bit) % bits_per_hex_digit == 0 || bit == 0;
            bits += ends_digit && random() % 9 == 0 ? 'X' : "01"[random() % 2];
            if (!ends_digit && bits[bit - 1] == 'X') {
                bits[bit] = 'X';
            }
        }
        std::string word;
        make_word(bits, radix::bin, width, word);
        return word;
    };
    for (int operation = 0; operation < 6; ++operation) {
        const std::uint64_t first = random() % image.depth();
        const std::uint64_t last = first + random() % (image.depth() - first);
        const std::string one = random_word();
        const std::string other = random_word();
        if (operation % 2 == 0) {
            image.words().set(first, one);
        } else {
            image.words().fill(first, last,
                               operation == 1 ? std::vector<std::string_view>{one, other}
                                              : std::vector<std::string_view>{one});
        }
    }
    return image;
}

TEST(RifWriter, WritesWhatIsReadAsTheSameWords) {
    std::mt19937 random(3);
    for (const std::uint32_t width :
         {1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 12U, 16U, 31U, 32U, 33U, 64U, 65U, 128U, 257U}) {
        for (int round = 0; round < 10; ++round) {
            const memory_image image = random_image(random, width);
            read_options options;
            options.width = width;
            options.depth = image.depth();
            const read_result again = read_rif(written_rif(image), options);
            ASSERT_THAT(shown(again.diagnostics), IsEmpty());
            for (std::uint64_t address = 0; address < image.depth(); ++address) {
                ASSERT_EQ(again.image->words()[address], image.words()[address]) << width;
            }
        }
    }
}

TEST(RifWriter, KnowsTheSizeOfWhatItWrites) {
    std::mt19937 random(4);
    for (const std::uint32_t width : {1U, 8U, 33U}) {
        for (int round = 0; round < 10; ++round) {
            const memory_image image = random_image(random, width);
            const std::uint64_t size = written_rif(image).size();
            const std::uint64_t expected = written_rif_size(image, {});
            ASSERT_GE(expected, size);
            ASSERT_LE(expected, size + size / 10 + 8);
        }
    }
}

TEST(RifWriter, WritesLargeMemoriesInParts) {
    memory_image image(32, 100000);
    image.words().fill(0, 99999, {"0123ABCD"});
    const std::string text = written_rif(image);
    EXPECT_EQ(read_rif(text, {}).image->words().run_at(0).last, 99999U);
}

TEST(RifWriter, SizesAndWritesALargeFill) {
    memory_image image(8, 200000);
    image.words().fill(1, 199998, {"AB", "CD", "EF"});
    const std::string text = written_rif(image);
    EXPECT_TRUE(text.starts_with("@1\nAB CD EF AB CD EF AB \n@8\nCD ")) << text.substr(0, 40);
    EXPECT_TRUE(text.ends_with("@30d38\nEF AB CD EF AB CD EF \n")) << text.substr(text.size() - 40);
    EXPECT_GE(written_rif_size(image, {}), text.size());
    EXPECT_LE(written_rif_size(image, {}), text.size() + text.size() / 20);
}

TEST(RifWriter, RefusesALargeFillWithADontCareBit) {
    memory_image image(8, 200000, 16);
    image.words().fill(10, 199999, {"AB", "CD", "X0000000"});
    const auto found = can_write_rif(image, {});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().id, diagnostic_id::dont_care_bit);
    EXPECT_EQ(found.front().address, 16U + 12);
}

TEST(RifWriter, RefusesTheFirstOfManyDifferentWordsWithADontCareBit) {
    memory_image image(8, 5000);
    for (std::uint64_t address = 0; address < 5000; ++address) {
        image.words().set(address, address % 2 == 0 ? "X0000000" : "X0000001");
    }
    const auto found = can_write_rif(image, {});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().address, 0U);
}

TEST(RifWriter, TakesALargeFillWithDontCareDigits) {
    memory_image image(8, 200000);
    image.words().fill(0, 199999, {"AB", "CD", "XXXX0000"});
    EXPECT_TRUE(can_write_rif(image, {}).empty());
    EXPECT_TRUE(written_rif(image).starts_with("@0\nAB CD X0 AB CD X0 AB CD \n"));
}

} // namespace
