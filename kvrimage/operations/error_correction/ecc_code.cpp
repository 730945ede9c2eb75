#include "kvrimage/operations/error_correction/ecc_code.h"

#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <unordered_set>

namespace kvrimage {

bool ecc_check::covers(std::uint32_t bit) const noexcept {
    const std::uint32_t limb = bit / bits_per_limb - first_limb; // wraps to a large value if the bit is below
                                                                 // the mask
    return limb < mask.size() && (mask[limb] >> bit % bits_per_limb & 1U) != 0;
}

unsigned check_bit(const ecc_check& check, std::span<const std::uint64_t> data) noexcept {
    std::uint64_t covered = 0;
    for (std::size_t limb = 0; limb < check.mask.size(); ++limb) {
        covered ^= check.mask[limb] & data[check.first_limb + limb];
    }
    return (static_cast<unsigned>(std::popcount(covered)) + (check.is_inverted ? 1U : 0U)) % 2;
}

std::vector<std::uint64_t> syndromes(const ecc_code& code) {
    assert(code.checks.size() <= bits_per_limb);
    std::vector<std::uint64_t> all(code.width());
    for (std::size_t index = 0; index < code.checks.size(); ++index) {
        const ecc_check& check = code.checks[index];
        all[check.position] = std::uint64_t{1} << index;
        for (std::uint32_t bit = 0; bit < code.data_width(); ++bit) {
            all[code.data_positions[bit]] |= std::uint64_t{check.covers(bit)} << index;
        }
    }
    return all;
}

ecc_strength strength_of(const ecc_code& code) {
    const std::vector<std::uint64_t> all = syndromes(code);
    const std::unordered_set<std::uint64_t> distinct(all.begin(), all.end());
    ecc_strength strength;
    strength.finds_single = !distinct.contains(0);
    strength.corrects_single = strength.finds_single && distinct.size() == all.size();
    strength.finds_double = strength.corrects_single;
    for (std::size_t index = 1; strength.finds_double && index < all.size(); ++index) {
        strength.finds_double =
            std::none_of(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(index),
                         [&](std::uint64_t other) { return distinct.contains(all[index] ^ other); });
    }
    return strength;
}

} // namespace kvrimage
