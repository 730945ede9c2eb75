#pragma once

#include "kvrimage/export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A cyclic redundancy check, by the parameters that catalogues give for it.
struct crc_model {
    std::uint32_t width = 32;     ///< bits, 1 to 64
    std::uint64_t polynomial = 0; ///< without its highest term, the term of degree 0 as bit 0
    std::uint64_t initial = 0;    ///< the register before the first byte, not reflected
    bool reflects_input = false;  ///< the lowest bit of each byte comes first
    bool reflects_output = false; ///< the register is reversed at the end
    std::uint64_t final_xor = 0;  ///< added to the register at the very end

    /// The same parameters.
    friend bool operator==(const crc_model&, const crc_model&) = default;
};

/// A check that catalogues have a name for.
struct known_crc {
    std::string_view name; ///< "crc-32", in lower case
    crc_model model;       ///< its parameters
    std::uint64_t check;   ///< the check of the nine bytes "123456789"
};

/// All checks that have a name here.
[[nodiscard]] KVRIMAGE_API std::span<const known_crc> known_crcs();

/// Computes a check over bytes that come one after the other.
class KVRIMAGE_API crc {
public:
    /// @throws std::invalid_argument for a width that is not 1 to 64, and for numbers that do not fit it
    explicit crc(const crc_model& of);

    /// Adds @p bytes to those before.
    void add(std::string_view bytes) noexcept;
    /// The check of all bytes so far.
    [[nodiscard]] std::uint64_t value() const noexcept;

private:
    static constexpr std::size_t slices = 8;
    using table = std::array<std::uint64_t, 256>;

    crc_model model;
    // The register and the tables are those of the reflected check, whichever the model is: bit 0 is the term
    // of the highest degree.
    std::uint64_t register_bits;
    std::vector<table> tables; ///< [n]: what a byte becomes with n zero bytes after it
};

} // namespace kvrimage
