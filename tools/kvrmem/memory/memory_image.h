#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/store/word_store.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvrmem {

/// The widest words that the tool takes, in bits.
constexpr std::uint32_t widest_word = 1U << 20;

/// The contents of a memory as the tool holds it, whatever format it came from. A word is its exact value
/// at the memory's width, in the form that word_text tells; a word that the file never sets is empty.
struct memory_image {
    KVR_FILE_TYPES format = FILE_TYPE_UNSET;
    std::uint32_t width = 0; ///< bits a word
    std::uint32_t depth = 0; ///< words
    KVR_MEMORY_RADIXES address_radix = RADIX_HEX;
    KVR_MEMORY_RADIXES data_radix = RADIX_HEX;
    kvr::word_store words;

    /// What was not in the file and was found out, for the person to know; "" when there is nothing.
    std::string note;
};

/// Addresses that a memory sets.
struct address_bounds {
    std::uint32_t lowest;
    std::uint32_t highest;
};

/// The lowest and the highest address that @p words set; nothing when they set none.
[[nodiscard]] std::optional<address_bounds> bounds_of(const kvr::word_store& words);

} // namespace kvrmem
