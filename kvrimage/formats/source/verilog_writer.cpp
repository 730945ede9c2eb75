#include "kvrimage/formats/source/verilog_writer.h"

#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/formats/source/hardware_module.h"
#include "kvrimage/formats/source/literal_lines.h"
#include "kvrimage/formats/source/reserved_words.h"
#include "kvrimage/formats/source/source_comments.h"
#include "kvrimage/formats/source/source_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace kvrimage {

namespace {

constexpr naming verilog_naming = {
    .language = "Verilog",
    .reserved = words_of_verilog,
    .taken = "clk address data words",
};

constexpr std::string_view verilog_comment = "// words[0] has address 0x";
constexpr std::string_view verilog_end = "\n"
                                         "    always @(posedge clk)\n"
                                         "        data <= words[address];\n"
                                         "endmodule\n";

std::string verilog_head(const memory_image& image, const write_options& options) {
    const std::uint32_t last_bit = image.width() - 1;
    std::string text = fmt::format("module {} (\n"
                                   "    input wire clk,\n"
                                   "    input wire [{}:0] address,\n"
                                   "    output reg [{}:0] data\n"
                                   ");\n",
                                   source_name(options, verilog_naming), address_bits(image) - 1, last_bit);
    if (image.base() != 0) {
        text += fmt::format("    {}{:X}\n", verilog_comment, image.base());
    }
    return text + fmt::format("    reg [{}:0] words [0:{}];\n\n", last_bit, image.depth() - 1);
}

radix verilog_radix(const memory_image& image) {
    return has_dont_care_bits(image) ? radix::bin : radix::hex;
}

/// Returns "8'h".
std::string verilog_literal_prefix(const memory_image& image, radix digits_radix) {
    return fmt::format("{}'{}", image.width(), digits_radix == radix::bin ? 'b' : 'h');
}

/// One process per word: tools take quadratic time for the statements of one process.
void append_verilog_word(std::string& text, std::uint64_t index, std::string_view prefix,
                         std::string_view digits) {
    fmt::format_to(std::back_inserter(text), "    initial words[{}] = {}", index, prefix);
    text += digits;
    text += ";\n";
}

} // namespace

std::vector<diagnostic> can_write_verilog(const memory_image& image, const write_options& options) {
    return can_write_module(image, options, verilog_naming);
}

void write_verilog(const memory_image& image, const write_options& options, text_sink& output) {
    const radix digits_radix = verilog_radix(image);
    const std::string prefix = verilog_literal_prefix(image, digits_radix);
    sink_buffer buffer(output);
    buffer.write(verilog_head(image, options));
    std::string text;
    for_each_shown_word(image, digits_radix, [&](std::uint64_t address, std::string_view digits) {
        text.clear();
        append_verilog_word(text, address - image.base(), prefix, digits);
        if (digits_radix == radix::bin) {
            std::ranges::replace(text, 'X', 'x');
        }
        buffer.write(text);
    });
    buffer.write(verilog_end);
    buffer.flush();
}

std::uint64_t written_verilog_size(const memory_image& image, const write_options& options) {
    const radix digits_radix = verilog_radix(image);
    std::string longest;
    append_verilog_word(longest, image.depth() - 1, verilog_literal_prefix(image, digits_radix),
                        std::string(most_characters_of_word(digits_radix, image.width()), '0'));
    return verilog_head(image, options).size() + image.depth() * longest.size() + verilog_end.size();
}

void find_verilog_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    find_source_comments(contents, {"//", "/*", "*/", "\"", verilog_comment}, take);
}

} // namespace kvrimage
