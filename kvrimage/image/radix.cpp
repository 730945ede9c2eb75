#include "kvrimage/image/radix.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// In the order of radix.
constexpr std::array<std::string_view, 5> titles = {"BIN", "OCT", "DEC", "UNS", "HEX"};

} // namespace

std::string_view title_of(radix of) noexcept {
    return titles[static_cast<std::size_t>(of)];
}

std::optional<radix> radix_of_name(std::string_view name) noexcept {
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    const auto* const found = std::ranges::find_if(titles, [name, upper](std::string_view title) {
        return std::ranges::equal(title, name, {}, {}, upper);
    });
    return found != titles.end() ? std::optional(static_cast<radix>(found - titles.begin())) : std::nullopt;
}

} // namespace kvrimage
