#pragma once

#include "kvrimage/export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The parameters of a cyclic redundancy check, as CRC catalogs give them.
struct crc_model {
    std::uint32_t width = 32;     ///< width in bits, 1 to 64
    std::uint64_t polynomial = 0; ///< without the highest term; bit 0 is the term of degree 0
    std::uint64_t initial = 0;    ///< initial register value, not reflected
    bool reflects_input = false;  ///< bit 0 of each byte is processed first
    bool reflects_output = false; ///< the final register is bit-reversed
    std::uint64_t final_xor = 0;  ///< XORed with the result at the end

    /// Compares all parameters.
    friend bool operator==(const crc_model&, const crc_model&) = default;
};

/// A named CRC.
struct known_crc {
    std::string_view name; ///< "crc-32", in lower case
    crc_model model;       ///< the parameters
    std::uint64_t check;   ///< the CRC of the nine bytes "123456789"
};

/// Returns all named CRCs.
[[nodiscard]] KVRIMAGE_API std::span<const known_crc> known_crcs();

/// Computes a CRC incrementally.
class KVRIMAGE_API crc {
public:
    /// @throws std::invalid_argument if the width is not 1 to 64, or a parameter does not fit it
    explicit crc(const crc_model& of);

    /// Appends @p bytes to the message.
    void add(std::string_view bytes) noexcept;
    /// Returns the CRC of all bytes so far.
    [[nodiscard]] std::uint64_t value() const noexcept;

private:
    static constexpr std::size_t slices = 8;
    using table = std::array<std::uint64_t, 256>;

    crc_model model;
    // The register and the tables always use the reflected form: bit 0 is the term of the highest degree.
    std::uint64_t register_bits;
    std::vector<table> tables; ///< [n][b]: the register after byte b and n zero bytes
};

} // namespace kvrimage
