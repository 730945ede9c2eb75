#include "kvrimage/image/radix.h"

#include "kvr/util/letter_case.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// Indexed by radix.
constexpr std::array<std::string_view, 5> titles = {"BIN", "OCT", "DEC", "UNS", "HEX"};

} // namespace

std::string_view title_of(radix of) noexcept {
    return titles[static_cast<std::size_t>(of)];
}

std::optional<radix> radix_of_name(std::string_view name) noexcept {
    const auto* const found = std::ranges::find_if(
        titles, [name](std::string_view title) { return kvr::equal_ignoring_case(title, name); });
    return found != titles.end() ? std::optional(static_cast<radix>(found - titles.begin())) : std::nullopt;
}

} // namespace kvrimage
