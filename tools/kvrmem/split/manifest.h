#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/radix.h"
#include "tools/kvrmem/split/split_plan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

/// The description of the parts of a memory, in the schema kvrmem-split-1.
struct manifest {
    split_plan plan;
    std::uint32_t width;                        ///< of the whole memory
    std::uint64_t depth;                        ///< of the whole memory
    std::string format;                         ///< identifier of the files' format
    std::vector<std::string> files;             ///< paths relative to the working directory
    std::optional<kvrimage::address_unit> unit; ///< of the addresses in the files; nothing if not stated
    std::optional<kvrimage::byte_order> order;  ///< of the bytes of their words; nothing if not stated
};

/// Returns the text of the manifest file @p path, which has paths relative to its own folder.
/// @throws tool_error (wrong usage) for a name that is not UTF-8
[[nodiscard]] std::string manifest_text(const manifest& what, const std::string& path);

/// Reads the manifest file @p path.
/// @throws kvrimage::file_error if it cannot be read; tool_error (bad input) if it is not a manifest
[[nodiscard]] manifest read_manifest(const std::string& path);

} // namespace kvrmem
