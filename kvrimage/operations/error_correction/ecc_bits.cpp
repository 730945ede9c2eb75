#include "kvrimage/operations/error_correction/ecc_bits.h"

#include "kvrimage/image/word_text.h"

#include <cstddef>

namespace kvrimage {

namespace {

/// Returns the digit of bit @p bit.
template <class Text>
auto& digit_at(Text& digits, std::uint32_t bit) {
    return digits[digits.size() - 1 - bit];
}

} // namespace

std::vector<std::uint64_t> limbs_of_bits(std::string_view bits) {
    std::vector<std::uint64_t> limbs((bits.size() + bits_per_limb - 1) / bits_per_limb);
    for (std::uint32_t bit = 0; bit < bits.size(); ++bit) {
        limbs[bit / bits_per_limb] |= std::uint64_t{digit_at(bits, bit) == '1'} << bit % bits_per_limb;
    }
    return limbs;
}

std::string encoded_bits(const ecc_code& code, std::string_view data) {
    std::string made(code.width(), '0');
    for (std::uint32_t bit = 0; bit < code.data_width(); ++bit) {
        digit_at(made, code.data_positions[bit]) = digit_at(data, bit);
    }
    const std::vector<std::uint64_t> limbs = limbs_of_bits(data);
    for (const ecc_check& check : code.checks) {
        digit_at(made, check.position) = check_bit(check, limbs) != 0 ? '1' : '0';
    }
    return made;
}

ecc_decoder::ecc_decoder(const ecc_code& of) : code(of) {
    if (!code.strength.corrects_single) {
        return;
    }
    const std::vector<std::uint64_t> all = syndromes(code);
    for (std::uint32_t bit = 0; bit < all.size(); ++bit) {
        bits_of_syndromes.emplace(all[bit], bit);
    }
}

std::optional<std::uint32_t> ecc_decoder::wrong_bit(std::uint64_t syndrome) const {
    const auto found = bits_of_syndromes.find(syndrome);
    return found == bits_of_syndromes.end() ? std::nullopt : std::optional(found->second);
}

decoded_bits ecc_decoder::decode(std::string_view word) const {
    decoded_bits result;
    result.data.resize(code.data_width());
    for (std::uint32_t bit = 0; bit < code.data_width(); ++bit) {
        digit_at(result.data, bit) = digit_at(word, code.data_positions[bit]);
    }
    const std::vector<std::uint64_t> limbs = limbs_of_bits(result.data);
    std::uint64_t syndrome = 0;
    for (std::size_t index = 0; index < code.checks.size(); ++index) {
        const ecc_check& check = code.checks[index];
        const bool fails = (digit_at(word, check.position) == '1') != (check_bit(check, limbs) != 0);
        // A code with more than 64 checks corrects nothing; the syndrome must only be nonzero.
        syndrome |= std::uint64_t{fails} << index % bits_per_limb;
    }
    if (syndrome == 0) {
        return result;
    }
    result.bit = wrong_bit(syndrome);
    result.what = result.bit ? ecc_result::state::corrected : ecc_result::state::damaged;
    for (std::uint32_t bit = 0; result.bit && bit < code.data_width(); ++bit) {
        if (code.data_positions[bit] == *result.bit) {
            char& digit = digit_at(result.data, bit);
            digit = digit == '0' ? '1' : '0';
        }
    }
    return result;
}

} // namespace kvrimage
