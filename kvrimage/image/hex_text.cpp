#include "kvrimage/image/hex_text.h"

#include "kvr/numeric/digit_value.h"
#include "kvrimage/image/hex_block.h"

namespace kvrimage {

namespace {

/// Decodes fewer digits than a block.
decoded_hex decode_few(std::string_view digits, char* bytes) noexcept {
    unsigned wrong = 0;
    unsigned sum = 0;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        const unsigned high = kvr::digit_value(digits[at]);
        const unsigned low = kvr::digit_value(digits[at + 1]);
        wrong |= (high | low) & ~0xFU;
        const unsigned byte = high << 4U | low;
        sum += byte;
        *bytes++ = static_cast<char>(byte);
    }
    return {wrong == 0, sum};
}

} // namespace

unsigned encode_hex(std::string_view bytes, char* digits) noexcept {
    return encode_blocks(bytes, digits);
}

decoded_hex decode_and_sum(std::string_view digits, char* bytes) noexcept {
    constexpr std::size_t block = 16;
    return digits.size() < block ? decode_few(digits, bytes) : decode_blocks(digits, bytes);
}

unsigned sum_of_bytes(std::string_view bytes) noexcept {
    unsigned sum = 0;
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

std::uint32_t hex_value(std::string_view digits) noexcept {
    std::uint32_t value = 0;
    for (const char digit : digits) {
        value = value << 4U | kvr::digit_value(digit);
    }
    return value;
}

} // namespace kvrimage
