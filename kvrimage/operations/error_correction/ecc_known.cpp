#include "kvrimage/operations/error_correction/ecc_known.h"

#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <iterator>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::uint32_t bits_of_group = 8;

constexpr ecc_strength parity_strength = {true, false, false};
constexpr ecc_strength corrects_one_finds_two = {true, true, true};

/// Makes a check of the data bits @p first to @p end - 1.
ecc_check check_of_bits(std::uint32_t first, std::uint32_t end, std::uint32_t position, bool is_inverted) {
    ecc_check check = {position, is_inverted, first / bits_per_limb, {}};
    check.mask.resize((end - 1) / bits_per_limb - check.first_limb + 1);
    for (std::uint32_t bit = first; bit < end; ++bit) {
        check.mask[bit / bits_per_limb - check.first_limb] |= std::uint64_t{1} << bit % bits_per_limb;
    }
    return check;
}

std::uint32_t one_check(std::uint32_t) {
    return 1;
}

template <bool IsOdd>
ecc_code make_word_parity(std::uint32_t data_width) {
    ecc_code code = {{}, {check_of_bits(0, data_width, data_width, IsOdd)}, parity_strength};
    for (std::uint32_t bit = 0; bit < data_width; ++bit) {
        code.data_positions.push_back(bit);
    }
    return code;
}

std::uint32_t check_for_each_byte(std::uint32_t data_width) {
    return data_width % bits_of_group == 0 ? data_width / bits_of_group : 0;
}

template <bool IsOdd, bool IsOnTop>
ecc_code make_byte_parity(std::uint32_t data_width) {
    ecc_code code = {{}, {}, parity_strength};
    for (std::uint32_t bit = 0; bit < data_width; ++bit) {
        code.data_positions.push_back(IsOnTop ? bit : bit + bit / bits_of_group);
    }
    for (std::uint32_t group = 0; group < data_width / bits_of_group; ++group) {
        const std::uint32_t first = group * bits_of_group;
        const std::uint32_t beside = first + group + bits_of_group;
        code.checks.push_back(
            check_of_bits(first, first + bits_of_group, IsOnTop ? data_width + group : beside, IsOdd));
    }
    return code;
}

/// Returns the number of check bits of the classic code, without the overall parity.
std::uint32_t hamming_bits(std::uint32_t data_width) {
    std::uint32_t count = 2;
    while ((std::uint32_t{1} << count) < data_width + count + 1) {
        ++count;
    }
    return count;
}

std::uint32_t hamming_checks(std::uint32_t data_width) {
    return hamming_bits(data_width) + 1;
}

ecc_code make_hamming(std::uint32_t data_width) {
    const std::uint32_t bits = hamming_bits(data_width);
    const std::size_t limbs = (data_width + bits_per_limb - 1) / bits_per_limb;
    ecc_code code = {{}, std::vector<ecc_check>(bits + 1), corrects_one_finds_two};
    for (std::uint32_t index = 0; index <= bits; ++index) {
        code.checks[index].position = index == bits ? 0 : std::uint32_t{1} << index;
        code.checks[index].mask.resize(limbs);
    }
    for (std::uint32_t position = 3; code.data_width() < data_width; ++position) {
        if (std::has_single_bit(position)) {
            continue;
        }
        const std::uint32_t bit = code.data_width();
        const std::uint64_t in_limb = std::uint64_t{1} << bit % bits_per_limb;
        code.data_positions.push_back(position);
        for (std::uint32_t index = 0; index < bits; ++index) {
            code.checks[index].mask[bit / bits_per_limb] |= (position >> index & 1U) != 0 ? in_limb : 0;
        }
        // The overall parity covers the bit and each check that covers it.
        code.checks[bits].mask[bit / bits_per_limb] |= std::popcount(position) % 2 == 0 ? in_limb : 0;
    }
    return code;
}

/// Masks of check bits that are placed above the data.
struct mask_table {
    std::uint32_t data_width;
    std::array<std::uint64_t, 8> masks; ///< over the data, for check bit 0 first; 0 if unused
};

constexpr mask_table hsiao_39_32 = {
    32, {0x2606BD25, 0xDEBA8050, 0x413D89AA, 0x31234ED1, 0xC2C1323B, 0x2DCC624C, 0x98505586}};
constexpr mask_table hsiao_39_32_v1 = {
    32, {0x432358F1, 0x991D7680, 0x417AA04E, 0xEC104B1E, 0xA484A4E5, 0x16ED0B28, 0x3AC29513}};
constexpr mask_table hsiao_72_64 = {64,
                                    {0xB9000000001FFFFF, 0x5E00000FFFE0003F, 0x67003FF003E007C1,
                                     0xCD0FC0F03C207842, 0xB671C711C4438884, 0xB5B65926488C9108,
                                     0xCBDAAA4A91152210, 0x7AED348D221A4420}};

template <const mask_table& Table>
std::uint32_t checks_of_table(std::uint32_t data_width) {
    return data_width == Table.data_width
               ? static_cast<std::uint32_t>(Table.masks.size() - std::ranges::count(Table.masks, 0U))
               : 0;
}

template <const mask_table& Table, std::uint32_t Inverted>
ecc_code make_of_table(std::uint32_t data_width) {
    ecc_code code = {{}, {}, corrects_one_finds_two};
    for (std::uint32_t bit = 0; bit < data_width; ++bit) {
        code.data_positions.push_back(bit);
    }
    for (std::uint32_t index = 0; index < checks_of_table<Table>(data_width); ++index) {
        code.checks.push_back({data_width + index, (Inverted >> index & 1U) != 0, 0, {Table.masks[index]}});
    }
    return code;
}

constexpr std::uint32_t inverted_checks = 0x2A;

constexpr std::array schemes = {
    known_ecc_scheme{{"even-parity", "one bit on top that makes the number of ones even"},
                     one_check,
                     make_word_parity<false>},
    known_ecc_scheme{{"odd-parity", "one bit on top that makes the number of ones odd"},
                     one_check,
                     make_word_parity<true>},
    known_ecc_scheme{{"even-parity-8", "the same for each 8 bits, each check bit after its byte"},
                     check_for_each_byte,
                     make_byte_parity<false, false>},
    known_ecc_scheme{{"odd-parity-8", "odd parity for each 8 bits, each check bit after its byte"},
                     check_for_each_byte,
                     make_byte_parity<true, false>},
    known_ecc_scheme{{"even-parity-8-top", "even parity for each 8 bits, all check bits on top"},
                     check_for_each_byte,
                     make_byte_parity<false, true>},
    known_ecc_scheme{{"odd-parity-8-top", "odd parity for each 8 bits, all check bits on top"},
                     check_for_each_byte,
                     make_byte_parity<true, true>},
    known_ecc_scheme{{"hamming", "Hamming code, check bits at powers of two, parity of all as bit 0"},
                     hamming_checks,
                     make_hamming},
    known_ecc_scheme{{"hsiao-39-32", "Hsiao code for 32 bits, 7 check bits on top"},
                     checks_of_table<hsiao_39_32>,
                     make_of_table<hsiao_39_32, 0>},
    known_ecc_scheme{{"hsiao-39-32-inverted", "the same with check bits 1, 3 and 5 inverted"},
                     checks_of_table<hsiao_39_32>,
                     make_of_table<hsiao_39_32, inverted_checks>},
    known_ecc_scheme{{"hsiao-39-32-v1", "an older Hsiao code for 32 bits"},
                     checks_of_table<hsiao_39_32_v1>,
                     make_of_table<hsiao_39_32_v1, 0>},
    known_ecc_scheme{{"hsiao-39-32-v1-inverted", "the same with check bits 1, 3 and 5 inverted"},
                     checks_of_table<hsiao_39_32_v1>,
                     make_of_table<hsiao_39_32_v1, inverted_checks>},
    known_ecc_scheme{{"hsiao-72-64", "Hsiao code for 64 bits, 8 check bits on top"},
                     checks_of_table<hsiao_72_64>,
                     make_of_table<hsiao_72_64, 0>},
    known_ecc_scheme{{"hsiao-72-64-inverted", "the same with check bits 1, 3 and 5 inverted"},
                     checks_of_table<hsiao_72_64>,
                     make_of_table<hsiao_72_64, inverted_checks>},
};

} // namespace

std::span<const known_ecc_scheme> known_ecc_schemes() {
    return schemes;
}

} // namespace kvrimage
