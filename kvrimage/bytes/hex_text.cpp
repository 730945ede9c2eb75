#include "kvrimage/bytes/hex_text.h"

#include "kvr/memory/io/digit_pairs.h"
#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_value.h"

#include <cstdint>

namespace kvrimage {

namespace {

/// The eight upper-case digits of the four bytes at @p bytes, in the order of the text.
std::uint64_t digits_of_four(const char* bytes) noexcept {
    constexpr std::uint64_t low_digits = 0x000F000F000F000F;
    const std::uint64_t four = kvr::load_characters<4>(bytes);
    const std::uint64_t pairs = (four | four << 16U) & 0x0000FFFF0000FFFFU;
    const std::uint64_t spread = (pairs | pairs << 8U) & 0x00FF00FF00FF00FFU;
    const std::uint64_t values = (spread >> 4U & low_digits) | (spread & low_digits) << 8U;
    // 6 more carries a value of ten or more into the bit above its digit.
    const std::uint64_t letters = (values + kvr::eight_of(6)) >> 4U & kvr::eight_of(1);
    return values + kvr::eight_of('0') + letters * ('A' - '0' - 10);
}

} // namespace

void encode_hex(std::string_view bytes, char* digits) noexcept {
    constexpr std::size_t block = 4;
    for (; bytes.size() >= block; bytes.remove_prefix(block), digits += 2 * block) {
        kvr::store_eight(digits_of_four(bytes.data()), digits);
    }
    for (const char byte : bytes) {
        digits = kvr::upper_hex_pairs.put(static_cast<unsigned char>(byte), digits);
    }
}

bool decode_hex(std::string_view digits, char* bytes) noexcept {
    constexpr std::size_t block = 16;
    bool are_digits = true;
    for (; digits.size() >= block; digits.remove_prefix(block), bytes += block / 2) {
        std::uint64_t value = 0;
        are_digits = kvr::read_sixteen(digits.data(), value) && are_digits;
        kvr::store_eight(kvr::reversed_bytes(value), bytes);
    }
    for (; !digits.empty(); digits.remove_prefix(2)) {
        const unsigned high = kvr::digit_value(digits[0]);
        const unsigned low = kvr::digit_value(digits[1]);
        are_digits = are_digits && (high | low) < 16;
        *bytes++ = static_cast<char>(high << 4U | low);
    }
    return are_digits;
}

} // namespace kvrimage
