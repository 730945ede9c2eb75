#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kvrmem {

/// The files of a command that combines several memories.
struct memory_inputs {
    std::vector<memory_input> files; ///< without their images
    std::vector<kvrimage::memory_image> images;
    std::size_t size = 0; ///< bytes of all files

    [[nodiscard]] const std::string& name(std::size_t index) const { return files[index].name(); }
    /// Returns "a.mif, b.mif".
    [[nodiscard]] std::string names() const;
};

/// Reads all operands of @p given like read_memory(), with the same exceptions.
[[nodiscard]] memory_inputs read_memories(const arguments& given);

} // namespace kvrmem
