#pragma once

#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/word_mapping.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kvrimage {

/// A linear map over GF(2) of numbers of up to 128 bits to numbers of up to 128 bits, for example a
/// permutation or parity checks. Each bit of the argument contributes its column, independent of the other
/// bits. The map uses a table for each byte of the argument.
class linear_map {
public:
    /// @param columns the contribution of each bit of the argument, from bit 0 on, at most 128; other bits
    /// contribute nothing
    explicit linear_map(std::span<const wide_number> columns);

    [[nodiscard]] wide_number operator()(const wide_number& argument) const noexcept {
        wide_number result;
        std::uint64_t limb = argument.low;
        for (std::size_t index = 0; index < tables.size(); ++index) {
            limb = index == bytes_of_limb ? argument.high : limb;
            const wide_number& part = tables[index][limb & (byte_values - 1)];
            result.low ^= part.low;
            result.high ^= part.high;
            limb >>= bits_per_byte;
        }
        return result;
    }

private:
    static constexpr std::size_t bytes_of_limb = bits_per_limb / bits_per_byte;
    static constexpr std::size_t byte_values = 256;

    std::vector<std::array<wide_number, byte_values>> tables; ///< one for each byte of the argument
};

/// Returns the number with only bit @p index (below 128) set.
[[nodiscard]] constexpr wide_number single_bit(std::uint32_t index) noexcept {
    return index < bits_per_limb ? wide_number{std::uint64_t{1} << index, 0}
                                 : wide_number{0, std::uint64_t{1} << (index - bits_per_limb)};
}

} // namespace kvrimage
