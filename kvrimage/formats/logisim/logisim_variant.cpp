#include "kvrimage/formats/logisim/logisim_variant.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr auto logisim_variants = std::to_array<logisim_variant>({
    {"v2.0 raw", false, std::nullopt},
    {"v3.0 hex words addressed", true, std::nullopt},
    {"v3.0 hex words plain", false, std::nullopt},
    {"v3.0 hex bytes addressed little-endian", true, byte_order::little},
    {"v3.0 hex bytes addressed big-endian", true, byte_order::big},
    {"v3.0 hex bytes plain little-endian", false, byte_order::little},
    {"v3.0 hex bytes plain big-endian", false, byte_order::big},
});

} // namespace

const logisim_variant* logisim_variant_of(std::string_view first) noexcept {
    first = first.substr(0, first.find_last_not_of(" \t\r") + 1);
    const auto* const found = std::ranges::find(logisim_variants, first, &logisim_variant::line);
    return found != logisim_variants.end() ? &*found : nullptr;
}

} // namespace kvrimage
