#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// Returns the smallest period of the words from the lowest to the highest one that is set: the smallest p
/// such that each word equals the one p addresses before it, if there is one. Words that are not set equal
/// each other, and so do don't-care bits.
///
/// Returns nothing if no period repeats at least once in full, that is, if p would exceed half of the
/// addresses. The last repetition may be cut.
///
/// If most words were set one by one, time and memory are proportional to these words (failure function of D.
/// E. Knuth, J. H. Morris and V. R. Pratt, "Fast pattern matching in strings", 1977). If fills cover most
/// addresses, possible periods are tried, each in time proportional to the number of stored words, not to the
/// words that fills cover. Most candidates are excluded at once (N. J. Fine and H. S. Wilf, "Uniqueness
/// theorems for periodic functions", 1965). In the worst case the time is quadratic in the number of fills.
[[nodiscard]] KVRIMAGE_API std::optional<std::uint64_t> period_of(const memory_image& image);

} // namespace kvrimage
