// The conversion of words against a second one, digit by digit, and the exact one against its own way back.

#include "kvr/numeric/radix_conversion.h"

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/resource_limits.h"
#include "kvr/numeric/exact_value.h"
#include "tests/numeric/literal_radix_conversion.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <string>

namespace kvr_fuzz {

namespace {

using literal_radix_conversion::outcome;

/// Those that exist, those that no conversion knows, and one that nobody knows.
constexpr std::array<KVR_MEMORY_RADIXES, 8> all_radixes = {
    RADIX_BIN, RADIX_DEC,         RADIX_UNS,  RADIX_HEX,
    RADIX_OCT, RADIX_FIXED_POINT, RADIX_NONE, static_cast<KVR_MEMORY_RADIXES>(9)};
constexpr std::size_t exact_radixes = 5; ///< the first ones, which the exact conversion takes

struct word_conversion {
    std::size_t from;
    std::size_t to;
    unsigned width;
    std::string text;
};

/// What the library makes of it, as the second conversion tells it.
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

/// The same with one text for input and output.
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

/// The fast ways of the exact conversion against its plain one, and the word against itself on its way back.
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
    expect(fast_error == plain_error, "the fast exact conversion tells another error");
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

} // namespace

void try_radix_conversion(std::string_view input) {
    const resource_limits limits(input.size());
    input_bytes settings(input);
    const std::size_t from = settings.number() % all_radixes.size();
    const std::size_t to = settings.number() % all_radixes.size();
    const unsigned width = settings.number() + (settings.number() % 4) * 256;
    const word_conversion asked{from, to, width, std::string(settings.rest())};

    const auto from_radix = static_cast<unsigned>(all_radixes.at(from));
    const auto to_radix = static_cast<unsigned>(all_radixes.at(to));
    const outcome expected = literal_radix_conversion::convert(asked.text, from_radix, to_radix, asked.width);
    expect(converted(asked) == expected, "the word is another one than digit by digit");
    expect(converted_in_place(asked) == expected, "the word is another one when it is converted in place");
    expect(bits_of(asked) == literal_bits_of(asked), "the bits are other ones than digit by digit");
    try_exact_conversion(asked);
}

} // namespace kvr_fuzz
