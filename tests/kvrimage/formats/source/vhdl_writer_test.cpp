#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/source/vhdl_format.h"
#include "tests/kvrimage/formats/source/source_test_images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;
using kvrimage_tests::image_of_hex;
using testing::HasSubstr;
using testing::Not;

std::string vhdl_text(const memory_image& image) {
    return to_text(image, {.as = &vhdl_format, .file_name = "sine.vhd"});
}

TEST(VhdlWriter, WritesAPackageAndAnEntity) {
    EXPECT_EQ(vhdl_text(image_of_hex(8, {"00", "FF", "2A", "07"})),
              R"(library ieee;
use ieee.std_logic_1164.all;

package sine_words is
    constant width : positive := 8;
    constant depth : positive := 4;
    subtype word is std_logic_vector(width - 1 downto 0);
    type word_array is array (0 to depth - 1) of word;
    constant words : word_array := (
        x"00", x"FF", x"2A", x"07"
    );
end package sine_words;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.sine_words.all;

entity sine is
    port (
        clk : in std_logic;
        address : in std_logic_vector(1 downto 0);
        data : out std_logic_vector(7 downto 0)
    );
end entity sine;

architecture rtl of sine is
begin
    process (clk)
    begin
        if rising_edge(clk) then
            data <= words(to_integer(unsigned(address)));
        end if;
    end process;
end architecture rtl;
)");
}

TEST(VhdlWriter, ReadsDontCareBitsBeyondTheLastWord) {
    EXPECT_THAT(vhdl_text(image_of_hex(8, {"00", "FF", "2A"})),
                HasSubstr("            if to_integer(unsigned(address)) < depth then\n"
                          "                data <= words(to_integer(unsigned(address)));\n"
                          "            else\n"
                          "                data <= (others => '-');\n"
                          "            end if;\n"
                          "        end if;\n"));
}

TEST(VhdlWriter, ReadsTwoWordsWithEveryAddress) {
    EXPECT_THAT(vhdl_text(image_of_hex(8, {"00", "FF"})), Not(HasSubstr("< depth")));
}

TEST(VhdlWriter, WritesTheIndexOfASingleWord) {
    const std::string text = vhdl_text(image_of_hex(8, {"2A"}));
    EXPECT_THAT(text, HasSubstr("word_array := (\n        0 => x\"2A\"\n    );\n"));
    EXPECT_THAT(text, HasSubstr("address : in std_logic_vector(0 downto 0);"));
    EXPECT_THAT(text, HasSubstr("if to_integer(unsigned(address)) < depth then"));
}

TEST(VhdlWriter, WritesBitsWhereDigitsDoNotFit) {
    EXPECT_THAT(vhdl_text(image_of_hex(9, {"1FF", "002"})),
                HasSubstr("        \"111111111\", \"000000010\"\n"));
    EXPECT_THAT(vhdl_text(image_of_hex(8, {"1X", "23"})), HasSubstr("        \"0001----\", \"00100011\"\n"));
}

TEST(VhdlWriter, FillsLinesOf79Characters) {
    const std::string line = R"(x"1234", x"1234", x"1234", x"1234", x"1234", x"1234", x"1234", x"1234")";
    EXPECT_THAT(vhdl_text(image_of_hex(16, std::vector<std::string_view>(16, "1234"))),
                HasSubstr("(\n        " + line + ",\n        " + line + "\n    );\n"));
}

TEST(VhdlWriter, NotesTheBaseThatIsNot0) {
    EXPECT_THAT(vhdl_text(image_of_hex(8, {"01", "02"}, 0x8000)),
                HasSubstr("    -- words(0) has address 0x8000\n    constant words : word_array := (\n"));
}

} // namespace
