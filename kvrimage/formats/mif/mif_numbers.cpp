#include "kvrimage/formats/mif/mif_numbers.h"

#include "kvr/memory/memory_state.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/util/letter_case.h"
#include "kvrimage/formats/mif/mif_tokens.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

namespace kvrimage {

namespace {

struct mif_radix_name {
    std::string_view name;
    radix meant;
};

constexpr std::array<mif_radix_name, 11> mif_radix_names = {{
    {"BIN", radix::bin},
    {"BINARY", radix::bin},
    {"OCT", radix::oct},
    {"OCTAL", radix::oct},
    {"DEC", radix::dec},
    {"DECIMAL", radix::dec},
    {"UNS", radix::uns},
    {"UNSIGNED", radix::uns},
    {"UNSIGNED_DEC", radix::uns},
    {"HEX", radix::hex},
    {"HEXADECIMAL", radix::hex},
}};

/// In the order in which the library searches a line for them.
constexpr std::array<mif_radix_name, 5> kvr_radix_names = {{{"BIN", radix::bin},
                                                            {"DEC", radix::dec},
                                                            {"UNS", radix::uns},
                                                            {"HEX", radix::hex},
                                                            {"OCT", radix::oct}}};

/// The end of a prefix and its radix.
struct radix_prefix {
    std::string_view mark;
    radix base;
};
constexpr std::array<radix_prefix, 9> radix_prefixes = {{{"0x", radix::hex},
                                                         {"$", radix::hex},
                                                         {"&h", radix::hex},
                                                         {"'h", radix::hex},
                                                         {"0b", radix::bin},
                                                         {"'b", radix::bin},
                                                         {"0o", radix::oct},
                                                         {"'o", radix::oct},
                                                         {"'d", radix::uns}}};

std::size_t letters_that_differ(std::string_view left, std::string_view right) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        number += left[i] != right[i] ? 1U : 0U;
    }
    return number;
}

} // namespace

mif_number mif_number_of(std::string_view text, radix digits_radix) noexcept {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const unsigned base = kvr::radix_base(kvr_radix(digits_radix));
    mif_number result;
    const bool has_sign = text.starts_with('-');
    text.remove_prefix(has_sign ? 1 : 0);
    result.is_number = !text.empty();
    for (const char character : text) {
        const unsigned digit = kvr::digit_value(character);
        result.is_number = result.is_number && digit < base;
        result.value = result.value > (largest - digit) / base ? largest : result.value * base + digit;
    }
    result.is_negative = result.is_number && has_sign && result.value != 0;
    return result;
}

std::optional<prefixed_number> prefixed_number_of(std::string_view text) noexcept {
    const std::size_t apostrophe = text.find('\'');
    const bool has_size = apostrophe != std::string_view::npos &&
                          mif_number_of(text.substr(0, apostrophe), radix::uns).is_number;
    text.remove_prefix(has_size ? apostrophe : 0);
    for (const radix_prefix& each : radix_prefixes) {
        const std::string_view digits = text.substr(std::min(each.mark.size(), text.size()));
        if (kvr::equal_ignoring_case(text.substr(0, each.mark.size()), each.mark) &&
            !digits.starts_with('-') && mif_number_of(digits, each.base).is_number) {
            return prefixed_number{digits, each.base};
        }
    }
    return std::nullopt;
}

std::optional<radix> mif_radix_of(std::string_view name) noexcept {
    const auto* const found = std::ranges::find_if(mif_radix_names, [name](const mif_radix_name& each) {
        return kvr::equal_ignoring_case(name, each.name);
    });
    return found != mif_radix_names.end() ? std::optional(found->meant) : std::nullopt;
}

std::optional<radix> kvr_radix_of(std::string_view text) {
    const std::string upper = kvr::to_upper_case(text);
    const auto* const found = std::ranges::find_if(
        kvr_radix_names, [&upper](const mif_radix_name& each) { return kvr::contains(upper, each.name); });
    return found != kvr_radix_names.end() ? std::optional(found->meant) : std::nullopt;
}

std::string_view nearest_radix_name(std::string_view name) {
    const std::string upper = kvr::to_upper_case(name.substr(0, 4));
    for (const mif_radix_name& each : kvr_radix_names) {
        if (upper.size() == each.name.size() &&
            (letters_that_differ(upper, each.name) == 1 ||
             std::is_permutation(upper.begin(), upper.end(), each.name.begin()))) {
            return each.name;
        }
    }
    const std::optional<radix> inside = kvr_radix_of(name);
    return inside ? title_of(*inside) : std::string_view();
}

} // namespace kvrimage
