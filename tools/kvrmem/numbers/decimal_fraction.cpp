#include "tools/kvrmem/numbers/decimal_fraction.h"

#include <cstddef>

namespace kvrmem {

namespace {

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

std::size_t first_digit(const std::string& text) {
    return text.starts_with('-') ? 1 : 0;
}

} // namespace

void halve(std::string& text) {
    unsigned carry = 0;
    for (char& digit : text) {
        if (is_digit(digit)) {
            const unsigned value = static_cast<unsigned>(digit - '0') + 10 * carry;
            digit = static_cast<char>('0' + value / 2);
            carry = value % 2;
        }
    }
    if (carry != 0) {
        text += text.find('.') == std::string::npos ? ".5" : "5";
    }
    const std::size_t first = first_digit(text);
    if (first + 1 < text.size() && text[first] == '0' && text[first + 1] != '.') {
        text.erase(first, 1);
    }
}

void double_it(std::string& text) {
    unsigned carry = 0;
    for (std::size_t at = text.size(); at-- > 0;) {
        if (is_digit(text[at])) {
            const unsigned value = 2 * static_cast<unsigned>(text[at] - '0') + carry;
            text[at] = static_cast<char>('0' + value % 10);
            carry = value / 10;
        }
    }
    if (carry != 0) {
        text.insert(first_digit(text), 1, '1');
    }
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
}

} // namespace kvrmem
