#include "kvr/numeric/fixed_point.h"
#include "kvr/numeric/radix_conversion.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/numbers/decimal_fraction.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <exception>
#include <string>

namespace kvrmem {

namespace {

[[noreturn]] void refuse(const std::string& message) {
    throw tool_error(exit_code::wrong_usage, message);
}

/// The number that the person gave.
struct given_number {
    std::string digits;
    word_radix radix;
};

/// With --from the digits are of that radix; the prefix that goes with it may stand before them.
given_number number_of(const arguments& given) {
    const std::string& text = given.files[0];
    const human_value value = read_human_value(text);
    if (value.digits.empty()) {
        refuse(fmt::format("value '{}' has no digit", text));
    }
    const bool has_prefix = value.radix != RADIX_DEC && value.radix != RADIX_UNS;
    if (!given.from_radix) {
        return {value.digits, {value.radix}};
    }
    const bool agrees = !has_prefix || value.radix == given.from_radix->radix;
    // "0B1" is a hexadecimal number, too.
    if (!agrees && (given.from_radix->radix != RADIX_HEX || value.radix != RADIX_BIN)) {
        refuse(fmt::format("{} is a number in {}, --from says otherwise", text, radix_title(value.radix)));
    }
    return {agrees ? value.digits : without_underscores(text), *given.from_radix};
}

std::uint32_t bits_of(const word_radix& radix) {
    return radix.integer_bits + radix.fraction_bits;
}

/// Turns a fixed-point number into the integer that its bits are.
void scale_to_integer(given_number& number) {
    const std::string text = number.digits;
    if (text.find_first_not_of("0123456789.", text[0] == '-' ? 1 : 0) != std::string::npos ||
        std::count(text.begin(), text.end(), '.') > 1 ||
        text.find_first_of("0123456789") == std::string::npos) {
        refuse(fmt::format("'{}' is no decimal fraction", text));
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
        refuse(fmt::format("{} is no multiple of 2^-{}; the next one towards zero is {}", text,
                           number.radix.fraction_bits, nearest));
    }
    number.digits.erase(std::min(point, number.digits.size()));
    number.radix.radix = RADIX_DEC;
}

/// Bits that the digits of @p number say it has: all of them where a digit stands for bits, else as few as
/// the value needs.
std::uint32_t natural_width(const given_number& number) {
    const auto digits = static_cast<std::uint32_t>(number.digits.size());
    switch (number.radix.radix) {
    case RADIX_BIN:
        return digits;
    case RADIX_OCT:
        return 3 * digits;
    case RADIX_HEX:
        return 4 * digits;
    default: {
        std::string word;
        const auto error = make_word(number.digits, number.radix.radix, 1, word);
        return error && error->bits_needed > 0 ? static_cast<std::uint32_t>(error->bits_needed) : 1;
    }
    }
}

/// A number as bits, and whether its first bit is a sign.
struct number_word {
    std::string word;
    std::uint32_t width = 0;
    bool has_sign = false;
};

number_word word_of(const arguments& given, given_number number) {
    const bool is_fixed = number.radix.radix == RADIX_FIXED_POINT;
    const word_radix& fixed = is_fixed ? number.radix : given.to_radix.value_or(word_radix{});
    const std::uint32_t width = given.width.value_or(fixed.radix == RADIX_FIXED_POINT ? bits_of(fixed) : 0);
    if (is_fixed) {
        scale_to_integer(number);
    }
    number_word result;
    result.width = width != 0 ? width : std::max(natural_width(number), 1U);
    result.has_sign = width != 0 || number.radix.radix == RADIX_DEC;
    const auto error = make_word(number.digits, number.radix.radix, result.width, result.word);
    if (error) {
        refuse(describe(*error, is_fixed ? given.files[0] : number.digits, number.radix.radix, result.width));
    }
    return result;
}

/// "" when don't-care bits cannot be shown in that radix. Without a sign bit, signed decimal is unsigned.
std::string shown(const number_word& number, word_radix radix) {
    require_fitting(radix, number.width);
    if (radix.radix == RADIX_DEC && !number.has_sign) {
        radix.radix = RADIX_UNS;
    }
    std::string text;
    if (!show_word(number.word, radix, number.width, text)) {
        text.clear();
    }
    return text;
}

std::string require_shown(const number_word& number, const word_radix& radix) {
    std::string text = shown(number, radix);
    if (text.empty()) {
        refuse("the don't-care bits of the number cannot be shown in that radix");
    }
    return text;
}

std::string in_all_radixes(const number_word& number) {
    constexpr std::array<KVR_MEMORY_RADIXES, 5> radixes = {RADIX_BIN, RADIX_OCT, RADIX_DEC, RADIX_UNS,
                                                           RADIX_HEX};
    std::string text = fmt::format("bits  {}\n", number.width);
    for (const KVR_MEMORY_RADIXES radix : radixes) {
        const std::string digits = shown(number, {radix});
        text += fmt::format("{}   {}\n", radix_title(radix), digits.empty() ? "-" : digits.c_str());
    }
    return text;
}

/// The library takes a format without fraction bits for none at all.
void require_library_format(const word_radix& fixed) {
    if (fixed.fraction_bits == 0) {
        refuse(fmt::format("fixed:{}.0 has no fraction bit, and the library's conversion needs one; use dec",
                           fixed.integer_bits));
    }
}

void require_one_fixed_point(const word_radix& from, const word_radix& to) {
    if (from.radix == RADIX_FIXED_POINT && to.radix == RADIX_FIXED_POINT &&
        (from.integer_bits != to.integer_bits || from.fraction_bits != to.fraction_bits)) {
        refuse(
            fmt::format("--from fixed:{}.{} and --to fixed:{}.{} differ, but --library converts within one "
                        "fixed-point format",
                        from.integer_bits, from.fraction_bits, to.integer_bits, to.fraction_bits));
    }
}

/// What the library's conversion makes of the text, with the digit order and the cutting that it has.
std::string by_the_library(const arguments& given, const given_number& number) {
    if (!given.to_radix) {
        refuse("--library needs --to RADIX");
    }
    const word_radix& to = *given.to_radix;
    require_one_fixed_point(number.radix, to);
    const word_radix& fixed = to.radix == RADIX_FIXED_POINT ? to : number.radix;
    std::string result;
    bool converted = false;
    if (fixed.radix == RADIX_FIXED_POINT) {
        require_library_format(fixed);
        const std::string bits = fmt::format("{}.{}", fixed.integer_bits, fixed.fraction_bits);
        converted =
            kvr_radix_conversion_fixed_point(number.digits, &result, number.radix.radix, to.radix, bits);
    } else {
        converted = kvr_radix_conversion(number.digits, &result, number.radix.radix, to.radix,
                                         given.width.value_or(0));
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
        return exit_code::fine;
    }
    const number_word word = word_of(given, number);
    if (given.to_radix) {
        print(require_shown(word, *given.to_radix) + "\n");
    } else {
        print(in_all_radixes(word));
    }
    return exit_code::fine;
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
    "With --width, signed decimal (dec) is two's complement of that width; without\n"
    "it a number has as many bits as its digits say, and no sign but '-'.\n"
    "fixed:I.F is two's complement with F of its I+F bits behind the point.\n"
    "--library shows what the library's own conversion gives, which other\n"
    "programs rely on: decimal digits reversed, ones' complement, higher bits cut.\n",
    1,
    1,
    radix_options,
    convert_number};

} // namespace kvrmem
