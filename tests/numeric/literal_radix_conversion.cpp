#include "tests/numeric/literal_radix_conversion.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <stdexcept>

namespace literal_radix_conversion {

namespace {

enum : unsigned { bin = 0, dec = 1, uns = 2, hex = 3, oct = 4, none = 6 };

using digit_list = std::deque<int>;

bool any_above_zero(const digit_list& digits) {
    for (const int digit : digits) {
        if (digit > 0) {
            return true;
        }
    }
    return false;
}

void halve(digit_list& digits) {
    bool carry = false;
    for (int& digit : digits) {
        if (digit == 0) {
            digit = carry ? 5 : 0;
            carry = false;
        } else {
            const int sum = carry ? digit + 10 : digit;
            digit = sum / 2;
            carry = sum % 2 != 0;
        }
    }
}

/// Adds @p addend, of the same length, into @p sum.
void add(digit_list& sum, const digit_list& addend) {
    int carry = 0;
    auto added = addend.begin();
    for (int& digit : sum) {
        digit += *added++ + carry;
        carry = 0;
        if (digit >= 10) {
            digit -= 10;
            carry = 1;
        }
    }
    if (carry != 0) {
        sum.push_back(1);
    }
}

std::string printed(const char* format, int value) {
    std::array<char, 32> buffer;
    if (format[1] == 'X') {
        std::snprintf(buffer.data(), buffer.size(), "%X", static_cast<unsigned>(value));
    } else if (format[1] == 'o') {
        std::snprintf(buffer.data(), buffer.size(), "%o", static_cast<unsigned>(value));
    } else {
        std::snprintf(buffer.data(), buffer.size(), "%d", value);
    }
    return buffer.data();
}

std::string grouped_to_binary(const std::string& text, int base, int bits, const std::string& dont_care) {
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == 'X' || text[index] == 'x') {
            result += dont_care;
        } else {
            const std::string digit = text.substr(index, 1);
            result += int_to_binary(static_cast<int>(std::strtol(digit.c_str(), nullptr, base)), bits);
        }
    }
    return result;
}

} // namespace

std::string int_to_binary(int value, int width) {
    if (value == -1 || width < 0) {
        return "";
    }
    if (width == 0) {
        width = 1;
    }
    std::string bits;
    for (int count = 0; count < width; ++count) {
        if (value != 0) {
            bits = (value % 2 != 0 ? "1" : "0") + bits;
            value = value / 2;
        } else {
            bits = "0" + bits;
        }
    }
    return bits;
}

void invert_binary(std::string& bits) {
    for (std::size_t index = 0; index < bits.size(); ++index) {
        if (bits[index] == '1') {
            bits[index] = '0';
        } else {
            bits[index] = '1';
        }
    }
}

std::string decimal_to_binary(const std::string& text, bool is_signed) {
    std::string copy = text;
    bool negative = false;
    if (is_signed && copy.at(0) == '-') {
        copy.erase(0, 1);
        negative = true;
    }
    digit_list digits;
    for (const char character : copy) {
        digits.push_back(static_cast<signed char>(character) - static_cast<signed char>('0'));
    }
    std::string backwards;
    do {
        backwards += !digits.empty() && digits.back() % 2 != 0 ? "1" : "0";
        halve(digits);
    } while (any_above_zero(digits));
    if (is_signed) {
        backwards += "0";
    }
    std::string bits(backwards.rbegin(), backwards.rend());
    if (negative) {
        invert_binary(bits);
    }
    return bits;
}

std::string binary_to_decimal(const std::string& bits, bool is_signed) {
    std::string copy = bits;
    bool negative = false;
    if (is_signed && copy.at(0) == '1') {
        negative = true;
        copy.erase(0, 1);
        invert_binary(copy);
    }
    digit_list sum = {0};
    digit_list power = {1};
    for (auto bit = copy.rbegin(); bit != copy.rend(); ++bit) {
        if (*bit == '1') {
            while (sum.size() < power.size()) {
                sum.push_back(0);
            }
            add(sum, power);
        }
        const digit_list same = power;
        add(power, same);
    }
    std::string text = negative ? "-" : "";
    for (const int digit : sum) {
        text += printed("%d", digit);
    }
    return text;
}

std::string binary_to_grouped_radix(const std::string& bits, int bits_per_digit) {
    std::string text;
    std::string rest = bits;
    while (!rest.empty()) {
        std::string group;
        if (rest.size() >= static_cast<std::size_t>(bits_per_digit)) {
            group = rest.substr(rest.size() - static_cast<std::size_t>(bits_per_digit));
        } else {
            group = rest;
            while (group.size() < static_cast<std::size_t>(bits_per_digit)) {
                group = "0" + group;
            }
        }
        rest.erase(rest.size() - std::min(rest.size(), group.size()));
        int value = 0;
        int weight = 1;
        bool dont_care = false;
        for (auto bit = group.rbegin(); bit != group.rend(); ++bit) {
            if (*bit == '1') {
                value += weight;
            } else if (*bit == 'X' || *bit == 'x') {
                dont_care = true;
            }
            weight *= 2;
        }
        text = (dont_care ? "X" : printed(bits_per_digit == 4 ? "%X" : "%o", value)) + text;
    }
    return text;
}

std::string to_binary(const std::string& text, unsigned radix) {
    switch (radix) {
    case bin:
        return text;
    case dec:
        return decimal_to_binary(text, true);
    case uns:
        return decimal_to_binary(text, false);
    case hex:
        return grouped_to_binary(text, 16, 4, "XXXX");
    case oct:
        return grouped_to_binary(text, 8, 3, "XXX");
    default:
        return "";
    }
}

std::string from_binary(const std::string& bits, unsigned radix) {
    switch (radix) {
    case bin:
        return bits;
    case dec:
        return binary_to_decimal(bits, true);
    case uns:
        return binary_to_decimal(bits, false);
    case hex:
        return binary_to_grouped_radix(bits, 4);
    case oct:
        return binary_to_grouped_radix(bits, 3);
    default:
        return "";
    }
}

outcome convert(const std::string& text, unsigned from, unsigned to, unsigned width) {
    const bool result = from != none && to != none;
    try {
        std::string bits = to_binary(text, from);
        if (width != 0) {
            if (width < bits.size()) {
                bits = bits.substr(bits.size() - width);
            }
            while (bits.size() < width) {
                bits = "0" + bits;
            }
        }
        return {result, to == bin ? bits : from_binary(bits, to)};
    } catch (const std::out_of_range&) {
        return {false, std::nullopt};
    }
}

} // namespace literal_radix_conversion
