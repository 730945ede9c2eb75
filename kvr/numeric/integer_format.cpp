#include "kvr/numeric/integer_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace {

/// Writes the digits of @p value and a NUL. Returns the position of the NUL.
char* write_digits(unsigned int value, char* buffer, int radix) {
    const auto base = static_cast<unsigned int>(radix);
    char* end = buffer;
    do {
        const unsigned int digit = base < 2 ? 0 : value % base;
        value = base < 2 ? 0 : value / base;
        *end++ = static_cast<char>(digit < 10 ? '0' + digit : 'a' + (digit - 10));
    } while (value != 0);
    *end = '\0';
    std::reverse(buffer, end);
    return end;
}

} // namespace

void kvr_itoa(int value, char* buffer, int radix) {
    auto pattern = static_cast<unsigned int>(value);
    if (radix == 10 && value < 0) {
        *buffer++ = '-';
        pattern = 0 - pattern;
    }
    write_digits(pattern, buffer, radix);
}

void kvr_ultoa(unsigned int value, char* buffer, int radix) {
    write_digits(value, buffer, radix);
}

std::string kvr_long_to_string(unsigned int value, int radix) {
    std::array<char, std::numeric_limits<unsigned int>::digits + 1> buffer{};
    return {buffer.data(), write_digits(value, buffer.data(), radix)};
}

std::string kvr_int_to_string(int value) {
    std::array<char, std::numeric_limits<int>::digits10 + 2> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}
