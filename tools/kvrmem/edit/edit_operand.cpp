#include "tools/kvrmem/edit/edit_operand.h"

#include "kvrimage/edit/quoted_text.h"
#include "kvrimage/image/word_text.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/tool_error.h"
#include "tools/kvrmem/platform/trimmed_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace kvrmem {

namespace {

using kvrimage::bit_field;
using kvrimage::word;

constexpr std::string_view fixed_prefix = "fixed:";

[[noreturn]] void refuse_operand(const edit_operand& operand, std::string_view what) {
    usage_error(fmt::format("{}: {}", operand.text, what));
}

std::optional<std::uint32_t> bit_number(std::string_view text) {
    const auto number = read_human_size(trimmed(text), std::numeric_limits<std::uint32_t>::max());
    return number ? std::optional(static_cast<std::uint32_t>(*number)) : std::nullopt;
}

/// Parses "7:4" or "7"; nothing for other text.
std::optional<bit_field> bit_field_of(std::string_view text) {
    const std::size_t colon = text.find(':');
    const auto high = bit_number(text.substr(0, colon));
    const auto low = colon == std::string_view::npos ? high : bit_number(text.substr(colon + 1));
    return high && low ? std::optional(bit_field{*high, *low}) : std::nullopt;
}

/// Returns the noun for the bits of a value.
std::string_view holder_of(const edit_operand& operand) {
    return operand.field ? "field" : "word";
}

void require_bits(const edit_operand& operand, std::uint32_t width) {
    if (!operand.field) {
        return;
    }
    const auto [high, low] = *operand.field;
    if (high < low) {
        refuse_operand(operand, fmt::format("the higher bit comes first: [{}:{}]", low, high));
    }
    if (high >= width) {
        refuse_operand(operand, fmt::format("bit {} is beyond words of {} (0 to {})", high,
                                            counted(width, "bit"), width - 1));
    }
}

/// Parses the values of an operand one after the other.
class value_parser {
public:
    value_parser(const edit_operand& of, std::uint32_t value_width, const edit_value_rules& value_rules)
        : operand(of),
          width(value_width),
          rules(value_rules),
          rest(trimmed(of.values)) {}

    edit_values parse() {
        for (bool is_more = true; is_more;) {
            parse_value();
            is_more = skip_comma();
        }
        return std::move(found);
    }

private:
    void parse_value() {
        if (rest.starts_with('"')) {
            parse_text();
            return;
        }
        const std::string_view value = trimmed(rest.substr(0, rules.are_lists ? rest.find(',') : rest.npos));
        if (value.starts_with(fixed_prefix)) {
            parse_fraction(value);
        } else {
            take_number(value);
        }
        rest.remove_prefix(static_cast<std::size_t>(value.data() + value.size() - rest.data()));
    }
    /// Returns whether another value follows.
    bool skip_comma() {
        rest = trimmed(rest);
        if (rest.empty()) {
            return false;
        }
        if (!rules.are_lists || rest[0] != ',') {
            refuse_operand(operand, fmt::format("'{}' follows the text", rest));
        }
        rest = trimmed(rest.substr(1));
        return true;
    }
    void parse_text() {
        using fault = kvrimage::quoted_text_fault;
        const kvrimage::quoted_text text = kvrimage::parse_quoted_text(rest);
        if (text.fault == fault::not_closed) {
            refuse_operand(operand, "the '\"' at the end of the text is missing");
        }
        if (text.fault == fault::bad_escape) {
            refuse_operand(operand, fmt::format("'{}' is not a valid escape; use one of {}",
                                                rest.substr(text.length, 2), kvrimage::quoted_text_escapes));
        }
        if (text.bytes.empty()) {
            refuse_operand(operand, "the text is empty");
        }
        const kvrimage::text_as_words made = kvrimage::words_of_text(text.bytes, width);
        if (made.too_wide) {
            refuse_operand(operand, fmt::format("byte {:02X} of the text does not fit the {} of {}",
                                                static_cast<unsigned char>(text.bytes[*made.too_wide]),
                                                holder_of(operand), counted(width, "bit")));
        }
        found.words.insert(found.words.end(), made.words.begin(), made.words.end());
        rest.remove_prefix(text.length);
    }
    void parse_fraction(std::string_view value) {
        const std::size_t colon = value.find(':', fixed_prefix.size());
        const std::string_view name = value.substr(0, colon);
        const auto format = kvrimage::fixed_point_of_name(name);
        if (!format || colon == std::string_view::npos) {
            refuse_operand(operand, "a fraction is fixed:I.F:NUMBER with I integer and F fraction bits, such "
                                    "as fixed:1.15:0.5");
        }
        if (format->bits() != width) {
            refuse_operand(operand, fmt::format("{} has {}, the {} has {}", name,
                                                counted(format->bits(), "bit"), holder_of(operand), width));
        }
        std::string held;
        const std::string number = with_hyphen(value.substr(colon + 1));
        if (const auto fault = kvrimage::make_fixed_point(number, *format, rules.how, rules.saturate, held)) {
            refuse_fraction(*fault, number, name);
        }
        found.words.push_back(kvrimage::word_of_text(held, width));
        found.has_fraction = true;
    }
    [[noreturn]] void refuse_fraction(kvrimage::fixed_point_fault fault, std::string_view number,
                                      std::string_view name) const {
        if (fault == kvrimage::fixed_point_fault::syntax) {
            refuse_operand(operand, fmt::format("'{}' is not a valid decimal number", number));
        }
        refuse_operand(
            operand,
            fmt::format("{} is out of the range of {}; use --saturate for the nearest word", number, name));
    }
    /// The minus sign (U+2212) is equivalent to "-".
    static std::string with_hyphen(std::string_view number) {
        const bool has_sign = number.starts_with(minus_sign);
        return fmt::format("{}{}", has_sign ? "-" : "",
                           without_underscores(number.substr(has_sign ? minus_sign.size() : 0)));
    }
    void take_number(std::string_view value) {
        const human_value number = read_human_value(value);
        const kvrimage::word_result read = word::parse(number.digits, number.radix, width);
        if (read.fault) {
            refuse_operand(operand,
                           describe(*read.fault, number.digits, number.radix, width, holder_of(operand)) +
                               hint_at_text(value));
        }
        found.words.push_back(*read.value);
    }
    /// The shell removes the quotes of 0x40="v1.2".
    [[nodiscard]] std::string hint_at_text(std::string_view value) const {
        const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
        if (value.empty() || !is_letter(value[0])) {
            return "";
        }
        const std::string_view place = std::string_view(operand.text).substr(0, operand.text.find('=') + 1);
        return fmt::format("; a text has quotes, in a shell '{}\"{}\"'", place, value);
    }

    const edit_operand& operand;
    std::uint32_t width;
    const edit_value_rules& rules;
    std::string_view rest;
    edit_values found;
};

} // namespace

edit_operand parse_edit_operand(std::string_view text, const char* example) {
    const std::size_t equals = text.find('=');
    std::string_view place = trimmed(text.substr(0, equals));
    const std::size_t bracket = std::min(place.find('['), place.size());
    std::optional<bit_field> field;
    bool is_operand = equals != std::string_view::npos;
    if (bracket != place.size()) {
        field = place.ends_with(']') ? bit_field_of(place.substr(bracket + 1, place.size() - bracket - 2))
                                     : std::nullopt;
        is_operand = is_operand && field;
        place = trimmed(place.substr(0, bracket));
    }
    const auto addresses = read_address_range(place);
    if (!is_operand || !addresses) {
        const std::string form = fmt::format("expected {}", example);
        usage_error(fmt::format("'{}': {}", text, is_operand ? advice_on_range(place, form) : form));
    }
    return {std::string(text), *addresses, field, std::string(text.substr(equals + 1))};
}

edit_values values_of(const edit_operand& operand, std::uint32_t width, const edit_value_rules& rules) {
    require_bits(operand, width);
    return value_parser(operand, operand.value_width(width), rules).parse();
}

} // namespace kvrmem
