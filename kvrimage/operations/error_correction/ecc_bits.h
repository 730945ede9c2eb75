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

/// Converts @p bits to limbs of 64 bits, least significant limb first.
[[nodiscard]] std::vector<std::uint64_t> limbs_of_bits(std::string_view bits);

/// Returns the protected word of @p data.
[[nodiscard]] std::string encoded_bits(const ecc_code& code, std::string_view data);

/// The result of decoding a word, as in ecc_result.
struct decoded_bits {
    ecc_result::state what = ecc_result::state::intact;
    std::string data;
    std::optional<std::uint32_t> bit = std::nullopt;
};

/// Decodes words of one code.
class ecc_decoder {
public:
    /// @param of the code, which must outlive this object
    explicit ecc_decoder(const ecc_code& of);

    [[nodiscard]] decoded_bits decode(std::string_view word) const;
    /// Returns the wrong bit of a protected word for which exactly the checks in @p syndrome fail (bit j for
    /// check j), or nothing if the bit is unknown.
    [[nodiscard]] std::optional<std::uint32_t> wrong_bit(std::uint64_t syndrome) const;

private:
    const ecc_code& code;
    std::unordered_map<std::uint64_t, std::uint32_t>
        bits_of_syndromes; ///< empty if the code corrects nothing
};

} // namespace kvrimage
