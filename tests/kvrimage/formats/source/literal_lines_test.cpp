#include "kvrimage/exchange/string_sink.h"
#include "kvrimage/formats/source/literal_lines.h"
#include "tests/kvrimage/formats/source/source_test_images.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

std::string lines_of(const memory_image& image, const literal_lines& lines) {
    string_sink sink;
    sink_buffer buffer(sink);
    write_literals(image, radix::hex, lines, buffer,
                   [](std::string& text, std::string_view digits) { text += digits; });
    buffer.flush();
    return sink.text;
}

TEST(LiteralLines, HaveAPowerOfTwoOfWords) {
    EXPECT_EQ(literal_lines(1).words_per_line, 16U);
    EXPECT_EQ(literal_lines(4).words_per_line, 8U);
    EXPECT_EQ(literal_lines(7).words_per_line, 8U);
    EXPECT_EQ(literal_lines(8).words_per_line, 4U);
    EXPECT_EQ(literal_lines(7, 8).words_per_line, 8U);
    EXPECT_EQ(literal_lines(36).words_per_line, 2U);
    EXPECT_EQ(literal_lines(37).words_per_line, 1U);
    EXPECT_EQ(literal_lines(1000).words_per_line, 1U);
}

TEST(LiteralLines, AreSeparatedAndIndented) {
    const literal_lines pairs(30);
    EXPECT_EQ(lines_of(kvrimage_tests::image_of_hex(8, {"01", "02", "03"}, 16), pairs),
              "\n    01, 02,\n    03");
    const literal_lines singles(40, 8);
    EXPECT_EQ(lines_of(kvrimage_tests::image_of_hex(8, {"01", "02"}), singles), "\n        01,\n        02");
}

TEST(LiteralLines, KnowTheirSize) {
    const memory_image image = kvrimage_tests::image_of_hex(120, {"1", "2", "3", "4", "5"});
    EXPECT_EQ(literal_lines(30).size(5), lines_of(image, literal_lines(30)).size() + 1);
    EXPECT_EQ(literal_lines(30, 8).size(5), lines_of(image, literal_lines(30, 8)).size() + 1);
}

TEST(LiteralLines, DontCareBitsAreFound) {
    EXPECT_FALSE(has_dont_care_bits(kvrimage_tests::image_of_hex(8, {"01", "23"})));
    EXPECT_TRUE(has_dont_care_bits(kvrimage_tests::image_of_hex(8, {"01", "2X"})));
}

} // namespace
