#include "kvrimage/picture/picture.h"

#include "kvrimage/picture/characters/character_picture.h"
#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/svg_picture.h"

#include <fmt/format.h>

#include <stdexcept>

namespace kvrimage {

std::string draw_svg(const memory_image& image, const picture_options& options) {
    return svg::draw(contents_of(image, options, svg::size_for(image.width())));
}

std::string draw_in_characters(const memory_image& image, const picture_options& options,
                               const character_screen& screen) {
    if (screen.columns < least_screen_columns) {
        throw std::invalid_argument(fmt::format("a picture on a screen of {} columns: it needs at least {}",
                                                screen.columns, least_screen_columns));
    }
    const picture_size size = characters::size_for(screen.columns, image.width());
    return characters::draw(contents_of(image, options, size), image.width(), screen);
}

} // namespace kvrimage
