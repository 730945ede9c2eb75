#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/readmem/readmem_reader.h"
#include "tests/kvrimage/formats/readmem/shown_readmem.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

std::string readmemh(std::string_view contents, const read_options& options = {}) {
    return shown_image(read_readmemh(contents, options));
}

std::string readmemb(std::string_view contents, const read_options& options = {}) {
    return shown_image(read_readmemb(contents, options));
}

TEST(ReadmemReader, ReadsWordsAndAddresses) {
    EXPECT_EQ(readmemh("01 aB\n@4 1x\n\t7f\f00 // end\n"), "8 bits, 7 words: 01 AB - - 1X 7F 00");
    EXPECT_EQ(readmemb("0001 11x0\n@3 0000"), "4 bits, 4 words: 1 11X0 - 0");
}

TEST(ReadmemReader, AWordThatCannotBeReadSaysNothingOfTheWidth) {
    read_options options;
    options.unit = address_unit::byte;
    options.keep_going = true;
    EXPECT_EQ(readmemh("00000g 1234\n@4 56\n", options), "16 bits, 3 words: - 1234 0056");
}

TEST(ReadmemReader, RegularLinesAfterAnAddressThatIsNotKnownHaveNoWords) {
    std::string lines;
    for (int line = 0; line < 20; ++line) {
        lines += "01 02 03 04\n";
    }
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(readmemh("05\n@x\n" + lines, options), "8 bits, 1 words: 05");
    options.base = 0xFFFFFFFFFFFFFFFF;
    EXPECT_EQ(readmemh("@FFFFFFFFFFFFFFFF\n" + lines, options), "8 bits, 1 words: 01");
}

TEST(ReadmemReader, TheAddressesOfBinaryListsAreHexadecimal) {
    EXPECT_EQ(readmemb("@A 1\n@10 0\n").substr(0, 16), "1 bits, 17 words");
}

TEST(ReadmemReader, TakesTheWidthFromTheLongestWord) {
    const read_result result = read_readmemh("1 02A", {});
    EXPECT_EQ(shown_image(result), "12 bits, 2 words: 001 02A");
    EXPECT_EQ(result.facts.width_source, "the longest word");
    EXPECT_EQ(readmemb("1 010"), "3 bits, 2 words: 1 2");
}

TEST(ReadmemReader, TakesTheWidthThatIsGiven) {
    EXPECT_EQ(readmemh("1FF 001FF 2", with_bits(9)), "9 bits, 3 words: 1FF 1FF 002");
    EXPECT_THAT(readmemh_diagnostics_of("1FF 3FF 200", with_bits(9)), ElementsAre("too-wide 1:5+3 x2"));
}

TEST(ReadmemReader, KeepsUnderscoresOut) {
    EXPECT_EQ(readmemh("12_34 5_6_7_8"), "16 bits, 2 words: 1234 5678");
    EXPECT_THAT(readmemh_diagnostics_of("12_34"), IsEmpty());
}

TEST(ReadmemReader, CommentsSeparateWords) {
    EXPECT_EQ(readmemh("1/* 2 */3//4\n5"), "4 bits, 3 words: 1 3 5");
    EXPECT_TRUE(read_readmemh("1 // one", {}).facts.has_comments);
    EXPECT_TRUE(read_readmemh("1 /* one */", {}).facts.has_comments);
    EXPECT_FALSE(read_readmemh("1", {}).facts.has_comments);
}

TEST(ReadmemReader, ReadsHighImpedanceAsDontCare) {
    const read_result result = read_readmemh("1z Z0 01", {});
    EXPECT_EQ(shown_image(result), "8 bits, 3 words: 1X X0 01");
    EXPECT_THAT(shown(result.diagnostics), ElementsAre("readmem-high-impedance 1:1+2 x2"));
}

TEST(ReadmemReader, WordsSetTwiceAreSuspectWhereTheyDiffer) {
    EXPECT_EQ(readmemh("@0 01 02\n@1 03\n"), "8 bits, 2 words: 01 03");
    EXPECT_THAT(readmemh_diagnostics_of("@0 01 02\n@1 03\n"), ElementsAre("word-set-again 2:4+2"));
    EXPECT_THAT(readmemh_diagnostics_of("@0 01 02\n@1 02\n"), IsEmpty());
}

TEST(ReadmemReader, TakesTheDepthThatIsGiven) {
    read_options options;
    options.depth = 4;
    EXPECT_EQ(readmemh("1 2", options), "4 bits, 4 words: 1 2 - -");
    EXPECT_THAT(readmemh_diagnostics_of("1 2 3 4 5 6", options), ElementsAre("beyond-depth 1:9+1 x2"));
}

TEST(ReadmemReader, AFileWithoutWordsNeedsWidthAndDepth) {
    EXPECT_THAT(readmemh_diagnostics_of("// none\n"), ElementsAre("size-unknown 0:0+0"));
    read_options options = with_bits(8);
    options.depth = 2;
    EXPECT_EQ(readmemh("", options), "8 bits, 2 words: - -");
    EXPECT_THAT(readmemh_diagnostics_of("", options), ElementsAre("no-words 0:0+0"));
}

TEST(ReadmemReader, RegularLinesAndOthersReadTheSame) {
    std::string regular;
    std::string irregular;
    for (int line = 0; line < 100; ++line) {
        regular += "0a1b 2C3d FFFF 0000\n@" + std::to_string(line * 8) + "\n";
        irregular += "  0a1b\t2C3d  FFFF 0000 // c\n @" + std::to_string(line * 8) + " \n";
    }
    EXPECT_EQ(readmemh(regular), readmemh(irregular));
    const std::string digits = "0101 1100 0000 1111\n";
    std::string binary;
    std::string spaced;
    for (int line = 0; line < 30; ++line) {
        binary += digits;
        spaced += " " + digits;
    }
    EXPECT_EQ(readmemb(binary), readmemb(spaced));
    EXPECT_THAT(readmemb_diagnostics_of(binary + "0121 0000\n" + binary), ElementsAre("bad-digit 31:3+1"));
}

/// A list with mostly regular lines.
std::string random_readmem_list(std::mt19937& random, radix digits_radix) {
    const std::string digits = digits_radix == radix::hex ? "0123456789abcdefABCDEF" : "01";
    std::string text;
    for (auto lines = 1 + random() % 30; lines > 0; --lines) {
        if (random() % 8 == 0) {
            text += "@" + std::to_string(random() % 200) + (random() % 2 == 0 ? "\n" : " ");
        }
        const std::size_t length = random() % 6 == 0 ? random() % 20 : 4;
        for (auto words = 1 + random() % 8; words > 0; --words) {
            for (std::size_t digit = 0; digit < length; ++digit) {
                text += digits[random() % digits.size()];
            }
            text += random() % 40 == 0 ? "x" : "";
            text += words > 1 ? " " : "";
        }
        text += random() % 5 == 0 ? "\r\n" : "\n";
    }
    return text + std::string(100, '\n');
}

TEST(ReadmemReader, TheFastPathReadsWhatTheParserReads) {
    std::mt19937 random(19);
    for (int round = 0; round < rounds(700); ++round) {
        const radix digits_radix = random() % 3 == 0 ? radix::bin : radix::hex;
        const std::string fast = random_readmem_list(random, digits_radix);
        std::string parsed = fast; // a tab after a word bypasses the fast path
        for (std::size_t at = 0; at < parsed.size(); ++at) {
            parsed[at] = parsed[at] == ' ' ? '\t' : parsed[at];
            if (parsed[at] == '\n') {
                parsed.insert(at++, "\t");
            }
        }
        read_options options;
        options.keep_going = random() % 2 == 0;
        if (random() % 2 == 0) {
            options.width = 4 + random() % 20;
        }
        if (random() % 4 == 0) {
            options.depth = 1 + random() % 200;
        }
        if (random() % 4 == 0) {
            options.base = random() % 30;
        }
        const auto read = digits_radix == radix::hex ? read_readmemh : read_readmemb;
        const read_result one = read(fast, options);
        const read_result other = read(parsed, options);
        EXPECT_EQ(shown_image(one), shown_image(other)) << fast;
        EXPECT_EQ(shown(one.diagnostics), shown(other.diagnostics)) << fast;
        EXPECT_EQ(one.unreadable, other.unreadable) << fast;
        EXPECT_EQ(one.facts.width_source, other.facts.width_source);
    }
}

TEST(ReadmemReader, ByteAddressesAreThoseOfWords) {
    EXPECT_EQ(readmemh("@4 00000001\n@c 2\n", counting_bytes(32)), "32 bits, 4 words: - 00000001 - 00000002");
    EXPECT_EQ(read_readmemh("@4 1", counting_bytes(32)).facts.unit, address_unit::byte);
    EXPECT_EQ(read_readmemh("@4 1", {}).facts.unit, address_unit::word);
}

TEST(ReadmemReader, WithoutAWidthByteAddressesFollowTheLongestWord) {
    EXPECT_EQ(readmemh("@4 1\n@6 1_234 3\n", counting_bytes({})).substr(0, 16), "16 bits, 5 words");
    EXPECT_EQ(readmemb("@2 1\n@4 101010101\n", counting_bytes({})), "9 bits, 3 words: - 001 155");
    EXPECT_EQ(readmemh("@4 1\n@8 0x12\n", counting_bytes({})), "16 bits, 5 words: - - 0001 - 0X12");
    read_options options = counting_bytes({});
    options.keep_going = true;
    EXPECT_EQ(readmemh("@4 0x1_234\n", options), "16 bits, 3 words: - - 1234");
}

TEST(ReadmemReader, BytesWithAWidthOfSeveralAreBroken) {
    const std::string bytes = "@0 13 00 50 00\n@4 9_3 00 10 00\n";
    EXPECT_THAT(readmemh_diagnostics_of(bytes, counting_bytes(32)),
                ElementsAre("word-set-again 2:4+3 x3", "readmem-bytes 0:0+0"));
    EXPECT_EQ(readmemh(bytes, counting_bytes(8)).substr(0, 15), "8 bits, 8 words");
    EXPECT_THAT(readmemh_diagnostics_of("@0 13 0 50 00\n", counting_bytes(32)), testing::IsEmpty());
    EXPECT_THAT(readmemh_diagnostics_of("@0 13 00500\n", counting_bytes(32)), testing::IsEmpty());
}

TEST(ReadmemReader, ByteAddressesWithinAWordAreBroken) {
    const read_result result = read_readmemh("@6 1\n@8 2\n@9 3\n", counting_bytes(32));
    EXPECT_THAT(shown(result.diagnostics), ElementsAre("readmem-address-multiple 1:1+2 x2"));
    EXPECT_EQ(result.diagnostics[0].message, "address 6 is not a multiple of 4, the bytes of a word");
    EXPECT_FALSE(result.image);
    const std::string regular(200, '0');
    EXPECT_THAT(readmemh_diagnostics_of("@6\n" + regular, counting_bytes(800)),
                ElementsAre("readmem-address-multiple 1:1+2"));
}

TEST(ReadmemReader, TheBaseCountsAsTheFileDoes) {
    read_options options = counting_bytes(32);
    options.base = 0x80000000;
    EXPECT_EQ(readmemh("@80000000 1 2\n@80000010 3\n", options),
              "32 bits, 5 words: 00000001 00000002 - - 00000003");
    options.base = 0x80000002;
    EXPECT_THAT(readmemh_diagnostics_of("@80000004 1\n", options),
                ElementsAre("readmem-address-multiple 0:0+0"));
    options.base = 0x80000010;
    const read_result below = read_readmemh("@80000004 1\n", options);
    ASSERT_EQ(below.diagnostics.size(), 1U);
    EXPECT_EQ(below.diagnostics[0].message, "address 80000004 is below the base 80000010");
}

TEST(ReadmemReader, HighAddressesNeedABase) {
    const read_result words = read_readmemh("@80000000 1\n", {});
    ASSERT_EQ(words.diagnostics.size(), 1U);
    EXPECT_EQ(words.diagnostics[0].message, "the addresses begin at 80000000");
    const read_result bytes = read_readmemh("@80000000 1\n", counting_bytes(32));
    ASSERT_EQ(bytes.diagnostics.size(), 1U);
    EXPECT_EQ(bytes.diagnostics[0].message, "the addresses begin at 80000000");
}

TEST(ReadmemReader, NoAddressComesAfterTheHighest) {
    read_options options;
    options.base = ~std::uint64_t{0} - 1;
    EXPECT_EQ(readmemh("@FFFFFFFFFFFFFFFE 1 2", options), "4 bits, 2 words: 1 2");
    const read_result result = read_readmemh("@FFFFFFFFFFFFFFFE 1 2 3 4\n@FFFFFFFFFFFFFFFE 1", options);
    ASSERT_THAT(shown(result.diagnostics), ElementsAre("address-outside 1:23+1 x2"));
    EXPECT_EQ(result.diagnostics[0].message,
              "address 10000000000000000 is beyond the largest, FFFFFFFFFFFFFFFF");
}

TEST(ReadmemReader, SomethingElseIsNamedAndNothingMore) {
    EXPECT_THAT(readmemh_diagnostics_of("<?xml version=\"1.0\"?>\n<words/>\n"),
                ElementsAre("foreign-content 1:1+21"));
    EXPECT_THAT(readmemb_diagnostics_of("1F 2A\n10 3B\n"), ElementsAre("foreign-content 1:1+5"));
    EXPECT_THAT(readmemh_diagnostics_of("Dear reader"), ElementsAre("bad-digit 1:4+1 x2"))
        << "of no known kind";
    EXPECT_THAT(readmemh_diagnostics_of(std::string("01 02 03 \0 04 05", 16)),
                ElementsAre("readmem-character 1:10+1"));
}

TEST(ReadmemReader, GoesOnAfterWhatCannotBeRead) {
    read_options options;
    options.keep_going = true;
    const read_result result = read_readmemh("01 0g 03\n@x 04 05\n@4 06\n", options);
    EXPECT_EQ(shown_image(result), "8 bits, 5 words: 01 - 03 - 06");
    ASSERT_EQ(result.unreadable.size(), 1U);
    EXPECT_EQ(result.unreadable[0].first, 1U);
}

TEST(ReadmemReader, SurvivesFilesThatAreCutOffOrDamaged) {
    const std::string whole =
        "\xEF\xBB\xBF// a\n@2 0x12 1_2, xz /* b */ 34#c\n@ 10 5 ; -- d\n@0x20 0b1 !\n/* e";
    std::mt19937 random(7);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        for (int round = 0; round < 20; ++round) {
            std::string damaged = whole.substr(0, size);
            if (!damaged.empty() && round != 0) {
                damaged[random() % size] = static_cast<char>(random() % 256);
            }
            for (const auto& read : {read_readmemh, read_readmemb}) {
                const read_result result = read(damaged, with_bits(round % 2 == 0 ? 8 : 32));
                const bool is_broken = std::ranges::any_of(result.diagnostics, [](const diagnostic& each) {
                    return about(each.id).level == diagnostic_class::broken;
                });
                EXPECT_NE(result.image.has_value(), is_broken) << testing::PrintToString(damaged);
            }
        }
    }
}

} // namespace
