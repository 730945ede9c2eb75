// Each allocation of the number conversions fails, one per trial.

#include "kvr/memory/memory_types.h"
#include "kvr/numeric/fixed_point.h"
#include "kvr/numeric/integer_format.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/numeric/value_syntax.h"
#include "tests/faults/allocation_faults.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

struct number_trial {
    bool answer = false;
    std::string text = "before";

    [[nodiscard]] std::string outcome() const { return text + (answer ? " true" : " false"); }
};

const std::string hexadecimal_digits = "7123456789ABCDEF0123456789ABCDEF0123456789ABCDEF";
const std::string decimal_digits = "-31415926535897932384626433832795028841971693993751058209749";
const std::string octal_digits = "0123456701234567012345670123456701234567";
const std::string binary_digits = "01101110010101110110111001010111011011100101011101101110010101110110";
constexpr unsigned bit_count = 150;

const std::string& digits_in(KVR_MEMORY_RADIXES radix) {
    switch (radix) {
    case RADIX_BIN:
        return binary_digits;
    case RADIX_OCT:
        return octal_digits;
    case RADIX_HEX:
        return hexadecimal_digits;
    default:
        return decimal_digits;
    }
}

void no_preparation(number_trial& /*trial*/) {}

template <KVR_MEMORY_RADIXES From, KVR_MEMORY_RADIXES To>
void convert(number_trial& trial) {
    trial.answer = kvr_radix_conversion(digits_in(From), &trial.text, From, To, bit_count);
}

template <KVR_MEMORY_RADIXES To>
void convert_in_place(number_trial& trial) {
    trial.answer = kvr_radix_conversion(trial.text, &trial.text, RADIX_HEX, To, bit_count);
}

void hexadecimal_text(number_trial& trial) {
    trial.text = hexadecimal_digits;
}

template <KVR_MEMORY_RADIXES Radix>
void to_bits(number_trial& trial) {
    trial.text = convert_to_binary_string(digits_in(Radix), Radix);
}

template <KVR_MEMORY_RADIXES Radix>
void from_bits(number_trial& trial) {
    trial.text = convert_from_binary_string(binary_digits, Radix);
}

template <KVR_MEMORY_RADIXES To>
void from_fixed_point(number_trial& trial) {
    trial.answer = kvr_radix_conversion_fixed_point("-0.62517", &trial.text, RADIX_FIXED_POINT, To, "4.90");
}

template <KVR_MEMORY_RADIXES From>
void to_fixed_point(number_trial& trial) {
    trial.answer =
        kvr_radix_conversion_fixed_point(digits_in(From), &trial.text, From, RADIX_FIXED_POINT, "4.90");
}

const kvr_test::faulty_call<number_trial> conversions[] = {
    {"BIN to BIN", no_preparation, convert<RADIX_BIN, RADIX_BIN>},
    {"BIN to DEC", no_preparation, convert<RADIX_BIN, RADIX_DEC>},
    {"BIN to HEX", no_preparation, convert<RADIX_BIN, RADIX_HEX>},
    {"OCT to UNS", no_preparation, convert<RADIX_OCT, RADIX_UNS>},
    {"OCT to HEX", no_preparation, convert<RADIX_OCT, RADIX_HEX>},
    {"HEX to BIN", no_preparation, convert<RADIX_HEX, RADIX_BIN>},
    {"HEX to OCT", no_preparation, convert<RADIX_HEX, RADIX_OCT>},
    {"HEX to DEC", no_preparation, convert<RADIX_HEX, RADIX_DEC>},
    {"HEX to UNS", no_preparation, convert<RADIX_HEX, RADIX_UNS>},
    {"HEX to HEX", no_preparation, convert<RADIX_HEX, RADIX_HEX>},
    {"DEC to BIN", no_preparation, convert<RADIX_DEC, RADIX_BIN>},
    {"DEC to HEX", no_preparation, convert<RADIX_DEC, RADIX_HEX>},
    {"DEC to DEC", no_preparation, convert<RADIX_DEC, RADIX_DEC>},
    {"UNS to OCT", no_preparation, convert<RADIX_UNS, RADIX_OCT>},
    {"UNS to UNS", no_preparation, convert<RADIX_UNS, RADIX_UNS>},
    {"HEX to NONE", no_preparation, convert<RADIX_HEX, RADIX_NONE>},
    {"HEX to BIN, in place", hexadecimal_text, convert_in_place<RADIX_BIN>},
    {"HEX to DEC, in place", hexadecimal_text, convert_in_place<RADIX_DEC>, false},
    {"convert_to_binary_string, HEX", no_preparation, to_bits<RADIX_HEX>},
    {"convert_to_binary_string, OCT", no_preparation, to_bits<RADIX_OCT>},
    {"convert_to_binary_string, DEC", no_preparation, to_bits<RADIX_DEC>},
    {"convert_to_binary_string, UNS", no_preparation, to_bits<RADIX_UNS>},
    {"convert_to_binary_string, BIN", no_preparation, to_bits<RADIX_BIN>},
    {"convert_from_binary_string, HEX", no_preparation, from_bits<RADIX_HEX>},
    {"convert_from_binary_string, OCT", no_preparation, from_bits<RADIX_OCT>},
    {"convert_from_binary_string, DEC", no_preparation, from_bits<RADIX_DEC>},
    {"convert_from_binary_string, UNS", no_preparation, from_bits<RADIX_UNS>},
    {"convert_from_binary_string, BIN", no_preparation, from_bits<RADIX_BIN>},
    {"fixed point to BIN", no_preparation, from_fixed_point<RADIX_BIN>},
    {"fixed point to HEX", no_preparation, from_fixed_point<RADIX_HEX>},
    {"fixed point to DEC", no_preparation, from_fixed_point<RADIX_DEC>},
    {"fixed point to fixed point", no_preparation, from_fixed_point<RADIX_FIXED_POINT>},
    {"BIN to fixed point", no_preparation, to_fixed_point<RADIX_BIN>},
    {"HEX to fixed point", no_preparation, to_fixed_point<RADIX_HEX>},
    {"DEC to fixed point", no_preparation, to_fixed_point<RADIX_DEC>},
    {"binary format of 0b", no_preparation,
     [](number_trial& trial) {
         trial.answer =
             kvr_convert_numeric_string_to_binary_format("0b" + binary_digits + binary_digits, trial.text);
     }},
    {"binary format of 0x", no_preparation,
     [](number_trial& trial) {
         trial.answer = kvr_convert_numeric_string_to_binary_format("0x" + hexadecimal_digits, trial.text);
     }},
    {"binary format of decimal", no_preparation,
     [](number_trial& trial) {
         trial.answer = kvr_convert_numeric_string_to_binary_format(decimal_digits.substr(1), trial.text);
     }},
};

const kvr_test::faulty_call<number_trial> syntax_and_format[] = {
    {"kvr_long_to_string", no_preparation,
     [](number_trial& trial) { trial.text = kvr_long_to_string(4294967295U, 2); }},
    {"kvr_int_to_string", no_preparation,
     [](number_trial& trial) { trial.text = kvr_int_to_string(-2147483647); }, false},
    {"kvr_itoa and kvr_ultoa", no_preparation,
     [](number_trial& trial) {
         std::array<char, 40> signed_text{};
         std::array<char, 40> unsigned_text{};
         kvr_itoa(-2147483647, signed_text.data(), 2);
         kvr_ultoa(4294967295U, unsigned_text.data(), 2);
         trial.answer = signed_text[31] == '1' && unsigned_text[31] == '1';
     },
     false},
    {"predicates", no_preparation,
     [](number_trial& trial) {
         trial.answer = kvr_is_integer_value(decimal_digits) && kvr_is_float_value(decimal_digits) &&
                        kvr_is_hex_value(hexadecimal_digits, 192) && kvr_is_binary_value(binary_digits, 68);
     },
     false},
};

TEST(NumericAllocationFaults, ConversionsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(conversions);
}

TEST(NumericAllocationFaults, SyntaxAndFormatSurviveThem) {
    kvr_test::expect_allocation_faults_survived(syntax_and_format);
}

} // namespace
