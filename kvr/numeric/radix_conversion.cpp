#include "kvr/numeric/radix_conversion.h"

#include "kvr/numeric/binary_digits.h"
#include "kvr/numeric/small_word.h"
#include "kvr/numeric/word_conversion.h"

bool kvr_radix_conversion(const std::string& input, std::string* output, KVR_MEMORY_RADIXES from,
                          KVR_MEMORY_RADIXES to, unsigned int width) {
    if ((to != RADIX_BIN && kvr::convert_small_word(*output, input, from, to, width)) ||
        kvr::convert_word_directly(*output, input, from, to, width)) {
        return true;
    }
    *output = kvr::convert_word_through_binary_digits(input, from, to, width);
    return from != RADIX_NONE && to != RADIX_NONE;
}

std::string convert_to_binary_string(const std::string& text, int radix) {
    switch (radix) {
    case RADIX_BIN:
        return text;
    case RADIX_DEC:
        return kvr::decimal_to_binary_string(text, true);
    case RADIX_UNS:
        return kvr::decimal_to_binary_string(text, false);
    case RADIX_HEX:
        return kvr::grouped_radix_to_binary_string(text, 4);
    case RADIX_OCT:
        return kvr::grouped_radix_to_binary_string(text, 3);
    default:
        return {};
    }
}

std::string convert_from_binary_string(const std::string& bits, int radix) {
    switch (radix) {
    case RADIX_BIN:
        return bits;
    case RADIX_DEC:
        return kvr::binary_to_decimal_string(bits, true);
    case RADIX_UNS:
        return kvr::binary_to_decimal_string(bits, false);
    case RADIX_HEX:
        return kvr::binary_to_grouped_radix_string(bits, 4);
    case RADIX_OCT:
        return kvr::binary_to_grouped_radix_string(bits, 3);
    default:
        return {};
    }
}
