#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kvrimage {

// The functions of split.h for memories stored as bytes; the results are stored as bytes too. Nothing is
// returned if a memory is not stored as bytes or the memories do not match; the caller then uses texts. The
// caller has checked the arguments.

/// The words and the lanes must consist of whole bytes.
[[nodiscard]] std::optional<std::vector<memory_image>> lanes_of_bytes(const memory_image& image,
                                                                      std::uint32_t bits);
[[nodiscard]] std::optional<std::vector<memory_image>> banks_of_bytes(const memory_image& image,
                                                                      std::uint64_t count);

[[nodiscard]] std::optional<memory_image> join_blocks_of_bytes(std::span<const memory_image> blocks);
/// These need words at the same addresses in all parts. Lanes must consist of whole bytes.
[[nodiscard]] std::optional<memory_image> join_lanes_of_bytes(std::span<const memory_image> lanes);
[[nodiscard]] std::optional<memory_image> join_banks_of_bytes(std::span<const memory_image> banks);

} // namespace kvrimage
