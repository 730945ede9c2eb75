#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// How many bits change from one word of a memory to the next one, as they do on the data lines of a memory
/// that is read from its lowest address to its highest.
struct toggle_statistics {
    std::uint64_t pairs = 0;    ///< words that are set at an address and the next one
    std::uint64_t compared = 0; ///< bits of all pairs of which neither is don't care
    std::uint64_t toggled = 0;  ///< of these, bits that differ: the Hamming distances of all pairs together

    /// toggled / compared, from 0 to 1; 0 when nothing was compared. (R. W. Hamming, "Error Detecting and
    /// Error Correcting Codes", 1950, section 8, has the distance.)
    [[nodiscard]] double rate() const noexcept {
        return compared == 0 ? 0 : static_cast<double>(toggled) / static_cast<double>(compared);
    }
    /// The same in all three.
    friend bool operator==(const toggle_statistics&, const toggle_statistics&) = default;
};

/// Neighbours of which one is not set are no pair. Time follows the words that were set one by one, not what
/// fills cover; the memory does not grow with either.
[[nodiscard]] KVRIMAGE_API toggle_statistics toggles_of(const memory_image& image);

} // namespace kvrimage
