#pragma once

#include "kvrimage/operations/checksum/checksum.h"

#include <cstdint>

namespace kvrmem {

inline constexpr std::uint32_t bits_of_sha256 = 256;

/// Returns the SHA-256 of the bytes that a checksum covers. The first byte of the digest is the most
/// significant one, as usual.
/// @throws the exceptions of kvrimage::checksum_of() for the memory and the options
[[nodiscard]] kvrimage::word sha256_of(const kvrimage::memory_image& image,
                                       const kvrimage::checksum_options& options);

} // namespace kvrmem
