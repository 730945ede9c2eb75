#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// The number of bits that change between consecutive words, as on the data lines of a memory that is read in
/// ascending order of addresses.
struct toggle_statistics {
    std::uint64_t pairs = 0;    ///< pairs of adjacent words that are both set
    std::uint64_t compared = 0; ///< compared bits: neither bit is don't-care
    std::uint64_t toggled = 0;  ///< compared bits that differ: the sum of the Hamming distances

    /// Returns toggled / compared, from 0 to 1, or 0 if nothing was compared. (For the distance see R. W.
    /// Hamming, "Error Detecting and Error Correcting Codes", 1950, section 8.)
    [[nodiscard]] double rate() const noexcept {
        return compared == 0 ? 0 : static_cast<double>(toggled) / static_cast<double>(compared);
    }
    /// Compares all three members.
    friend bool operator==(const toggle_statistics&, const toggle_statistics&) = default;
};

/// Counts the toggles of @p image. Pairs with a word that is not set are skipped. Takes time proportional to
/// the words that were set one by one, not to those that fills cover, and constant memory.
[[nodiscard]] KVRIMAGE_API toggle_statistics toggles_of(const memory_image& image);

} // namespace kvrimage
