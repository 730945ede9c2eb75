#include "kvrimage/formats/fast_word_lines.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/formats/rif/rif_reader.h"
#include "kvrimage/image/image_words.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

/// Enough regular lines that the fast path may read a line before them.
const std::string rest(100, '\n');

std::vector<std::string> words_of_line(std::string_view line) {
    const std::string text = std::string(line) + rest;
    const fast_word_line found = find_fast_word_line(text, 0);
    if (found.end == 0) {
        return {"not regular"};
    }
    EXPECT_EQ(found.end, line.size());
    std::vector<std::string> words;
    for (std::size_t index = 0; index < found.count; ++index) {
        words.emplace_back(found[index]);
    }
    return words;
}

std::uint64_t address_of(std::string_view line) {
    const fast_word_line found = find_fast_word_line(std::string(line) + rest, 0);
    return found.is_address && found.end == line.size() ? found.address : no_rif_address;
}

TEST(FastWordLines, TakesWordsOfOneLength) {
    EXPECT_THAT(words_of_line("01 Af\n"), ElementsAre("01", "Af"));
    EXPECT_THAT(words_of_line("01 23 \r\n"), ElementsAre("01", "23"));
    EXPECT_THAT(words_of_line(std::string(64, '1') + "\n"), ElementsAre(std::string(64, '1')));
    EXPECT_THAT(words_of_line("\n"), ElementsAre());
    EXPECT_THAT(words_of_line("\r\n"), ElementsAre());
}

TEST(FastWordLines, LeavesOtherLinesToTheParser) {
    for (const char* line : {"01 2\n", "01  23\n", " 01\n", "01\t23\n", "0X\n", "01\r23\n", "01 @4\n",
                             "01 23  \n", "01 2G\n", "//\n", "\r01\n"}) {
        EXPECT_THAT(words_of_line(line), ElementsAre("not regular")) << line;
    }
    EXPECT_THAT(words_of_line(std::string(65, '1') + "\n"), ElementsAre("not regular"));
}

TEST(FastWordLines, TakesAddresses) {
    EXPECT_EQ(address_of("@0\n"), 0U);
    EXPECT_EQ(address_of("@fFfFfFfF\r\n"), 0xFFFFFFFFU);
    for (const char* line : {"@\n", "@123456789\n", "@1 \n", "@1\r1\n", "@G\n", "@0x1\n"}) {
        EXPECT_EQ(address_of(line), no_rif_address) << line;
    }
}

TEST(FastWordLines, TakesNothingNearTheEndOfTheText) {
    EXPECT_EQ(find_fast_word_line("01 02\n", 0).end, 0U);
    const std::string one_line(200, '1');
    EXPECT_EQ(find_fast_word_line(one_line, 0).end, 0U);
    std::string words;
    for (int word = 0; word < 100; ++word) {
        words += "12 ";
    }
    EXPECT_EQ(find_fast_word_line(words, 0).end, 0U);
}

/// A mostly regular line.
std::string random_line(std::mt19937& random) {
    const char* const odd[] = {"", "  ", "\t", "X", "u", "0x", "@5", " @", "G", "123456789ABCDEF01"};
    std::string line;
    if (random() % 3 == 0) {
        line = "@" + std::string(1, "0123456789abcdefF"[random() % 17]) + std::to_string(random() % 10);
    } else {
        const std::size_t digits = random() % 8 != 0 ? 2 : 1 + random() % 5;
        for (std::size_t left = random() % 9; left > 0; --left) {
            for (std::size_t digit = 0; digit < digits; ++digit) {
                line += "0123456789abcdefABCDEF"[random() % 22];
            }
            line += left > 1 || random() % 2 != 0 ? " " : "";
        }
    }
    line += random() % 10 == 0 ? odd[random() % std::size(odd)] : "";
    return line + (random() % 8 == 0 ? "\r\n" : "\n");
}

std::string shown_words(const read_result& result) {
    std::string text;
    if (result.image) {
        text = std::to_string(result.image->width()) + "/" + std::to_string(result.image->depth());
        for (std::uint64_t address = 0; address < result.image->depth(); ++address) {
            text.append(" ").append(result.image->words()[address]);
        }
    }
    for (const std::string& each : shown(result.diagnostics)) {
        text.append("\n").append(each);
    }
    return text;
}

/// A blank at the end of each line makes it irregular, but does not change its meaning.
TEST(FastWordLines, AgreeWithTheParserOnRandomFiles) {
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        std::string text;
        std::string slow;
        for (std::size_t left = random() % 60; left > 0; --left) {
            const std::string line = random_line(random);
            const std::size_t end = line.find_last_not_of("\r\n") + 1;
            text += line;
            slow += line.substr(0, end) + "  " + line.substr(end);
        }
        read_options options;
        options.keep_going = true;
        options.depth = round % 3 == 0 ? std::optional<std::uint64_t>(100) : std::nullopt;
        options.width = round % 4 == 0 ? std::optional<std::uint32_t>(7) : std::nullopt;
        ASSERT_EQ(shown_words(read_rif(text, options)), shown_words(read_rif(slow, options))) << text;
    }
}

} // namespace
