#include "tools/kvrmem/split/split_plan.h"

#include "kvrimage/operations/split.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace kvrmem {

namespace {

using kvrimage::memory_image;

/// In the order of split_plan::kind.
constexpr std::array<std::string_view, 3> plan_options = {"--bits", "--every", "--blocks"};

std::vector<memory_image> split(const memory_image& image, const split_plan& plan) {
    if (plan.how == split_plan::kind::lanes) {
        return kvrimage::split_lanes(image, static_cast<std::uint32_t>(plan.number));
    }
    return plan.how == split_plan::kind::banks ? kvrimage::split_banks(image, plan.number)
                                               : kvrimage::split_blocks(image, plan.number);
}

memory_image join(std::span<const memory_image> parts, const split_plan& plan) {
    if (plan.how == split_plan::kind::lanes) {
        return kvrimage::join_lanes(parts);
    }
    return plan.how == split_plan::kind::banks ? kvrimage::join_banks(parts) : kvrimage::join_blocks(parts);
}

} // namespace

std::string split_plan::title() const {
    return fmt::format("{} {}", plan_options[static_cast<std::size_t>(how)], number);
}

std::uint64_t split_plan::part_count(std::uint32_t width) const noexcept {
    return how == split_plan::kind::lanes ? width / number : number;
}

split_plan plan_of(const arguments& given) {
    const std::array<std::optional<std::uint64_t>, 3> numbers = {given.lane_bits, given.banks, given.blocks};
    std::optional<split_plan> plan;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        if (numbers[index] && plan) {
            usage_error("give only one of --bits, --every and --blocks");
        }
        if (numbers[index]) {
            plan = split_plan{static_cast<split_plan::kind>(index), *numbers[index]};
        }
    }
    if (!plan) {
        usage_error("give one of --bits N, --every N and --blocks N");
    }
    return *plan;
}

std::vector<memory_image> parts_of(const memory_image& image, const split_plan& plan) {
    constexpr std::uint64_t most_parts = 512; // all files are open at the same time
    try {
        if (plan.part_count(image.width()) > most_parts) {
            usage_error(fmt::format("{}: {} files, more than {}", plan.title(),
                                    plan.part_count(image.width()), most_parts));
        }
        return split(image, plan);
    } catch (const std::invalid_argument& error) {
        usage_error(fmt::format("{}: {}", plan.title(), error.what()));
    }
}

memory_image joined(std::span<const memory_image> parts, const split_plan& plan) {
    try {
        return join(parts, plan);
    } catch (const std::invalid_argument& error) {
        usage_error(fmt::format("{}: {}", plan.title(), error.what()));
    } catch (const std::domain_error& error) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: {}; use --fill VALUE to set all words",
                                                           plan.title(), error.what()));
    }
}

} // namespace kvrmem
