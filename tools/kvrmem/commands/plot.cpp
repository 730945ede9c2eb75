#include "tools/kvrmem/command_line/idle_options.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/plot/plot_picture.h"
#include "tools/kvrmem/plot/plot_svg.h"
#include "tools/kvrmem/plot/plot_terminal.h"
#include "tools/kvrmem/plot/plot_text.h"
#include "tools/kvrmem/surroundings/replacement_file.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
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
    if (format_of_path(output) || std::ranges::find(other_pictures, extension) != other_pictures.end()) {
        usage_error(fmt::format("--output {}: a picture is an SVG file; name it so", output));
    }
}

void require_fitting_options(const arguments& given) {
    if (given.columns.value_or(least_screen_columns) < least_screen_columns) {
        usage_error(fmt::format("--columns {}: a picture needs at least {} characters a line", *given.columns,
                                least_screen_columns));
    }
    if (given.output) {
        require_svg_file(*given.output, given.files[0]);
    }
}

void write_svg(const arguments& given, const plot_picture& picture) {
    replacement_file file(*given.output);
    file.output().write(draw_as_svg(picture));
    file.commit();
}

exit_code plot(const arguments& given) {
    require_fitting_options(given);
    const input_file input(given.files[0]);
    const memory_image image = read_memory(input, options_for(given, given.files[0]));
    refuse_idle_options(plot_command, given, image.width);
    const address_range range = range_within(given, image);
    const std::string& name = given.files[0] == "-" ? input.name() : given.files[0];
    if (given.output) {
        write_svg(given, make_picture(image, name, range, given.is_signed, size_for_svg(image.width)));
        return exit_code::fine;
    }
    const std::uint32_t columns = given.columns.value_or(std::max(columns_of(stdout), least_screen_columns));
    const painter paint = painter_for(stdout, given.color);
    const plot_picture picture =
        make_picture(image, name, range, given.is_signed, size_for_screen(columns, image.width));
    print(draw_in_characters(picture, {columns, locale_has_utf8(), paint}));
    return exit_code::fine;
}

constexpr std::array plot_options = {option_id::from,   option_id::width,  option_id::depth,
                                     option_id::range,  option_id::output, option_id::is_signed,
                                     option_id::columns};

} // namespace

const command plot_command = {"plot",
                              "FILE [-o OUT.svg]",
                              "Draw the words of a memory over its addresses, in the terminal or as SVG.",
                              "  $ kvrmem plot --signed sine.mif\n"
                              "  $ kvrmem plot --signed sine.mif -o sine.svg\n"
                              "  $ kvrmem plot --range 0x40..0x7F --columns 120 boot.hex\n",
                              "Words of up to 64 bits make a waveform; a character or pixel that stands for\n"
                              "several words reaches from the least to the greatest of them. Wider words\n"
                              "make a map of their bits. Words that were never set leave a gap, and so do,\n"
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
