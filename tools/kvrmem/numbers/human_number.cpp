#include "tools/kvrmem/numbers/human_number.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::radix;

struct prefix {
    std::string_view text;
    kvrimage::radix radix;
};

constexpr std::array<prefix, 6> prefixes = {{{"0x", radix::hex},
                                             {"0X", radix::hex},
                                             {"0b", radix::bin},
                                             {"0B", radix::bin},
                                             {"0o", radix::oct},
                                             {"0O", radix::oct}}};

/// In the order of radix.
constexpr std::array<int, 5> bases = {2, 8, 10, 10, 16};

/// Returns the ends of "FIRST..LAST", or one address twice; nothing for an invalid 64-bit number.
std::pair<std::optional<std::uint64_t>, std::optional<std::uint64_t>> ends_of_range(std::string_view text) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const std::size_t dots = text.find("..");
    const auto first = read_human_size(text.substr(0, dots), largest);
    return {first, dots == std::string_view::npos ? first : read_human_size(text.substr(dots + 2), largest)};
}

} // namespace

std::string without_underscores(std::string_view text) {
    std::string digits;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool separates = text[at] == '_' && at > 0 && at + 1 < text.size() && text[at - 1] != '_' &&
                               text[at - 1] != '-' && text[at + 1] != '_';
        if (!separates) {
            digits += text[at];
        }
    }
    return digits;
}

human_value read_human_value(std::string_view text) {
    for (const prefix& entry : prefixes) {
        if (text.substr(0, entry.text.size()) == entry.text) {
            return {without_underscores(text.substr(entry.text.size())), entry.radix};
        }
    }
    if (text.substr(0, minus_sign.size()) == minus_sign) {
        return {'-' + without_underscores(text.substr(minus_sign.size())), radix::dec};
    }
    return {without_underscores(text), text.substr(0, 1) == "-" ? radix::dec : radix::uns};
}

std::optional<std::uint64_t> read_human_size(std::string_view text, std::uint64_t largest) {
    const human_value value = read_human_value(text);
    const char* end = value.digits.data() + value.digits.size();
    std::uint64_t number = 0;
    const auto read =
        std::from_chars(value.digits.data(), end, number, bases[static_cast<std::size_t>(value.radix)]);
    if (value.digits.empty() || read.ec != std::errc() || read.ptr != end || number > largest) {
        return std::nullopt;
    }
    return number;
}

std::optional<kvrimage::address_range> read_address_range(std::string_view text) {
    const auto [first, last] = ends_of_range(text);
    if (!first || !last || *first > *last) {
        return std::nullopt;
    }
    return kvrimage::address_range{*first, *last};
}

std::string advice_on_range(std::string_view text, std::string_view otherwise) {
    const auto [first, last] = ends_of_range(text);
    if (!first || !last) {
        return std::string(otherwise);
    }
    const std::size_t dots = text.find("..");
    return fmt::format("the range ends before it begins; write {}..{}", text.substr(dots + 2),
                       text.substr(0, dots));
}

} // namespace kvrmem
