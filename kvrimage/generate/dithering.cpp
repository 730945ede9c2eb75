#include "kvrimage/generate/dithering.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kvrimage {

namespace {

constexpr int sixteen = 16;

std::uint8_t clamped(int channel) {
    return static_cast<std::uint8_t>(std::clamp(channel, 0, 255));
}

} // namespace

dithering::dithering(std::uint32_t columns_of_picture, bool is_wanted) : columns(columns_of_picture) {
    if (is_wanted) {
        of_row.resize(std::size_t{columns} + 2);
        of_row_below.resize(of_row.size());
    }
}

color dithering::next(const color& wanted) {
    if (of_row.empty()) {
        return wanted;
    }
    exact = {wanted.red, wanted.green, wanted.blue};
    for (std::size_t channel = 0; channel < exact.size(); ++channel) {
        exact[channel] = clamped(exact[channel] + of_row[column + 1][channel] / sixteen);
    }
    return {clamped(exact[0]), clamped(exact[1]), clamped(exact[2])};
}

void dithering::show(const color& shown) {
    if (of_row.empty()) {
        return;
    }
    const channels visible = {shown.red, shown.green, shown.blue};
    for (std::size_t channel = 0; channel < exact.size(); ++channel) {
        const int missing = exact[channel] - visible[channel];
        of_row[column + 2][channel] += 7 * missing;
        of_row_below[column][channel] += 3 * missing;
        of_row_below[column + 1][channel] += 5 * missing;
        of_row_below[column + 2][channel] += missing;
    }
    if (++column == columns) {
        column = 0;
        of_row = std::exchange(of_row_below, std::vector<channels>(of_row.size()));
    }
}

} // namespace kvrimage
