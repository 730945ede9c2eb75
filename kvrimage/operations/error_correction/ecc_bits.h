#pragma once

#include "kvrimage/operations/error_correction/ecc_code.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kvrimage {

// Words of any width as binary digits, '0' and '1', most significant first.

/// The number of @p bits, 64 bits a limb, the lowest limb first.
[[nodiscard]] std::vector<std::uint64_t> limbs_of_bits(std::string_view bits);

/// The protected word of @p data.
[[nodiscard]] std::string encoded_bits(const ecc_code& code, std::string_view data);

/// What the check bits say of a word; as ecc_result.
struct decoded_bits {
    ecc_result::state what = ecc_result::state::intact;
    std::string data;
    std::optional<std::uint32_t> bit = std::nullopt;
};

/// Decodes words of one code.
class ecc_decoder {
public:
    /// @param of must outlive it
    explicit ecc_decoder(const ecc_code& of);

    [[nodiscard]] decoded_bits decode(std::string_view word) const;
    /// The bit of a protected word that is wrong where just the checks of @p syndrome fail (bit j for check
    /// j); nothing: it is not known.
    [[nodiscard]] std::optional<std::uint32_t> wrong_bit(std::uint64_t syndrome) const;

private:
    const ecc_code& code;
    std::unordered_map<std::uint64_t, std::uint32_t>
        bits_of_syndromes; ///< empty where nothing can be corrected
};

} // namespace kvrimage
