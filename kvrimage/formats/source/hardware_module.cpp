#include "kvrimage/formats/source/hardware_module.h"

#include "kvrimage/diagnostics/diagnose.h"

#include <bit>
#include <limits>

namespace kvrimage {

std::uint32_t address_bits(const memory_image& image) {
    return image.depth() == 1 ? 1 : static_cast<std::uint32_t>(std::bit_width(image.depth() - 1));
}

std::vector<diagnostic> can_write_module(const memory_image& image, const write_options& options,
                                         const naming& rules) {
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    std::vector<diagnostic> found;
    refuse_source_name(options, rules, found);
    if (image.depth() > most) {
        found.push_back(diagnose::source_too_deep({}, rules.language, most, image.depth()));
    }
    return found;
}

} // namespace kvrimage
