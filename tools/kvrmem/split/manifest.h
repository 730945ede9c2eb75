#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/radix.h"
#include "tools/kvrmem/split/split_plan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

/// What a file says of the parts of a memory, in the schema kvrmem-split-1.
struct manifest {
    split_plan plan;
    std::uint32_t width;                        ///< of the whole memory
    std::uint64_t depth;                        ///< likewise
    std::string format;                         ///< of the files: its identifier
    std::vector<std::string> files;             ///< as paths from the working directory
    std::optional<kvrimage::address_unit> unit; ///< of the addresses in the files; nothing where not said
    std::optional<kvrimage::byte_order> order;  ///< of the bytes of their words; nothing where not said
};

/// The text of the file @p path, which names its files as paths from its own folder.
/// @throws tool_error (wrong usage) for a name that is not UTF-8
[[nodiscard]] std::string manifest_text(const manifest& what, const std::string& path);

/// Reads the file @p path.
/// @throws kvrimage::file_error when that cannot be read; tool_error (bad input) when it is no manifest
[[nodiscard]] manifest read_manifest(const std::string& path);

} // namespace kvrmem
