#include "kvrimage/operations/checksum/crc.h"

#include <fmt/format.h>

#include <bit>
#include <cstring>
#include <stdexcept>

namespace kvrimage {

namespace {

constexpr std::uint32_t bits_of_register = 64;
constexpr std::uint32_t bits_of_crc_byte = 8;

/// Swaps adjacent groups of @p count bits. @p lower is the mask of the lower groups.
constexpr std::uint64_t swap_groups(std::uint64_t value, std::uint32_t count, std::uint64_t lower) {
    return (value & lower) << count | (value >> count & lower);
}

/// Reverses the bits of each byte.
constexpr std::uint64_t reverse_in_bytes(std::uint64_t value) {
    value = swap_groups(value, 1, 0x5555555555555555);
    value = swap_groups(value, 2, 0x3333333333333333);
    return swap_groups(value, 4, 0x0F0F0F0F0F0F0F0F);
}

/// Reverses the lowest @p width bits. The other bits must be 0.
constexpr std::uint64_t reverse_bits(std::uint64_t value, std::uint32_t width) {
    value = reverse_in_bytes(value);
    value = swap_groups(value, 8, 0x00FF00FF00FF00FF);
    value = swap_groups(value, 16, 0x0000FFFF0000FFFF);
    value = value << 32U | value >> 32U;
    return value >> (bits_of_register - width);
}

std::uint64_t checked(std::uint64_t number, std::uint32_t width, std::string_view what) {
    if (width == 0 || width > bits_of_register) {
        throw std::invalid_argument(fmt::format("a check of {} bits: the width is 1 to 64", width));
    }
    if (width < bits_of_register && number >> width != 0) {
        throw std::invalid_argument(fmt::format("the {} 0x{:X} has more than {} bits", what, number, width));
    }
    return number;
}

/// Loads 8 bytes as a number, least significant byte first.
std::uint64_t little_endian(const char* bytes) {
    std::uint64_t number = 0;
    std::memcpy(&number, bytes, sizeof(number));
    if constexpr (std::endian::native == std::endian::big) {
        number = reverse_bits(reverse_in_bytes(number), bits_of_register);
    }
    return number;
}

constexpr std::uint64_t all_of_32 = 0xFFFFFFFF;
constexpr std::uint64_t all_of_64 = ~std::uint64_t{0};

constexpr std::array crcs = {
    known_crc{"crc-8", {8, 0x07, 0, false, false, 0}, 0xF4},
    known_crc{"crc-8-autosar", {8, 0x2F, 0xFF, false, false, 0xFF}, 0xDF},
    known_crc{"crc-8-itu", {8, 0x07, 0, false, false, 0x55}, 0xA1},
    known_crc{"crc-8-maxim", {8, 0x31, 0, true, true, 0}, 0xA1},
    known_crc{"crc-8-rohc", {8, 0x07, 0xFF, true, true, 0}, 0xD0},
    known_crc{"crc-8-sae-j1850", {8, 0x1D, 0xFF, false, false, 0xFF}, 0x4B},
    known_crc{"crc-16-arc", {16, 0x8005, 0, true, true, 0}, 0xBB3D},
    known_crc{"crc-16-ccitt-false", {16, 0x1021, 0xFFFF, false, false, 0}, 0x29B1},
    known_crc{"crc-16-dnp", {16, 0x3D65, 0, true, true, 0xFFFF}, 0xEA82},
    known_crc{"crc-16-genibus", {16, 0x1021, 0xFFFF, false, false, 0xFFFF}, 0xD64E},
    known_crc{"crc-16-kermit", {16, 0x1021, 0, true, true, 0}, 0x2189},
    known_crc{"crc-16-modbus", {16, 0x8005, 0xFFFF, true, true, 0}, 0x4B37},
    known_crc{"crc-16-usb", {16, 0x8005, 0xFFFF, true, true, 0xFFFF}, 0xB4C8},
    known_crc{"crc-16-x25", {16, 0x1021, 0xFFFF, true, true, 0xFFFF}, 0x906E},
    known_crc{"crc-16-xmodem", {16, 0x1021, 0, false, false, 0}, 0x31C3},
    known_crc{"crc-24-openpgp", {24, 0x864CFB, 0xB704CE, false, false, 0}, 0x21CF02},
    known_crc{"crc-32", {32, 0x04C11DB7, all_of_32, true, true, all_of_32}, 0xCBF43926},
    known_crc{"crc-32-autosar", {32, 0xF4ACFB13, all_of_32, true, true, all_of_32}, 0x1697D06A},
    known_crc{"crc-32-bzip2", {32, 0x04C11DB7, all_of_32, false, false, all_of_32}, 0xFC891918},
    known_crc{"crc-32-jamcrc", {32, 0x04C11DB7, all_of_32, true, true, 0}, 0x340BC6D9},
    known_crc{"crc-32-mpeg-2", {32, 0x04C11DB7, all_of_32, false, false, 0}, 0x0376E6E7},
    known_crc{"crc-32-posix", {32, 0x04C11DB7, 0, false, false, all_of_32}, 0x765E7680},
    known_crc{"crc-32c", {32, 0x1EDC6F41, all_of_32, true, true, all_of_32}, 0xE3069283},
    known_crc{"crc-64", {64, 0x42F0E1EBA9EA3693, 0, false, false, 0}, 0x6C40DF5F0B497347},
    known_crc{"crc-64-xz", {64, 0x42F0E1EBA9EA3693, all_of_64, true, true, all_of_64}, 0x995DC9BBDF1939FA},
};

} // namespace

std::span<const known_crc> known_crcs() {
    return crcs;
}

crc::crc(const crc_model& of)
    : model(of),
      register_bits(reverse_bits(checked(of.initial, of.width, "initial value"), of.width)),
      tables(slices) {
    static_cast<void>(checked(of.final_xor, of.width, "final value"));
    const std::uint64_t polynomial = reverse_bits(checked(of.polynomial, of.width, "polynomial"), of.width);
    for (std::size_t byte = 0; byte < tables[0].size(); ++byte) {
        std::uint64_t left = byte;
        for (std::uint32_t bit = 0; bit < bits_of_crc_byte; ++bit) {
            left = left >> 1U ^ ((left & 1U) != 0 ? polynomial : 0);
        }
        tables[0][byte] = left;
    }
    for (std::size_t slice = 1; slice < slices; ++slice) {
        for (std::size_t byte = 0; byte < tables[slice].size(); ++byte) {
            const std::uint64_t before = tables[slice - 1][byte];
            tables[slice][byte] = before >> bits_of_crc_byte ^ tables[0][before & 0xFF];
        }
    }
}

void crc::add(std::string_view bytes) noexcept {
    const auto in_order = [this](std::uint64_t number) {
        return model.reflects_input ? number : reverse_in_bytes(number);
    };
    for (; bytes.size() >= slices; bytes.remove_prefix(slices)) {
        std::uint64_t block = register_bits ^ in_order(little_endian(bytes.data()));
        register_bits = 0;
        for (std::size_t slice = slices; slice-- > 0; block >>= bits_of_crc_byte) {
            register_bits ^= tables[slice][block & 0xFF];
        }
    }
    for (const char byte : bytes) {
        const std::uint64_t index = register_bits ^ in_order(static_cast<unsigned char>(byte));
        register_bits = register_bits >> bits_of_crc_byte ^ tables[0][index & 0xFF];
    }
}

std::uint64_t crc::value() const noexcept {
    return (model.reflects_output ? register_bits : reverse_bits(register_bits, model.width)) ^
           model.final_xor;
}

} // namespace kvrimage
