#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kvrimage {

// What split.h promises, for memories whose words are held as bytes; the parts are so, too. Nothing is
// returned where they are not, or not all alike: then texts serve. What split.h refuses has been refused.

/// Lanes of whole bytes of words of whole bytes.
[[nodiscard]] std::optional<std::vector<memory_image>> lanes_of_bytes(const memory_image& image,
                                                                      std::uint32_t bits);
[[nodiscard]] std::optional<std::vector<memory_image>> banks_of_bytes(const memory_image& image,
                                                                      std::uint64_t count);

[[nodiscard]] std::optional<memory_image> join_blocks_of_bytes(std::span<const memory_image> blocks);
/// Lanes of whole bytes and banks which have words at the same addresses.
[[nodiscard]] std::optional<memory_image> join_lanes_of_bytes(std::span<const memory_image> lanes);
[[nodiscard]] std::optional<memory_image> join_banks_of_bytes(std::span<const memory_image> banks);

} // namespace kvrimage
