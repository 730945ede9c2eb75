// Tests functions on all of their inputs: numbers of eight decimal digits, pairs of hexadecimal digits, and
// addresses of up to sixteen bits at the beginning of a line of a MIF file.
//
// Prints a line for each subject. The exit code is 1 after the first wrong result.

#include "kvr/memory/io/predicted_address.h"
#include "kvr/numeric/digit_blocks.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

[[noreturn]] void fail(const char* subject, std::uint64_t input) {
    std::printf("%s: not as it should be for %llu\n", subject, static_cast<unsigned long long>(input));
    std::exit(1);
}

void report(const char* subject, std::uint64_t inputs) {
    std::printf("%s: right for all of %llu inputs\n", subject, static_cast<unsigned long long>(inputs));
}

/// Counts digit by digit.
class counter {
public:
    counter(unsigned number_base, std::size_t digits, bool lower_case)
        : base(number_base),
          letters(lower_case ? 'a' : 'A'),
          text(digits, '0') {}

    void step() {
        for (std::size_t at = text.size(); at-- > 0;) {
            const unsigned value = value_of(text[at]) + 1;
            text[at] = digit_of(value % base);
            if (value < base) {
                return;
            }
        }
    }
    [[nodiscard]] const std::string& digits() const { return text; }

private:
    [[nodiscard]] static unsigned value_of(char digit) {
        return static_cast<unsigned>(digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10);
    }
    [[nodiscard]] char digit_of(unsigned value) const {
        return static_cast<char>(value < 10 ? '0' + value : static_cast<unsigned>(letters) + value - 10);
    }

    unsigned base;
    char letters;
    std::string text;
};

void try_decimal_blocks() {
    counter number(10, kvr::block_digits, false);
    for (std::uint64_t value = 0; value < kvr::decimal_block; ++value, number.step()) {
        const std::uint64_t block = kvr::load_eight(number.digits().data());
        if (kvr::decimal_block_value(block) != value ||
            kvr::reversed_decimal_block(value) != kvr::reversed_bytes(block)) {
            fail("numbers of eight decimal digits", value);
        }
    }
    report("numbers of eight decimal digits", kvr::decimal_block);
}

void try_hexadecimal_pairs() {
    counter number(16, 2, false);
    for (std::uint64_t value = 0; value < 256; ++value, number.step()) {
        std::array<char, 2> pair{};
        kvr::write_hex_pair(pair.data(), value);
        if (std::string_view(pair.data(), 2) != number.digits()) {
            fail("pairs of hexadecimal digits", value);
        }
    }
    report("pairs of hexadecimal digits", 256);
}

struct address_style {
    unsigned base;
    std::size_t digits;
    bool lower_case;
    std::string before;
    std::string after;
};

/// The beginnings of all lines in this style, up to the values.
std::vector<std::string> lines_of(const address_style& style) {
    std::uint64_t count = 1;
    for (std::size_t digit = 0; digit < style.digits; ++digit) {
        count *= style.base;
    }
    counter number(style.base, style.digits, style.lower_case);
    std::vector<std::string> lines;
    for (std::uint64_t address = 0; address < count; ++address, number.step()) {
        lines.push_back(style.before + number.digits() + style.after);
    }
    return lines;
}

/// The prediction must be the line of its address, up to the last address that the digits can represent.
/// After it, nothing may be predicted.
bool is_right(const kvr::predicted_address& predicted, const std::vector<std::string>& lines) {
    if (predicted.address() >= lines.size()) {
        return predicted.size() == 0;
    }
    std::array<char, kvr::predicted_address::readable> line{};
    const std::string& text = lines[predicted.address()];
    text.copy(line.data(), text.size());
    return predicted.size() == text.size() && predicted.matches(line.data());
}

std::uint64_t try_addresses(const address_style& style) {
    const std::vector<std::string> lines = lines_of(style);
    const std::uint64_t last = lines.size() - 1;
    const auto learn = [&](kvr::predicted_address& predicted, std::uint64_t address, std::uint64_t count) {
        const std::string_view before = lines[address];
        predicted.learn(before, before.substr(style.before.size(), style.digits), style.base, address, count);
    };
    std::uint64_t tried = 0;
    for (std::uint64_t address = 0; address <= last; ++address) {
        for (const std::uint64_t count : {1U, 2U, 3U, 7U, 8U, 9U, 10U, 15U, 16U, 17U, 64U, 99U, 4097U}) {
            // The last line shows the case of the letters; addresses continue modulo 2^64.
            kvr::predicted_address predicted;
            learn(predicted, 0, last);
            learn(predicted, last, address - last);
            learn(predicted, address, count);
            for (int line = 0; line < 3; ++line) {
                ++tried;
                if (!is_right(predicted, lines)) {
                    fail("predicted addresses", address);
                }
                if (predicted.size() == 0) {
                    break;
                }
                predicted.advance(count);
            }
        }
    }
    return tried;
}

void try_predicted_addresses() {
    const address_style styles[] = {
        {2, 16, false, "", ":"},       {8, 5, false, "[", ".."},   {10, 4, false, "  ", " : "},
        {16, 4, false, "\t", "  :  "}, {16, 4, true, "    ", ":"}, {16, 3, false, std::string(20, ' '), ":"},
    };
    std::uint64_t tried = 0;
    for (const address_style& style : styles) {
        tried += try_addresses(style);
    }
    report("predicted addresses", tried);
}

/// A line with one changed bit must not match.
void try_lines_that_differ() {
    std::uint64_t tried = 0;
    for (std::size_t size = 1; size <= kvr::predicted_address::readable; ++size) {
        const std::string text = '0' + std::string(size - 1, ':');
        kvr::predicted_address predicted;
        predicted.learn(text, std::string_view(text).substr(0, 1), 16, 0, 1);
        std::string line = '1' + std::string(kvr::predicted_address::readable - 1, ':');
        for (std::size_t bit = 0; bit < 8 * line.size(); ++bit, ++tried) {
            const auto flip = static_cast<char>(1U << bit % 8);
            line[bit / 8] ^= flip;
            if (predicted.matches(line.data()) != (bit >= 8 * size)) {
                fail("lines that differ in one bit", tried);
            }
            line[bit / 8] ^= flip;
        }
    }
    report("lines that differ in one bit", tried);
}

} // namespace

int main() {
    try_decimal_blocks();
    try_hexadecimal_pairs();
    try_predicted_addresses();
    try_lines_that_differ();
    return 0;
}
