#include "kvrimage/formats/registry.h"
#include "kvrimage/picture/picture.h"
#include "tools/kvrmem/command_line/idle_options.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace kvrmem {

namespace {

/// Extensions of pictures that are something else than SVG.
constexpr std::array<std::string_view, 8> other_pictures = {".png",  ".jpg", ".jpeg", ".gif",
                                                            ".webp", ".bmp", ".pdf",  ".ps"};

/// A picture in the place of a memory file, or in that of another kind of picture, is a slip of the pen.
void require_svg_file(const std::string& output, const std::string& input) {
    std::error_code error;
    const std::filesystem::path picture(output);
    const std::filesystem::path memory(input);
    const std::string extension = picture.extension().string();
    if (output != "-" && std::filesystem::equivalent(picture, memory, error)) {
        usage_error(fmt::format("--output {}: the picture would replace the memory file", output));
    }
    if (kvrimage::format_of_path(output) != nullptr ||
        std::ranges::find(other_pictures, extension) != other_pictures.end()) {
        usage_error(fmt::format("--output {}: a picture is an SVG file; name it so", output));
    }
}

void require_fitting_options(const arguments& given) {
    constexpr std::uint32_t least = kvrimage::least_screen_columns;
    if (given.columns.value_or(least) < least) {
        usage_error(fmt::format("--columns {}: a picture needs at least {} characters a line", *given.columns,
                                least));
    }
    if (given.output) {
        require_svg_file(*given.output, given.files[0]);
    }
}

/// What @p given asks for, and the terminal can do.
kvrimage::character_screen screen_for(const arguments& given) {
    kvrimage::character_screen screen;
    screen.columns = given.columns.value_or(std::max(columns_of(stdout), kvrimage::least_screen_columns));
    screen.has_blocks = locale_has_utf8();
    const painter paint = painter_for(stdout, given.color);
    if (paint.colored()) {
        screen.paint = [paint](kvrimage::character_style part, std::string_view text) {
            // In the order of character_style.
            constexpr std::array styles = {style::plain, style::bold, style::dim,
                                           style::blue,  style::cyan, style::magenta,
                                           style::green, style::cyan, style::yellow};
            return paint.paint(styles[static_cast<std::size_t>(part)], text);
        };
    }
    return screen;
}

exit_code plot(const arguments& given) {
    require_fitting_options(given);
    const memory_input input = read_memory(given, given.files[0]);
    refuse_idle_options(plot_command, given, input.image().width());
    const kvrimage::picture_options options{range_within(given, input.image()), given.is_signed,
                                            input.path == "-" ? input.name() : input.path,
                                            std::string(input.result.facts.as->title)};
    if (given.output) {
        write_text(*given.output, kvrimage::draw_svg(input.image(), options));
    } else {
        print(kvrimage::draw_in_characters(input.image(), options, screen_for(given)));
    }
    return exit_code::fine;
}

constexpr std::array plot_options = {option_id::from,   option_id::width,       option_id::depth,
                                     option_id::unit,   option_id::order,       option_id::base,
                                     option_id::pad,    option_id::read_choice, option_id::range,
                                     option_id::output, option_id::is_signed,   option_id::columns};

} // namespace

const command plot_command = {"plot",
                              "FILE [-o OUT.svg]",
                              "Draw the words of a memory over its addresses, in the terminal or as SVG.",
                              "  $ kvrmem plot --signed sine.mif\n"
                              "  $ kvrmem plot --signed sine.mif -o sine.svg\n"
                              "  $ kvrmem plot --range 0x40..0x7F --columns 120 boot.hex\n",
                              "Words of up to 64 bits make a waveform; a character or pixel that stands for\n"
                              "several words reaches from the least to the greatest of them. Wider words\n"
                              "make a map of their bits. Words that are not set leave a gap, and so do,\n"
                              "in a waveform, words with don't-care bits. The strip below tells which\n"
                              "addresses are set, and where neighbours hold the same word.\n"
                              "\n"
                              "The terminal's picture is ASCII unless LC_ALL, LC_CTYPE or LANG (the first\n"
                              "that is set) names UTF-8. A range with more than 16,777,216 runs is sampled,\n"
                              "and the picture says so.\n",
                              1,
                              1,
                              plot_options,
                              plot};

} // namespace kvrmem
