#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/source/c_format.h"
#include "tests/kvrimage/formats/source/source_test_images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using kvrimage_tests::image_of_hex;
using testing::HasSubstr;
using testing::Not;

std::string c_text(const memory_image& image, const std::string& file_name = "sine.h") {
    return to_text(image, {.as = &c_format, .file_name = file_name});
}

TEST(CWriter, WritesAHeader) {
    EXPECT_EQ(c_text(image_of_hex(9, {"000", "1FF", "02A"})), "#ifndef SINE_H\n"
                                                              "#define SINE_H\n"
                                                              "\n"
                                                              "#include <stdint.h>\n"
                                                              "\n"
                                                              "#define SINE_WIDTH 9\n"
                                                              "#define SINE_DEPTH 3\n"
                                                              "\n"
                                                              "static const uint16_t sine[SINE_DEPTH] = {\n"
                                                              "    0x000, 0x1FF, 0x02A,\n"
                                                              "};\n"
                                                              "\n"
                                                              "#endif\n");
}

TEST(CWriter, WritesASourceWhereTheNameSaysSo) {
    const std::string source = "#include <stdint.h>\n"
                               "\n"
                               "#define SINE_WIDTH 8\n"
                               "#define SINE_DEPTH 2\n"
                               "\n"
                               "extern const uint8_t sine[SINE_DEPTH];\n"
                               "const uint8_t sine[SINE_DEPTH] = {\n"
                               "    0x01, 0x02,\n"
                               "};\n";
    EXPECT_EQ(c_text(image_of_hex(8, {"01", "02"}), "sine.c"), source);
    EXPECT_EQ(c_text(image_of_hex(8, {"01", "02"}), "folder/sine.C"), source);
    EXPECT_THAT(c_text(image_of_hex(8, {"01"}), "c"), HasSubstr("#ifndef C_H\n"));
}

TEST(CWriter, SplitsWideWordsIntoLimbs) {
    EXPECT_EQ(c_text(image_of_hex(130, {"3" + std::string(16, 'A') + std::string(16, 'B'), "1"})),
              "#ifndef SINE_H\n"
              "#define SINE_H\n"
              "\n"
              "#include <stdint.h>\n"
              "\n"
              "#define SINE_WIDTH 130\n"
              "#define SINE_DEPTH 2\n"
              "#define SINE_LIMBS 3\n"
              "\n"
              "/* Each word is limbs of 64 bits, the least significant first. */\n"
              "static const uint64_t sine[SINE_DEPTH][SINE_LIMBS] = {\n"
              "    {0xBBBBBBBBBBBBBBBB, 0xAAAAAAAAAAAAAAAA, 0x3},\n"
              "    {0x0000000000000001, 0x0000000000000000, 0x0},\n"
              "};\n"
              "\n"
              "#endif\n");
}

TEST(CWriter, TakesTheSmallestTypeForAWord) {
    const auto line_of = [](std::uint32_t width) { return c_text(image_of_hex(width, {"1"})); };
    EXPECT_THAT(line_of(1), HasSubstr("uint8_t sine[SINE_DEPTH] = {\n    0x1,\n"));
    EXPECT_THAT(line_of(8), HasSubstr("uint8_t sine[SINE_DEPTH] = {\n    0x01,\n"));
    EXPECT_THAT(line_of(9), HasSubstr("uint16_t sine"));
    EXPECT_THAT(line_of(16), HasSubstr("uint16_t sine"));
    EXPECT_THAT(line_of(17), HasSubstr("uint32_t sine"));
    EXPECT_THAT(line_of(33), HasSubstr("uint64_t sine"));
    EXPECT_THAT(line_of(64), HasSubstr("uint64_t sine[SINE_DEPTH] = {\n    0x0000000000000001,\n"));
    EXPECT_THAT(line_of(65),
                HasSubstr("uint64_t sine[SINE_DEPTH][SINE_LIMBS] = {\n    {0x0000000000000001, 0x0},\n"));
    EXPECT_THAT(line_of(128), HasSubstr("{0x0000000000000001, 0x0000000000000000},\n"));
}

TEST(CWriter, NamesTheBaseThatIsNot0) {
    EXPECT_THAT(c_text(image_of_hex(8, {"01"}, 0x80000000)),
                HasSubstr("#define SINE_DEPTH 1\n#define SINE_BASE 0x80000000\n\n"));
    EXPECT_THAT(c_text(image_of_hex(8, {"01"})), Not(HasSubstr("BASE")));
}

TEST(CWriter, TakesTheNameThatIsChosen) {
    const std::string text = to_text(image_of_hex(8, {"01"}),
                                     {.as = &c_format, .choices = {{"name", "lut"}}, .file_name = "sine.h"});
    EXPECT_THAT(text, HasSubstr("#ifndef LUT_H\n#define LUT_H\n"));
    EXPECT_THAT(text, HasSubstr("static const uint8_t lut[LUT_DEPTH] = {\n"));
}

} // namespace
