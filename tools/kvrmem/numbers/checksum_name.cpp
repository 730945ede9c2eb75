#include "tools/kvrmem/numbers/checksum_name.h"

#include "tools/kvrmem/command_line/suggestion.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/sha256.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <variant>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::string_view own_parameters = "crc:";
constexpr std::uint32_t widest_check = 64;

/// A checksum that kvrimage does not have.
struct own_sum {
    std::string_view name;
    std::uint32_t bits;
    kvrimage::word (*compute)(const kvrimage::memory_image&, const kvrimage::checksum_options&);
};

const std::vector<own_sum>& own_sums() {
    static const std::vector<own_sum> all = {
#ifdef KVRMEM_HAS_SHA256
        {"sha-256", bits_of_sha256, sha256_of},
#endif
    };
    return all;
}

sum_algorithm algorithm_of(const kvrimage::checksum_kind& what) {
    return {std::visit([](const auto& kind) { return kind.width; }, what),
            [what](const kvrimage::memory_image& image, const kvrimage::checksum_options& options) {
                return kvrimage::checksum_of(image, what, options);
            }};
}

std::optional<sum_algorithm> algorithm_of_name(std::string_view name) {
    for (const own_sum& one : own_sums()) {
        if (one.name == name) {
            return sum_algorithm{one.bits, one.compute};
        }
    }
    const auto known = kvrimage::checksum_of_name(name);
    return known ? std::optional(algorithm_of(*known)) : std::nullopt;
}

std::vector<std::string_view> checksum_names() {
    std::vector<std::string_view> names;
    for (const kvrimage::named_checksum& one : kvrimage::named_checksums()) {
        names.emplace_back(one.name);
    }
    for (const own_sum& one : own_sums()) {
        names.emplace_back(one.name);
    }
    return names;
}

std::vector<std::string_view> parts_between_commas(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t begin = 0; begin <= text.size(); begin += parts.back().size() + 1) {
        parts.push_back(text.substr(begin, text.find(',', begin) - begin));
    }
    return parts;
}

std::optional<bool> truth_of(std::string_view text) {
    if (text == "true" || text == "1") {
        return true;
    }
    return text == "false" || text == "0" ? std::optional(false) : std::nullopt;
}

std::optional<kvrimage::crc_model> model_of_parameters(std::string_view text) {
    const std::vector<std::string_view> parts = parts_between_commas(text);
    constexpr std::size_t parameters = 6;
    if (parts.size() != parameters) {
        return std::nullopt;
    }
    const auto number = [&parts](std::size_t index) {
        return read_human_size(parts[index], std::numeric_limits<std::uint64_t>::max());
    };
    const auto width = read_human_size(parts[0], widest_check);
    const std::array numbers = {number(1), number(2), number(5)};
    const auto reflects_input = truth_of(parts[3]);
    const auto reflects_output = truth_of(parts[4]);
    if (!width || !numbers[0] || !numbers[1] || !numbers[2] || !reflects_input || !reflects_output) {
        return std::nullopt;
    }
    return kvrimage::crc_model{static_cast<std::uint32_t>(*width),
                               *numbers[0],
                               *numbers[1],
                               *reflects_input,
                               *reflects_output,
                               *numbers[2]};
}

} // namespace

sum_algorithm checksum_of_user(std::string_view text) {
    if (text.starts_with(own_parameters)) {
        const auto model = model_of_parameters(text.substr(own_parameters.size()));
        if (!model) {
            usage_error(fmt::format("--algorithm {}: expected crc:WIDTH,POLY,INIT,REFIN,REFOUT,XOROUT, as in "
                                    "crc:16,0x8005,0,true,true,0",
                                    text));
        }
        return algorithm_of(*model);
    }
    const auto named = algorithm_of_name(text);
    if (!named) {
        const std::string nearest = nearest_of(text, checksum_names());
        usage_error(fmt::format("--algorithm {}: there is no such checksum; {}kvrmem help sum lists them",
                                text, nearest.empty() ? "" : fmt::format("did you mean {}? ", nearest)));
    }
    return *named;
}

std::string checksum_choices() {
    return fmt::format("{}", fmt::join(checksum_names(), " "));
}

} // namespace kvrmem
