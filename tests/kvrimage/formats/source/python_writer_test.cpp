#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/source/python_format.h"
#include "tests/kvrimage/formats/source/source_test_images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using kvrimage_tests::image_of_hex;
using testing::HasSubstr;

TEST(PythonWriter, WritesAModule) {
    EXPECT_EQ(to_text(image_of_hex(9, {"000", "1FF"}), {.as = &python_format, .file_name = "sine.py"}),
              "\"\"\"Memory of 2 words of 9 bits.\"\"\"\n"
              "\n"
              "WIDTH = 9\n"
              "DEPTH = 2\n"
              "\n"
              "WORDS = (\n"
              "    0x000, 0x1FF,\n"
              ")\n");
}

TEST(PythonWriter, NamesTheBaseThatIsNot0) {
    EXPECT_EQ(to_text(image_of_hex(1, {"1"}, 0x1000), {.as = &python_format}),
              "\"\"\"Memory of 1 word of 1 bit.\"\"\"\n"
              "\n"
              "WIDTH = 1\n"
              "DEPTH = 1\n"
              "BASE = 0x1000\n"
              "\n"
              "WORDS = (\n"
              "    0x1,\n"
              ")\n");
}

TEST(PythonWriter, TakesTheNameThatIsChosen) {
    EXPECT_THAT(to_text(image_of_hex(8, {"01"}), {.as = &python_format, .choices = {{"name", "SINE"}}}),
                HasSubstr("\nSINE = (\n    0x01,\n)\n"));
}

} // namespace
