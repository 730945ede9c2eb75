// Converts words and compares the results with a second, digit-by-digit conversion, and the exact conversion
// with its own inverse.

#include "kvr/numeric/radix_conversion.h"

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/resource_limits.h"
#include "kvr/numeric/exact_value.h"
#include "tests/numeric/literal_radix_conversion.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <string>

namespace kvr_fuzz {

namespace {

using literal_radix_conversion::outcome;

/// The supported radixes, those that no conversion supports, and an unknown value.
constexpr std::array<KVR_MEMORY_RADIXES, 8> all_radixes = {
    RADIX_BIN, RADIX_DEC,         RADIX_UNS,  RADIX_HEX,
    RADIX_OCT, RADIX_FIXED_POINT, RADIX_NONE, static_cast<KVR_MEMORY_RADIXES>(9)};
constexpr std::size_t exact_radixes = 5; ///< the exact conversion supports the first ones

struct word_conversion {
    std::size_t from;
    std::size_t to;
    unsigned width;
    std::string text;
};

/// The result of the library, in the form of the second conversion.
outcome converted(const word_conversion& asked) {
    const std::string before = "before";
    std::string output = before;
    try {
        const bool result = kvr_radix_conversion(asked.text, &output, all_radixes.at(asked.from),
                                                 all_radixes.at(asked.to), asked.width);
        return {result, output};
    } catch (const std::out_of_range&) {
        expect(output == before, "an exception has left a changed output");
        return {false, std::nullopt};
    }
}

/// The same with one text as input and output.
outcome converted_in_place(const word_conversion& asked) {
    std::string text = asked.text;
    try {
        const bool result = kvr_radix_conversion(text, &text, all_radixes.at(asked.from),
                                                 all_radixes.at(asked.to), asked.width);
        return {result, text};
    } catch (const std::out_of_range&) {
        return {false, std::nullopt};
    }
}

std::optional<std::string> bits_of(const word_conversion& asked) {
    try {
        return convert_to_binary_string(asked.text, static_cast<int>(all_radixes.at(asked.from)));
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

std::optional<std::string> literal_bits_of(const word_conversion& asked) {
    try {
        return literal_radix_conversion::to_binary(asked.text,
                                                   static_cast<unsigned>(all_radixes.at(asked.from)));
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

/// Compares the fast paths of the exact conversion with its exact path, and the word with its inverse.
void try_exact_conversion(const word_conversion& asked) {
    if (asked.from >= exact_radixes || asked.to >= exact_radixes || asked.width == 0) {
        return;
    }
    const KVR_MEMORY_RADIXES from = all_radixes.at(asked.from);
    const KVR_MEMORY_RADIXES to = all_radixes.at(asked.to);
    std::string fast;
    const auto fast_error = kvr::append_exact_word(fast, asked.text, {from, to, asked.width});
    std::string plain;
    const auto plain_error = kvr::append_exact_word_plainly(plain, asked.text, {from, to, asked.width});
    expect(fast_error == plain_error, "the fast exact conversion gives another error");
    expect(fast == plain, "the fast exact conversion gives another word");
    if (fast_error) {
        return;
    }
    std::string bits;
    std::string bits_again;
    expect(!kvr::exact_bits(asked.text, from, asked.width, bits), "a word that was converted has no bits");
    expect(!kvr::exact_bits(fast, to, asked.width, bits_again), "what was converted is no word");
    expect(bits == bits_again, "an exact word is another one in another radix");
}

/// The number of bits that the digit-by-digit conversion would process.
std::size_t bits_of_literal(const word_conversion& asked) {
    const KVR_MEMORY_RADIXES from = all_radixes.at(asked.from);
    const std::size_t digit_bits = from == RADIX_BIN ? 1 : from == RADIX_OCT ? 3 : 4;
    return std::max<std::size_t>(asked.text.size() * digit_bits, asked.width);
}

/// True if the decimal arithmetic takes long: it takes quadratic time.
bool takes_long(const word_conversion& asked) {
    constexpr std::size_t few_bits = 200;
    const auto is_decimal = [](KVR_MEMORY_RADIXES radix) { return radix == RADIX_DEC || radix == RADIX_UNS; };
    return (is_decimal(all_radixes.at(asked.from)) || is_decimal(all_radixes.at(asked.to))) &&
           bits_of_literal(asked) > few_bits;
}

std::string unsigned_text_of(const std::string& text, KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to) {
    std::string output;
    expect(kvr_radix_conversion(text, &output, from, to, 0), "a conversion between known radixes failed");
    return output;
}

/// A number of any length, from the bits of the text to decimal and back.
void try_long_decimal(const std::string& text) {
    std::string bits = "0";
    for (const char character : text) {
        bits += (static_cast<unsigned char>(character) & 1U) != 0 ? '1' : '0';
        bits += (static_cast<unsigned char>(character) & 2U) != 0 ? '1' : '0';
        bits += (static_cast<unsigned char>(character) & 4U) != 0 ? '1' : '0';
    }
    std::string decimal = unsigned_text_of(bits, RADIX_BIN, RADIX_UNS);
    std::reverse(decimal.begin(), decimal.end()); // the least significant digit comes first
    bits.erase(0, std::min(bits.find('1'), bits.size() - 1));
    expect(unsigned_text_of(decimal, RADIX_UNS, RADIX_BIN) == bits,
           "a long number is another one in decimal");
}

void compare_with_literal(const word_conversion& asked) {
    const auto from = static_cast<unsigned>(all_radixes.at(asked.from));
    const auto to = static_cast<unsigned>(all_radixes.at(asked.to));
    const outcome expected = literal_radix_conversion::convert(asked.text, from, to, asked.width);
    expect(converted(asked) == expected, "the word is another one than digit by digit");
    expect(converted_in_place(asked) == expected, "the word is another one when it is converted in place");
    expect(bits_of(asked) == literal_bits_of(asked), "the bits are other ones than digit by digit");
}

} // namespace

void try_radix_conversion(std::string_view input) {
    const resource_limits limits(input.size());
    input_bytes settings(input);
    const std::size_t from = settings.number() % all_radixes.size();
    const std::size_t to = settings.number() % all_radixes.size();
    const unsigned width = settings.number() + (settings.number() % 4) * 256;
    const word_conversion asked{from, to, width, std::string(settings.rest())};

    if (!takes_long(asked)) {
        compare_with_literal(asked);
    } else {
        expect(converted(asked) == converted_in_place(asked),
               "the word is another one when it is converted in place");
        try_long_decimal(asked.text);
    }
    try_exact_conversion(asked);
}

} // namespace kvr_fuzz
