#include "fuzz/plain_fixed_point.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <vector>

namespace kvr_fuzz {

namespace {

int number_in(const std::string& text) {
    const long number = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

/// The bits at the width of the word: cut at the front or extended by copies of the first one.
std::string at_width(const std::string& bits, std::size_t width) {
    if (width <= bits.size()) {
        return bits.substr(bits.size() - width);
    }
    return std::string(width - bits.size(), bits.front()) + bits;
}

std::string printed(double fraction, int digits) {
    std::vector<char> buffer(static_cast<std::size_t>(digits) + 3);
    static_cast<void>(std::snprintf(buffer.data(), buffer.size(), "%.*f", digits, fraction));
    std::string text = buffer.data();
    while (text.size() > 3 && text.back() == '0') {
        text.pop_back();
    }
    return text;
}

} // namespace

std::optional<plain_fixed_point> plain_fixed_point::of(const std::string& format) {
    const std::size_t dot = format.find('.');
    const plain_fixed_point result{number_in(format.substr(0, dot)),
                                   dot == format.npos ? 0 : number_in(format.substr(dot + 1))};
    if (result.integer_bits < 1 || result.fraction_bits < 1) {
        return std::nullopt;
    }
    return result;
}

std::string plain_fixed_point::bits_of(const std::string& text) const {
    const bool negative = text.front() == '-';
    std::string bits(static_cast<std::size_t>(integer_bits), negative ? '1' : '0');
    double value = std::strtod(text.c_str() + (negative ? 1 : 0), nullptr);
    value = value >= 1 ? value - 1 : value;
    double weight = 1;
    for (int bit = 0; bit < fraction_bits; ++bit) {
        weight /= 2;
        const bool set = value >= weight;
        value -= set ? weight : 0;
        bits += set ? '1' : '0';
    }
    return bits;
}

plain_fixed_point::reading plain_fixed_point::fraction_of(const std::string& bits) const {
    const std::string word = at_width(bits, static_cast<std::size_t>(word_bits()));
    bool uniform = true;
    bool sign = word.front() == '1';
    for (std::size_t place = 1; uniform && place < static_cast<std::size_t>(integer_bits); ++place) {
        uniform = (word[place] == '1') == sign;
        sign = word[place] == '1';
    }
    double fraction = 0;
    double weight = 1;
    for (std::size_t place = static_cast<std::size_t>(integer_bits); place < word.size(); ++place) {
        weight /= 2;
        fraction += word[place] == '1' ? weight : 0;
    }
    if (sign && fraction == 0) {
        return {"-1.0", uniform};
    }
    return {(sign ? "-" : "") + printed(fraction, fraction_bits), uniform};
}

} // namespace kvr_fuzz
