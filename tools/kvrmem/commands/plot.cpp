#include "kvrimage/files/platform.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/picture/picture.h"
#include "kvrimage/picture/pixel_picture.h"
#include "tools/kvrmem/command_line/idle_options.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kvrmem {

namespace {

/// Extensions of pictures other than SVG.
constexpr std::array<std::string_view, 8> other_pictures = {".png",  ".jpg", ".jpeg", ".gif",
                                                            ".webp", ".bmp", ".pdf",  ".ps"};

/// Rejects an output that would replace a memory file or another kind of picture, which is probably a
/// mistake.
void require_svg_file(const std::string& output, const std::string& input) {
    std::error_code error;
    const std::filesystem::path picture = kvrimage::platform::path_of(output);
    const std::filesystem::path memory = kvrimage::platform::path_of(input);
    const std::string extension = picture.extension().string();
    if (output != "-" && std::filesystem::equivalent(picture, memory, error)) {
        usage_error(fmt::format("--output {}: the picture would replace the memory file", output));
    }
    if (kvrimage::format_of_path(output) != nullptr ||
        std::ranges::find(other_pictures, extension) != other_pictures.end()) {
        usage_error(fmt::format("--output {}: a picture is an SVG file; use the extension .svg", output));
    }
}

void require_fitting_options(const arguments& given) {
    constexpr std::uint32_t least = kvrimage::least_screen_columns;
    constexpr std::uint32_t least_rows = kvrimage::least_picture_rows;
    if (given.columns.value_or(least) < least) {
        usage_error(fmt::format("--columns {}: a picture needs at least {} characters per line",
                                *given.columns, least));
    }
    if (given.rows.value_or(least_rows) < least_rows) {
        usage_error(fmt::format("--rows {}: a picture needs at least {}", *given.rows, least_rows));
    }
    if (given.output && given.rows.value_or(least_rows) > kvrimage::most_svg_rows) {
        usage_error(
            fmt::format("--rows {}: a map in SVG has at most {}", *given.rows, kvrimage::most_svg_rows));
    }
    if (given.output) {
        for (const std::string& file : given.files) {
            require_svg_file(*given.output, file);
        }
    }
}

/// Returns how to interpret the values of words of @p width bits: two's complement for `dec` and fixed point.
kvrimage::picture_options value_options(const arguments& given, std::uint32_t width) {
    kvrimage::picture_options options;
    const word_radix radix = given.radix.value_or(word_radix{});
    require_fitting(radix, width);
    if (radix.digits != kvrimage::radix::dec && radix.digits != kvrimage::radix::hex) {
        usage_error("--radix: values are drawn as hex, dec (signed) or fixed:I.F");
    }
    options.is_signed = given.is_signed || radix.digits == kvrimage::radix::dec;
    options.fraction_bits = radix.fraction_bits;
    return options;
}

/// Returns the screen according to @p given and the terminal.
kvrimage::character_screen screen_for(const arguments& given) {
    kvrimage::character_screen screen;
    screen.columns = given.columns.value_or(std::max(columns_of(stdout), kvrimage::least_screen_columns));
    screen.has_blocks = locale_has_utf8();
    const painter paint = painter_for(stdout, given.color);
    if (paint.colored()) {
        screen.paint = [paint](kvrimage::character_style part, std::string_view text) {
            // In the order of character_style.
            constexpr std::array styles = {style::plain,  style::bold,    style::dim,   style::blue,
                                           style::cyan,   style::magenta, style::green, style::cyan,
                                           style::yellow, style::yellow,  style::red,   style::green};
            return paint.paint(styles[static_cast<std::size_t>(part)], text);
        };
    }
    return screen;
}

/// Returns the usual pixel format for words of @p width bits; nothing if there is none.
std::optional<kvrimage::pixel_format> usual_pixel(std::uint32_t width) {
    using kvrimage::pixel_format;
    constexpr std::array usual = {pixel_format::mono,   pixel_format::gray4,  pixel_format::gray8,
                                  pixel_format::rgb444, pixel_format::rgb565, pixel_format::rgb888};
    const auto* const found = std::ranges::find(usual, width, kvrimage::bits_of);
    return found != usual.end() ? std::optional(*found) : std::nullopt;
}

kvrimage::pixel_layout layout_for(const arguments& given, std::uint32_t width) {
    const auto pixel = given.generator.pixel ? given.generator.pixel : usual_pixel(width);
    if (!pixel) {
        usage_error(fmt::format("--image: words of {} do not determine the pixel format; give --pixel FORMAT",
                                counted(width, "bit")));
    }
    if (kvrimage::bits_of(*pixel) > width) {
        usage_error(fmt::format("--pixel: a pixel has {}, the words have {}",
                                counted(kvrimage::bits_of(*pixel), "bit"), width));
    }
    return {*given.picture_columns, *pixel};
}

/// Formats two pixels as a half block in the colors of a true-color terminal.
std::string half_block(const std::optional<kvrimage::color>& upper,
                       const std::optional<kvrimage::color>& lower) {
    const auto escape = [](int plane, const std::optional<kvrimage::color>& shown) {
        return shown ? fmt::format("\x1b[{};2;{};{};{}m", plane, shown->red, shown->green, shown->blue) : "";
    };
    constexpr int foreground = 38;
    constexpr int background = 48;
    if (!upper && !lower) {
        return " ";
    }
    if (!upper) {
        return escape(foreground, lower) + "▄\x1b[0m";
    }
    return escape(foreground, upper) + escape(background, lower) + "▀\x1b[0m";
}

kvrimage::pixel_screen pixel_screen_for(const arguments& given) {
    kvrimage::pixel_screen screen;
    screen.columns = given.columns.value_or(columns_of(stdout));
    screen.has_blocks = locale_has_utf8();
    if (screen.has_blocks && painter_for(stdout, given.color).colored()) {
        screen.paint = half_block;
    }
    return screen;
}

std::string drawn_svg(const arguments& given, const kvrimage::memory_image& image,
                      const kvrimage::picture_options& options) {
    return given.picture_columns ? kvrimage::draw_pixels_svg(image, options, layout_for(given, image.width()))
                                 : kvrimage::draw_svg(image, options);
}

std::string drawn_in_characters(const arguments& given, const kvrimage::memory_image& image,
                                const kvrimage::picture_options& options) {
    return given.picture_columns
               ? kvrimage::draw_pixels_in_characters(image, options, layout_for(given, image.width()),
                                                     pixel_screen_for(given))
               : kvrimage::draw_in_characters(image, options, screen_for(given));
}

kvrimage::compared_memory compared(const memory_input& input) {
    return {input.path == "-" ? input.name() : input.path, std::string(input.result.facts.as->title)};
}

/// Returns the addresses of --range, or all addresses of both memories.
kvrimage::address_range range_within_both(const arguments& given, const kvrimage::memory_image& left,
                                          const kvrimage::memory_image& right) {
    const kvrimage::address_range all{std::min(left.base(), right.base()),
                                      std::max(left.last_address(), right.last_address())};
    const kvrimage::address_range range = given.range.value_or(all);
    if (range.first < all.first || range.last > all.last) {
        usage_error(fmt::format("--range {}: the memories have the addresses {}", shown_range(range),
                                shown_range(all)));
    }
    return range;
}

exit_code plot_differences(const arguments& given) {
    refuse_idle_options(plot_command, given);
    const memory_input left = read_compared_memory(given, given.files[0]);
    const memory_input right = read_compared_memory(given, given.files[1]);
    const kvrimage::difference_options options{range_within_both(given, left.image(), right.image()),
                                               compared(left), compared(right), given.rows};
    if (given.output) {
        write_text(*given.output, kvrimage::draw_difference_svg(left.image(), right.image(), options));
    } else {
        print(
            kvrimage::draw_difference_in_characters(left.image(), right.image(), options, screen_for(given)));
    }
    return exit_code::success;
}

exit_code plot(const arguments& given) {
    require_fitting_options(given);
    if (given.files.size() == 2) {
        return plot_differences(given);
    }
    const memory_input input = read_memory(given, given.files[0]);
    refuse_idle_options(plot_command, given, input.image().width());
    const kvrimage::compared_memory shown = compared(input);
    kvrimage::picture_options options = value_options(given, input.image().width());
    options.range = range_within(given, input.image());
    options.name = shown.name;
    options.format_title = shown.format_title;
    options.rows = given.rows;
    if (given.output) {
        write_text(*given.output, drawn_svg(given, input.image(), options));
    } else {
        print(drawn_in_characters(given, input.image(), options));
    }
    return exit_code::success;
}

constexpr auto plot_options =
    united_options(reading_options, std::array{option_id::range, option_id::output, option_id::is_signed,
                                               option_id::radix, option_id::columns, option_id::rows,
                                               option_id::picture_columns, option_id::pixel});

} // namespace

const command plot_command = {
    "plot",
    "FILE [FILE2] [-o OUT.svg]",
    "Draw the words of a memory, or what differs in two, in the terminal or as SVG.",
    "  $ kvrmem plot --signed sine.mif\n"
    "  $ kvrmem plot --signed sine.mif -o sine.svg\n"
    "  $ kvrmem plot --range 0x40..0x7F --columns 120 boot.hex\n"
    "  $ kvrmem plot --radix fixed:1.15 --rows 24 filter.mif\n"
    "  $ kvrmem plot old.mif new.mif -o changes.svg\n"
    "  $ kvrmem plot --image 64 --pixel rgb565 logo.mif -o logo.svg\n",
    "Words of up to 64 bits are drawn as bars, labeled in hexadecimal; --radix dec (or\n"
    "--signed) and --radix fixed:I.F read them as signed values, with bars that extend\n"
    "from zero. A character or pixel for several words extends from the least to the\n"
    "greatest of them. Wider words are drawn as a map of their bits, or of bytes if there\n"
    "is no room for each bit. Words that are not set leave a gap; words with don't-care\n"
    "bits have a mark. The strip below shows which addresses are set, and which adjacent\n"
    "addresses hold the same word. If there is no room for each word, long ranges without\n"
    "words are omitted.\n"
    "\n"
    "With FILE2 the differences are drawn: words that changed, words that only FILE (A)\n"
    "has, and words that only FILE2 (B) has, with the number of each.\n"
    "\n"
    "With --image the words are pixels, row by row from the top: mono, gray4, gray8,\n"
    "rgb444, rgb565 or rgb888 by their width, unless --pixel names the format.\n"
    "\n"
    "In the terminal the picture is ASCII unless LC_ALL, LC_CTYPE or LANG (the first that\n"
    "is set) names UTF-8. A range with more than 16,777,216 runs is sampled, and the\n"
    "picture states this.\n",
    1,
    2,
    plot_options,
    plot};

} // namespace kvrmem
