#pragma once

#include "kvr/memory/output_file.h"
#include "tools/kvrmem/memory_image.h"

#include <cstdint>
#include <string>

namespace kvrmem {

/// How a file is to look.
struct output_layout {
    KVR_FILE_TYPES format = FILE_TYPE_MIF;
    KVR_MEMORY_RADIXES address_radix = RADIX_HEX; ///< MIF
    KVR_MEMORY_RADIXES data_radix = RADIX_HEX;    ///< MIF
    bool with_runs = true;                        ///< MIF: equal neighbours share a line
};

/// A word that a format cannot hold.
struct unwritable_word {
    std::uint32_t address;
    std::string word;   ///< as the image holds it
    std::string reason; ///< completes "the word … at address …"
};

/// Makes sure that write_memory() can write @p image in this layout: to be called before there is an output.
/// @throws unwritable_word for the first word that cannot be written; tool_error for words that are too wide.
void require_writable(const memory_image& image, const output_layout& layout);

/// Writes @p image, which require_writable() has passed, to @p output. Words that were never set are left
/// out.
void write_memory(const memory_image& image, const output_layout& layout, kvr::output_file& output);

} // namespace kvrmem
