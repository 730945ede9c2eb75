#include "kvrimage/picture/picture.h"

#include "kvrimage/picture/characters/character_picture.h"
#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/svg_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

namespace kvrimage {

namespace {

void require_rows(const std::optional<std::uint32_t>& rows) {
    if (rows.value_or(least_picture_rows) < least_picture_rows) {
        throw std::invalid_argument(
            fmt::format("a picture of {} rows: it has at least {}", *rows, least_picture_rows));
    }
}

void require_columns(const character_screen& screen) {
    if (screen.columns < least_screen_columns) {
        throw std::invalid_argument(fmt::format("a picture on a screen of {} columns: it needs at least {}",
                                                screen.columns, least_screen_columns));
    }
}

std::size_t label_size_for(const memory_image& image, const picture_options& options) {
    return image.width() > widest_waveform ? characters::usual_label_size
                                           : characters::label_size_for(value_order(
                                                 image.width(), {options.is_signed, options.fraction_bits}));
}

} // namespace

std::string draw_svg(const memory_image& image, const picture_options& options) {
    require_rows(options.rows);
    const std::uint32_t rows = std::min(options.rows.value_or(most_svg_rows), most_svg_rows);
    return svg::draw(contents_of(image, options, svg::size_for(image.width(), rows)));
}

std::string draw_in_characters(const memory_image& image, const picture_options& options,
                               const character_screen& screen) {
    require_rows(options.rows);
    require_columns(screen);
    const std::uint32_t rows = options.rows.value_or(usual_rows);
    const picture_size size = characters::size_for(screen.columns, label_size_for(image, options), rows);
    return characters::draw(contents_of(image, options, size), rows, screen);
}

std::string draw_difference_svg(const memory_image& left, const memory_image& right,
                                const difference_options& options) {
    require_rows(options.rows);
    return svg::draw(contents_of_difference(left, right, options, svg::difference_size()));
}

std::string draw_difference_in_characters(const memory_image& left, const memory_image& right,
                                          const difference_options& options, const character_screen& screen) {
    require_rows(options.rows);
    require_columns(screen);
    const std::uint32_t rows = options.rows.value_or(usual_rows);
    const picture_size size = characters::size_for(screen.columns, characters::usual_label_size, rows);
    return characters::draw(contents_of_difference(left, right, options, size), rows, screen);
}

} // namespace kvrimage
