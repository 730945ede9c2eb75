#include "kvrimage/formats/source/hardware_module.h"

#include "kvrimage/diagnostics/diagnose.h"

#include <bit>
#include <limits>

namespace kvrimage {

std::uint32_t address_bits(const memory_image& image) {
    return image.depth() == 1 ? 1 : static_cast<std::uint32_t>(std::bit_width(image.depth() - 1));
}

void refuse_source_depth(const memory_image& image, std::string_view language,
                         std::vector<diagnostic>& found) {
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    if (image.depth() > most) {
        found.push_back(diagnose::source_too_deep({}, language, most, image.depth()));
    }
}

} // namespace kvrimage
