#include "kvrimage/picture/svg/layout.h"

#include <fmt/format.h>

namespace kvrimage::svg {

std::string coordinate(double pixels) {
    std::string text = fmt::format("{:.2f}", pixels);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

double column_scale::x_of(double offset) const {
    return plot_box.left +
           (offset - static_cast<double>(grid.first())) * plot_box.width / static_cast<double>(grid.words());
}

std::string column_scale::begin(std::uint32_t column) const {
    return coordinate(x_of(static_cast<double>(grid.first_of(column))));
}

std::string column_scale::end(std::uint32_t column) const {
    return coordinate(x_of(static_cast<double>(grid.last_of(column)) + 1));
}

double column_scale::column_width() const {
    return x_of(static_cast<double>(grid.first() + grid.words_a_column())) - plot_box.left;
}

double column_scale::words_a_pixel() const {
    return static_cast<double>(grid.words()) / plot_box.width;
}

} // namespace kvrimage::svg
