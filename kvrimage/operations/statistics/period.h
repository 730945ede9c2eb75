#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// The smallest period of what a memory holds from its lowest to its highest word that is set: the smallest
/// number p of addresses so that each of these words equals the one p addresses before it, as far as there is
/// one. A word that is not set equals one that is not set only, and a don't-care bit a don't-care bit.
///
/// Nothing when no p repeats at least once in full: up to half of the addresses. The last turn may be cut
/// off.
///
/// Where most words were set one by one, time and memory are in proportion to these (the failure function of
/// D. E. Knuth, J. H. Morris and V. R. Pratt, "Fast pattern matching in strings", 1977). Where fills cover
/// most of the addresses, the periods that are possible are tried, each at the cost of what was set rather
/// than of what fills cover, and most of them are left out at once (N. J. Fine and H. S. Wilf, "Uniqueness
/// theorems for periodic functions", 1965); fills that were chosen for it can make that quadratic in their
/// number.
[[nodiscard]] KVRIMAGE_API std::optional<std::uint64_t> period_of(const memory_image& image);

} // namespace kvrimage
