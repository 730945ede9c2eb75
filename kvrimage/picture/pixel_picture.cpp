#include "kvrimage/picture/pixel_picture.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/pixel_sampling.h"
#include "kvrimage/picture/shown_text.h"
#include "kvrimage/picture/svg/document.h"
#include "kvrimage/picture/svg/layout.h"
#include "kvrimage/picture/svg/png_url.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t most_svg_pixels = std::uint64_t{1} << 18U;
constexpr std::uint64_t most_character_pixels = std::uint64_t{1} << 16U;

/// Returns "16 words of 8 bits, rows of 4 pixels rgb332".
std::string title_of_pixels(const memory_image& image, const picture_options& options,
                            const pixel_layout& layout) {
    return fmt::format(
        "{}, rows of {} {}", title_of_picture(image, options.format_title, drawn_addresses(image, options)),
        counted(layout.columns, "pixel"), pixel_format_names[static_cast<std::size_t>(layout.format)]);
}

std::string note_on(const sampled_pixels& shown) {
    return shown.step == 1 ? "" : fmt::format("one pixel of each {0} x {0} is shown", shown.step);
}

/// Returns the largest box that fits the page. If there is room, pixels are scaled by an integer.
svg::box box_for(const sampled_pixels& shown) {
    const double columns = shown.columns;
    const double rows = shown.rows();
    double scale = std::min(svg::plot_box.width / columns, svg::plot_box.width / rows);
    scale = scale > 1 ? static_cast<double>(static_cast<int>(scale)) : scale;
    return {svg::plot_box.left, svg::plot_box.top, columns * scale, rows * scale};
}

/// Draws the addresses of the first and the last row next to them.
void draw_row_addresses(svg::document& page, const sampled_pixels& shown, const svg::box& at) {
    constexpr double gap = 6;
    constexpr double text_height = 10;
    page.add_text("end", at.left - gap, at.top + text_height, fmt::format("{:X}", shown.first));
    if (shown.rows() > 1 && at.height > 2 * text_height) {
        page.add_text("end", at.left - gap, at.bottom(), fmt::format("{:X}", shown.first_of_last_row()));
    }
}

/// Returns the brightness, from 0 for black to @p levels - 1 for white.
std::size_t level_of(const std::optional<color>& upper, const std::optional<color>& lower,
                     std::size_t levels) {
    const color above = upper.value_or(lower.value_or(color()));
    const color below = lower.value_or(above);
    const std::uint32_t sum = pixel_of(above, pixel_format::gray8) + pixel_of(below, pixel_format::gray8);
    constexpr std::size_t brightest_sum = 510;
    return sum * (levels - 1) / brightest_sum;
}

std::string shade_of(const std::optional<color>& upper, const std::optional<color>& lower, bool has_blocks) {
    constexpr std::array<std::string_view, 5> blocks = {" ", "░", "▒", "▓", "█"};
    constexpr std::array<std::string_view, 10> ascii = {" ", ".", ":", "-", "=", "+", "*", "#", "%", "@"};
    if (!upper && !lower) {
        return has_blocks ? "·" : "~";
    }
    return std::string(has_blocks ? blocks[level_of(upper, lower, blocks.size())]
                                  : ascii[level_of(upper, lower, ascii.size())]);
}

} // namespace

std::string draw_pixels_svg(const memory_image& image, const picture_options& options,
                            const pixel_layout& layout) {
    constexpr double margin = 6;
    constexpr std::size_t longest_name = 80;
    const sampled_pixels shown =
        sample_pixels(image, drawn_addresses(image, options), layout, {layout.columns, most_svg_pixels});
    const std::string name = shown_name(options.name);
    const std::string title = title_of_pixels(image, options, layout);
    const std::string note = note_on(shown);
    const svg::box at = box_for(shown);
    svg::document page;
    const double room = svg::picture_width - at.left - margin;
    if (!name.empty()) {
        page.add_fitted_text("name", at.left, svg::last_title_line - svg::name_height,
                             shortened(name, longest_name, "…"), svg::name_size, room);
    }
    page.add_fitted_text("title", at.left, svg::last_title_line, note.empty() ? title : title + "; " + note,
                         svg::text_size, room);
    page.add_box("unset", at);
    page.add_pixels(at, svg::png_url(shown.pixels, shown.columns));
    page.add_box("frame", at);
    draw_row_addresses(page, shown, at);
    constexpr std::array<svg::legend_entry, 1> gaps = {{{"unset", "not set or don't care"}}};
    const double bottom = page.add_legend(gaps, at.bottom() + svg::legend_line);
    return page.take({0, 0, svg::picture_width, bottom + margin}, name.empty() ? title : name + ": " + title);
}

std::string draw_pixels_in_characters(const memory_image& image, const picture_options& options,
                                      const pixel_layout& layout, const pixel_screen& screen) {
    if (screen.columns == 0) {
        throw std::invalid_argument("a picture on a screen without columns");
    }
    const sampled_pixels shown = sample_pixels(image, drawn_addresses(image, options), layout,
                                               {screen.columns, most_character_pixels});
    const std::string name = shown_name(options.name);
    std::string lines = name.empty() ? "" : (screen.has_blocks ? name : in_ascii(name)) + "  ";
    lines += title_of_pixels(image, options, layout) + "\n";
    const std::string note = note_on(shown);
    lines += note.empty() ? "" : note + "\n";
    for (std::uint32_t row = 0; row < shown.rows(); row += 2) {
        std::string line;
        for (std::uint32_t column = 0; column < shown.columns; ++column) {
            const std::optional<color> upper = shown.at(row, column);
            const std::optional<color> lower = shown.at(row + 1, column);
            line += screen.paint ? screen.paint(upper, lower) : shade_of(upper, lower, screen.has_blocks);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines += line + "\n";
    }
    return lines;
}

} // namespace kvrimage
