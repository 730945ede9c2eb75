#include "kvr/numeric/fixed_point.h"
#include "kvr/numeric/radix_conversion.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/numbers/decimal_fraction.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::radix;
using kvrimage::word;

/// The number given by the user.
struct given_number {
    std::string digits;
    word_radix radix;
};

/// With --from, the digits are of that radix and may have its prefix.
given_number number_of(const arguments& given) {
    const std::string& text = given.files[0];
    const human_value value = read_human_value(text);
    if (value.digits.empty()) {
        usage_error(fmt::format("value '{}' has no digit", text));
    }
    const bool has_prefix = value.radix != radix::dec && value.radix != radix::uns;
    if (!given.from_radix) {
        return {value.digits, {value.radix}};
    }
    const bool agrees = !has_prefix || word_radix{value.radix} == *given.from_radix;
    // "0B1" is also a hexadecimal number.
    if (!agrees && (given.from_radix->digits != radix::hex || value.radix != radix::bin)) {
        usage_error(fmt::format("{} is a number in {}, but --from states another radix", text,
                                kvrimage::title_of(value.radix)));
    }
    return {agrees ? value.digits : without_underscores(text), *given.from_radix};
}

/// Converts a fixed-point number to the integer with the same bits.
void scale_to_integer(given_number& number) {
    const std::string text = number.digits;
    if (text.find_first_not_of("0123456789.", text[0] == '-' ? 1 : 0) != std::string::npos ||
        std::count(text.begin(), text.end(), '.') > 1 ||
        text.find_first_of("0123456789") == std::string::npos) {
        usage_error(fmt::format("'{}' is not a valid decimal fraction", text));
    }
    for (std::uint32_t bit = 0; bit < number.radix.fraction_bits; ++bit) {
        double_it(number.digits);
    }
    const std::size_t point = number.digits.find('.');
    if (point != std::string::npos && number.digits.find_first_not_of('0', point + 1) != std::string::npos) {
        std::string nearest = number.digits.substr(0, point);
        for (std::uint32_t bit = 0; bit < number.radix.fraction_bits; ++bit) {
            halve(nearest);
        }
        usage_error(fmt::format("{} is not a multiple of 2^-{}; the next one towards zero is {}", text,
                                number.radix.fraction_bits, nearest));
    }
    number.digits.erase(std::min(point, number.digits.size()));
    number.radix = {radix::dec};
}

/// Returns the bits of @p number by its digits: all of them if each digit stands for bits, else as few as the
/// value needs.
std::uint32_t natural_width(const given_number& number) {
    const auto digits = static_cast<std::uint32_t>(number.digits.size());
    switch (number.radix.digits) {
    case radix::bin:
        return digits;
    case radix::oct:
        return 3 * digits;
    case radix::hex:
        return 4 * digits;
    case radix::dec:
    case radix::uns:
        break;
    }
    const auto fault = word::parse(number.digits, number.radix.digits, 1).fault;
    return fault && fault->bits_needed > 0 ? static_cast<std::uint32_t>(fault->bits_needed) : 1;
}

/// A number as bits, and whether its first bit is a sign.
struct number_word {
    word bits;
    bool has_sign = false;
};

number_word word_of(const arguments& given, given_number number) {
    const bool is_fixed = number.radix.is_fixed_point();
    const std::uint32_t fixed_bits =
        is_fixed ? number.radix.bits() : given.to_radix.value_or(word_radix{}).bits();
    if (is_fixed) {
        scale_to_integer(number);
    }
    const std::uint32_t said = given.width.value_or(fixed_bits);
    const std::uint32_t width = said != 0 ? said : std::max(natural_width(number), 1U);
    kvrimage::word_result read = word::parse(number.digits, number.radix.digits, width);
    if (read.fault) {
        usage_error(
            describe(*read.fault, is_fixed ? given.files[0] : number.digits, number.radix.digits, width));
    }
    return {*std::move(read.value), said != 0 || number.radix.digits == radix::dec};
}

/// Returns nothing if the radix cannot represent don't-care bits. Without a sign bit, signed decimal is shown
/// as unsigned.
std::optional<std::string> shown(const number_word& number, word_radix in) {
    require_fitting(in, number.bits.width());
    if (in == word_radix{radix::dec} && !number.has_sign) {
        in = {radix::uns};
    }
    return shown(number.bits, in);
}

std::string require_shown(const number_word& number, const word_radix& in) {
    std::optional<std::string> text = shown(number, in);
    if (!text) {
        usage_error("the don't-care bits of the number cannot be shown in that radix");
    }
    return *std::move(text);
}

std::string in_all_radixes(const number_word& number) {
    std::string text = fmt::format("bits  {}\n", number.bits.width());
    for (const radix each : {radix::bin, radix::oct, radix::dec, radix::uns, radix::hex}) {
        text += fmt::format("{}   {}\n", kvrimage::title_of(each), shown(number, {each}).value_or("-"));
    }
    return text;
}

/// Returns the radix constant of the library.
KVR_MEMORY_RADIXES library_radix(const word_radix& one) {
    // In the order of kvrimage::radix.
    constexpr std::array names = {RADIX_BIN, RADIX_OCT, RADIX_DEC, RADIX_UNS, RADIX_HEX};
    return one.is_fixed_point() ? RADIX_FIXED_POINT : names[static_cast<std::size_t>(one.digits)];
}

/// The library ignores a fixed-point format without fraction bits.
void require_library_format(const word_radix& fixed) {
    if (fixed.fraction_bits == 0) {
        usage_error(
            fmt::format("fixed:{}.0 has no fraction bit, and the library's conversion needs one; use dec",
                        fixed.integer_bits));
    }
}

void require_one_fixed_point(const word_radix& from, const word_radix& to) {
    if (from.is_fixed_point() && to.is_fixed_point() && from != to) {
        usage_error(
            fmt::format("--from fixed:{}.{} and --to fixed:{}.{} differ, but --library converts within one "
                        "fixed-point format",
                        from.integer_bits, from.fraction_bits, to.integer_bits, to.fraction_bits));
    }
}

/// Returns the result of the library's conversion, with its digit order and truncation.
std::string by_the_library(const arguments& given, const given_number& number) {
    if (!given.to_radix) {
        usage_error("--library needs --to RADIX");
    }
    const word_radix& to = *given.to_radix;
    require_one_fixed_point(number.radix, to);
    const word_radix& fixed = to.is_fixed_point() ? to : number.radix;
    const KVR_MEMORY_RADIXES from_name = library_radix(number.radix);
    const KVR_MEMORY_RADIXES to_name = library_radix(to);
    std::string result;
    bool converted = false;
    if (fixed.is_fixed_point()) {
        require_library_format(fixed);
        const std::string bits = fmt::format("{}.{}", fixed.integer_bits, fixed.fraction_bits);
        converted = kvr_radix_conversion_fixed_point(number.digits, &result, from_name, to_name, bits);
    } else {
        converted = kvr_radix_conversion(number.digits, &result, from_name, to_name, given.width.value_or(0));
    }
    if (!converted) {
        throw tool_error(exit_code::negative,
                         fmt::format("the library's conversion reports a failure and gives '{}'", result));
    }
    return result;
}

exit_code convert_number(const arguments& given) {
    const given_number number = number_of(given);
    if (given.library) {
        print(by_the_library(given, number) + "\n");
        return exit_code::success;
    }
    const number_word read = word_of(given, number);
    if (given.to_radix) {
        print(require_shown(read, *given.to_radix) + "\n");
    } else {
        print(in_all_radixes(read));
    }
    return exit_code::success;
}

constexpr std::array radix_options = {option_id::from_radix, option_id::to_radix, option_id::width,
                                      option_id::library};

} // namespace

const command radix_command = {
    "radix",
    "VALUE",
    "Convert one number from radix to radix, exactly.",
    "  $ kvrmem radix 0x1F\n"
    "  $ kvrmem radix -5 --width 8 --to hex\n"
    "  $ kvrmem radix FB --from hex --to dec --width 8\n"
    "  $ kvrmem radix 0.625 --from fixed:1.7 --to hex\n",
    "With --width, signed decimal (dec) is two's complement of that width; without it a\n"
    "number has as many bits as its digits need, and no sign but '-'. fixed:I.F is two's\n"
    "complement with F of its I+F bits after the point. --library shows the result of the\n"
    "library's own conversion, which other programs rely on: decimal digits reversed,\n"
    "ones' complement, higher bits cut.\n",
    1,
    1,
    radix_options,
    convert_number};

} // namespace kvrmem
