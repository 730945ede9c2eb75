#include "kvrimage/picture/svg/layout.h"

#include "kvrimage/diagnostics/utf8_character.h"

#include <fmt/format.h>

namespace kvrimage::svg {

namespace {

/// Returns the width of a character in units of the font size.
double width_of_character(char character) {
    constexpr std::string_view wide = "mwMW@%";
    constexpr std::string_view narrow = "ijl|!.,:;'`I()[] ";
    constexpr double wide_width = 1.1;
    constexpr double capital_width = 0.8;
    constexpr double usual_width = 0.65;
    constexpr double narrow_width = 0.42;
    if (is_continuation(character)) {
        return 0; // counted with the first byte
    }
    if (static_cast<unsigned char>(character) >= 0x80U || wide.find(character) != std::string_view::npos) {
        return wide_width;
    }
    if (narrow.find(character) != std::string_view::npos) {
        return narrow_width;
    }
    return character >= 'A' && character <= 'Z' ? capital_width : usual_width;
}

} // namespace

std::string coordinate(double pixels) {
    std::string text = fmt::format("{:.2f}", pixels);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

double text_width(std::string_view text, double size) {
    double width = 0;
    for (const char character : text) {
        width += width_of_character(character) * size;
    }
    return width;
}

double column_scale::x_of(const column_grid::part& part, double offset) const {
    const double words = static_cast<double>(part.last - part.first) + 1;
    const double units = part.begin + (offset - static_cast<double>(part.first)) * part.room / words;
    return plot_box.left + units * plot_box.width / grid.room();
}

std::string column_scale::begin(std::uint32_t column) const {
    return coordinate(x_of(grid.part_of_column(column), static_cast<double>(grid.first_of(column))));
}

std::string column_scale::end(std::uint32_t column) const {
    return coordinate(x_of(grid.part_of_column(column), static_cast<double>(grid.last_of(column)) + 1));
}

double column_scale::middle_of(std::uint64_t offset) const {
    return x_of(grid.part_of_column(grid.column_of(offset)), static_cast<double>(offset) + 0.5);
}

double column_scale::column_width(const column_grid::part& part) const {
    return x_of(part, static_cast<double>(part.first) + static_cast<double>(part.words_a_column)) -
           x_of(part, static_cast<double>(part.first));
}

box column_scale::box_of(const column_grid::part& part, const box& within) const {
    return {plot_box.left + part.begin * unit(), within.top, part.room * unit(), within.height};
}

double column_scale::unit() const {
    return plot_box.width / grid.room();
}

} // namespace kvrimage::svg
