#pragma once

#include <optional>
#include <string>

/// The conversion of a word text, digit by digit on lists of decimal digits. It is slow; it serves as the
/// reference for the library's results and shares no code with the library.
namespace literal_radix_conversion {

struct outcome {
    bool result = false;
    std::optional<std::string> output; ///< no value if the conversion threw std::out_of_range

    friend bool operator==(const outcome&, const outcome&) = default;
};

std::string int_to_binary(int value, int width);
void invert_binary(std::string& bits);
std::string decimal_to_binary(const std::string& text, bool is_signed);
std::string binary_to_decimal(const std::string& bits, bool is_signed);
std::string binary_to_grouped_radix(const std::string& bits, int bits_per_digit);
std::string to_binary(const std::string& text, unsigned radix);
std::string from_binary(const std::string& bits, unsigned radix);

outcome convert(const std::string& text, unsigned from, unsigned to, unsigned width);

} // namespace literal_radix_conversion
