// Fixed-point texts, compared with a second implementation.

#include "kvr/numeric/fixed_point.h"

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/plain_fixed_point.h"
#include "fuzz/resource_limits.h"
#include "tests/numeric/literal_radix_conversion.h"

#include <array>
#include <stdexcept>
#include <string>

namespace kvr_fuzz {

namespace {

constexpr std::array<KVR_MEMORY_RADIXES, 8> fixed_radixes = {
    RADIX_FIXED_POINT, RADIX_BIN, RADIX_HEX,  RADIX_DEC,
    RADIX_UNS,         RADIX_OCT, RADIX_NONE, static_cast<KVR_MEMORY_RADIXES>(9)};

constexpr const char* untouched_text = "untouched";
constexpr std::int64_t bits_worth_trying = 256; ///< longer texts take long and show nothing new

struct fixed_outcome {
    bool result = false;
    std::string output = untouched_text;
    bool out_of_range = false;

    friend bool operator==(const fixed_outcome&, const fixed_outcome&) = default;
};

struct fixed_conversion {
    KVR_MEMORY_RADIXES from;
    KVR_MEMORY_RADIXES to;
    std::string format;
    std::string text;

    [[nodiscard]] bool has(KVR_MEMORY_RADIXES radix) const { return from == radix || to == radix; }
};

fixed_outcome fixed_converted(const fixed_conversion& asked) {
    fixed_outcome found;
    try {
        found.result =
            kvr_radix_conversion_fixed_point(asked.text, &found.output, asked.from, asked.to, asked.format);
    } catch (const std::out_of_range&) {
        found.out_of_range = true;
    }
    return found;
}

/// The same conversion, step by step. Throws std::out_of_range.
fixed_outcome convert_plainly(const fixed_conversion& asked) {
    using namespace literal_radix_conversion;
    const auto format = plain_fixed_point::of(asked.format);
    std::string bits;
    if (asked.from != RADIX_FIXED_POINT) {
        bits = to_binary(asked.text, asked.from);
    } else if (format) {
        if (asked.text.empty()) {
            throw std::out_of_range("no first character");
        }
        bits = format->bits_of(asked.text);
    }
    if (asked.to != RADIX_FIXED_POINT) {
        return {true, from_binary(bits, asked.to)};
    }
    if (!format) {
        return {};
    }
    if (bits.empty()) {
        throw std::out_of_range("no first bit");
    }
    const plain_fixed_point::reading reading = format->fraction_of(bits);
    return {reading.uniform, reading.text};
}

fixed_outcome expected_of(const fixed_conversion& asked) {
    if (asked.has(RADIX_NONE)) {
        return {};
    }
    try {
        if (!asked.has(RADIX_FIXED_POINT)) {
            const auto plain = literal_radix_conversion::convert(asked.text, asked.from, asked.to, 0);
            return plain.output ? fixed_outcome{plain.result, *plain.output}
                                : fixed_outcome{.out_of_range = true};
        }
        return convert_plainly(asked);
    } catch (const std::out_of_range&) {
        return {.out_of_range = true};
    }
}

std::string expected_binary_format(const std::string& text) {
    if (text.size() > 2 && text.compare(0, 2, "0b") == 0) {
        return text.substr(2);
    }
    if (text.size() > 2 && text.compare(0, 2, "0x") == 0) {
        return literal_radix_conversion::to_binary(text.substr(2), RADIX_HEX);
    }
    return literal_radix_conversion::to_binary(text, RADIX_UNS);
}

bool takes_long(const fixed_conversion& asked) {
    const auto format = plain_fixed_point::of(asked.format);
    return format && format->word_bits() > bits_worth_trying;
}

} // namespace

void try_fixed_point(std::string_view input) {
    const resource_limits limits(input.size());
    input_bytes settings(input);
    const KVR_MEMORY_RADIXES from = settings.choose(fixed_radixes);
    const KVR_MEMORY_RADIXES to = settings.choose(fixed_radixes);
    const std::string format = settings.line();
    const fixed_conversion asked{from, to, format, std::string(settings.rest())};
    if (takes_long(asked)) {
        return;
    }
    expect(fixed_converted(asked) == expected_of(asked), "the conversion is another one than step by step");
    std::string bits;
    expect(kvr_convert_numeric_string_to_binary_format(asked.text, bits), "a numeric string was refused");
    expect(bits == expected_binary_format(asked.text), "a numeric string has other bits");
}

} // namespace kvr_fuzz
