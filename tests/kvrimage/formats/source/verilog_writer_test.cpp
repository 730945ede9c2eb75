#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/source/verilog_format.h"
#include "tests/kvrimage/formats/source/source_test_images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using kvrimage_tests::image_of_hex;
using testing::HasSubstr;

TEST(VerilogWriter, WritesAModule) {
    EXPECT_EQ(
        to_text(image_of_hex(9, {"000", "1FF", "02A"}), {.as = &verilog_format, .file_name = "sine.sv"}),
        "module sine (\n"
        "    input wire clk,\n"
        "    input wire [1:0] address,\n"
        "    output reg [8:0] data\n"
        ");\n"
        "    reg [8:0] words [0:2];\n"
        "\n"
        "    initial words[0] = 9'h000;\n"
        "    initial words[1] = 9'h1FF;\n"
        "    initial words[2] = 9'h02A;\n"
        "\n"
        "    always @(posedge clk)\n"
        "        data <= words[address];\n"
        "endmodule\n");
}

TEST(VerilogWriter, WritesAddressesOfAsManyBitsAsTheyNeed) {
    const auto text_of = [](std::uint64_t depth) {
        memory_image image(1, depth);
        image.fill_unset(word::of(1, 1));
        return to_text(image, {.as = &verilog_format});
    };
    EXPECT_THAT(text_of(1), HasSubstr("module rom (\n    input wire clk,\n    input wire [0:0] address,\n"));
    EXPECT_THAT(text_of(2), HasSubstr("[0:0] address"));
    EXPECT_THAT(text_of(3), HasSubstr("[1:0] address"));
    EXPECT_THAT(text_of(256), HasSubstr("[7:0] address"));
    EXPECT_THAT(text_of(257), HasSubstr("[8:0] address"));
}

TEST(VerilogWriter, WritesDontCareBits) {
    EXPECT_THAT(to_text(image_of_hex(8, {"1X", "23"}), {.as = &verilog_format}),
                HasSubstr("    initial words[0] = 8'b0001xxxx;\n    initial words[1] = 8'b00100011;\n"));
}

TEST(VerilogWriter, NotesTheBaseThatIsNot0) {
    EXPECT_THAT(
        to_text(image_of_hex(8, {"01"}, 0x8000), {.as = &verilog_format}),
        HasSubstr("    // words[0] has address 0x8000\n    reg [7:0] words [0:0];\n\n    initial words[0] = "
                  "8'h01;\n"));
}

} // namespace
