#pragma once

#include "kvr/memory/io/output_file.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

/// How a file is to look.
struct output_layout {
    KVR_FILE_TYPES format = FILE_TYPE_MIF;
    KVR_MEMORY_RADIXES address_radix = RADIX_HEX; ///< MIF
    KVR_MEMORY_RADIXES data_radix = RADIX_HEX;    ///< MIF
    bool with_runs = true;                        ///< MIF: equal neighbours share a line
};

/// A word that a format cannot hold. The message does not name a file.
class unwritable_word : public tool_error {
public:
    /// @param reason completes "word … at address …".
    unwritable_word(std::uint32_t word_address, std::string_view word, std::string_view reason);
    [[nodiscard]] std::uint32_t address() const noexcept { return place; }

private:
    std::uint32_t place;
};

/// Makes sure that write_memory() can write @p image in this layout: to be called before there is an output.
/// @throws unwritable_word for the first word that cannot be written; tool_error for words that are too wide,
/// and for a memory that is too deep.
void require_writable(const memory_image& image, const output_layout& layout);

/// Writes @p image, which require_writable() has passed, to @p output. Words that were never set are left
/// out.
void write_memory(const memory_image& image, const output_layout& layout, kvr::output_file& output);

} // namespace kvrmem
