#include "kvrimage/generate/color_groups.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace kvrimage {

namespace {

using color_channel = std::uint8_t color::*;
constexpr std::array<color_channel, 3> all_channels = {&color::red, &color::green, &color::blue};

/// Adjacent pixels, at least one.
struct color_group {
    explicit color_group(std::span<color> pixels) : members(pixels) {
        for (const color_channel each : all_channels) {
            const auto [least, greatest] = std::ranges::minmax(members, {}, each);
            const int found = greatest.*each - least.*each;
            if (found > extent) {
                extent = found;
                widest = each;
            }
        }
    }

    std::span<color> members;
    int extent = 0; ///< extent of the widest channel; 0 if there is one color only
    color_channel widest = all_channels.front();
};

/// Returns the start of the second half of @p group, which leaves at least one pixel in each half. The border
/// is before or after the pixels with the median of the widest channel, at the wider gap between two values.
std::size_t border_of(const color_group& group) {
    std::ranges::sort(group.members, {}, group.widest);
    const std::span<color> members = group.members;
    const std::uint8_t median = members[members.size() / 2].*group.widest;
    const auto first = std::ranges::lower_bound(members, median, {}, group.widest);
    const auto last = std::ranges::upper_bound(members, median, {}, group.widest);
    const auto gap_before = [&](auto border) {
        return border == members.begin() || border == members.end()
                   ? 0
                   : *border.*group.widest - *std::prev(border).*group.widest;
    };
    return static_cast<std::size_t>((gap_before(first) >= gap_before(last) ? first : last) - members.begin());
}

color mean_of(std::span<const color> pixels) {
    std::array<std::uint64_t, 3> sums{};
    for (const color& pixel : pixels) {
        for (std::size_t index = 0; index < sums.size(); ++index) {
            sums[index] += pixel.*all_channels[index];
        }
    }
    color mean;
    for (std::size_t index = 0; index < sums.size(); ++index) {
        mean.*all_channels[index] =
            static_cast<std::uint8_t>((sums[index] + pixels.size() / 2) / pixels.size());
    }
    return mean;
}

} // namespace

std::vector<color> grouped_colors(std::span<const color> pixels, std::uint32_t most) {
    std::vector<color> sorted(pixels.begin(), pixels.end());
    std::vector<color_group> groups = {color_group(sorted)};
    while (groups.size() < most) {
        const auto widest = std::ranges::max_element(groups, {}, &color_group::extent);
        if (widest->extent == 0) {
            break;
        }
        const std::size_t border = border_of(*widest);
        const std::span<color> members = widest->members;
        *widest = color_group(members.first(border));
        groups.emplace_back(members.subspan(border));
    }
    std::vector<color> means;
    std::ranges::transform(groups, std::back_inserter(means),
                           [](const color_group& group) { return mean_of(group.members); });
    return means;
}

} // namespace kvrimage
