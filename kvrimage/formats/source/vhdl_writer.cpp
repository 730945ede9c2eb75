#include "kvrimage/formats/source/vhdl_writer.h"

#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/source/hardware_module.h"
#include "kvrimage/formats/source/literal_lines.h"
#include "kvrimage/formats/source/reserved_words.h"
#include "kvrimage/formats/source/source_comments.h"
#include "kvrimage/formats/source/source_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>

namespace kvrimage {

namespace {

constexpr naming vhdl_naming = {
    .language = "VHDL",
    .reserved = words_of_vhdl,
    .taken = "ieee std work std_logic_1164 numeric_std std_logic std_logic_vector positive unsigned "
             "to_integer rising_edge rtl clk address data width depth word word_array words",
    .ignores_case = true,
    .parts_with_words = true,
};

constexpr std::string_view vhdl_comment = "-- words(0) has address 0x";

constexpr std::string_view vhdl_package = R"(library ieee;
use ieee.std_logic_1164.all;

package {0}_words is
    constant width : positive := {1};
    constant depth : positive := {2};
    subtype word is std_logic_vector(width - 1 downto 0);
    type word_array is array (0 to depth - 1) of word;
{3}    constant words : word_array := ()";

constexpr std::string_view vhdl_entity = R"(
    );
end package {0}_words;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.{0}_words.all;

entity {0} is
    port (
        clk : in std_logic;
        address : in std_logic_vector({1} downto 0);
        data : out std_logic_vector({2} downto 0)
    );
end entity {0};

architecture rtl of {0} is
begin
    process (clk)
    begin
        if rising_edge(clk) then
{3}        end if;
    end process;
end architecture rtl;
)";

constexpr std::string_view vhdl_read = "            data <= words(to_integer(unsigned(address)));\n";
/// An index out of range ends a simulation.
constexpr std::string_view vhdl_checked_read =
    "            if to_integer(unsigned(address)) < depth then\n"
    "                data <= words(to_integer(unsigned(address)));\n"
    "            else\n"
    "                data <= (others => '-');\n"
    "            end if;\n";

/// The text around the words.
struct vhdl_frame {
    std::string before;
    std::string after;
};

vhdl_frame vhdl_frame_of(const memory_image& image, const write_options& options) {
    const std::string name = source_name(options, vhdl_naming);
    const std::string base =
        image.base() != 0 ? fmt::format("    {}{:X}\n", vhdl_comment, image.base()) : std::string();
    const bool has_every_address = image.depth() > 1 && std::has_single_bit(image.depth());
    return {fmt::format(vhdl_package, name, image.width(), image.depth(), base),
            fmt::format(vhdl_entity, name, address_bits(image) - 1, image.width() - 1,
                        has_every_address ? vhdl_read : vhdl_checked_read)};
}

/// A hexadecimal digit of VHDL-93 always has four bits.
radix vhdl_radix(const memory_image& image) {
    const bool is_hexadecimal = image.width() % bits_per_hex_digit == 0 && !has_dont_care_bits(image);
    return is_hexadecimal ? radix::hex : radix::bin;
}

/// Returns the text before the digits of a word. The word of a one-word array needs its index: without it,
/// parentheses do not form an array.
std::string vhdl_literal_prefix(const memory_image& image, radix digits_radix) {
    return fmt::format("{}{}\"", image.depth() == 1 ? "0 => " : "", digits_radix == radix::hex ? "x" : "");
}

literal_lines vhdl_lines(const memory_image& image, radix digits_radix, std::string_view prefix) {
    return literal_lines(prefix.size() + most_characters_of_word(digits_radix, image.width()) + 1, 8);
}

} // namespace

std::vector<diagnostic> can_write_vhdl(const memory_image& image, const write_options& options) {
    return can_write_module(image, options, vhdl_naming);
}

void write_vhdl(const memory_image& image, const write_options& options, text_sink& output) {
    const radix digits_radix = vhdl_radix(image);
    const std::string prefix = vhdl_literal_prefix(image, digits_radix);
    const vhdl_frame frame = vhdl_frame_of(image, options);
    sink_buffer buffer(output);
    buffer.write(frame.before);
    const auto append = [&prefix](std::string& text, std::string_view digits) {
        text += prefix;
        text += digits;
        std::ranges::replace(text, 'X', '-');
        text += '"';
    };
    write_literals(image, digits_radix, vhdl_lines(image, digits_radix, prefix), buffer, append);
    buffer.write(frame.after);
    buffer.flush();
}

std::uint64_t written_vhdl_size(const memory_image& image, const write_options& options) {
    const radix digits_radix = vhdl_radix(image);
    const vhdl_frame frame = vhdl_frame_of(image, options);
    const literal_lines lines = vhdl_lines(image, digits_radix, vhdl_literal_prefix(image, digits_radix));
    return frame.before.size() + lines.size(image.depth()) + frame.after.size();
}

void find_vhdl_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    find_source_comments(contents, {"--", "/*", "*/", "\"", vhdl_comment, true}, take);
}

} // namespace kvrimage
