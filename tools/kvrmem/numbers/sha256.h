#pragma once

#include "kvrimage/operations/checksum/checksum.h"

#include <cstdint>

namespace kvrmem {

inline constexpr std::uint32_t bits_of_sha256 = 256;

/// The SHA-256 of the bytes that a checksum takes in, the first byte of the digest highest, as it is usually
/// written.
/// @throws what kvrimage::checksum_of() throws for the memory and the options
[[nodiscard]] kvrimage::word sha256_of(const kvrimage::memory_image& image,
                                       const kvrimage::checksum_options& options);

} // namespace kvrmem
