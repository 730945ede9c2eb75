#pragma once

#include "kvr/memory/memory_types.h"

#include <optional>
#include <string_view>

namespace kvrmem {

/// The format that the extension of @p path tells, letter case ignored.
[[nodiscard]] std::optional<KVR_FILE_TYPES> format_of_path(std::string_view path);

/// The format that a person calls @p name ("mif", "hex", "ihex", "rif"), letter case ignored.
[[nodiscard]] std::optional<KVR_FILE_TYPES> format_of_name(std::string_view name);

/// "MIF", "Intel HEX", "RIF".
[[nodiscard]] std::string_view format_title(KVR_FILE_TYPES format);

/// The radix that a person calls @p name ("bin", "oct", "dec", "uns", "hex"), letter case ignored.
[[nodiscard]] std::optional<KVR_MEMORY_RADIXES> radix_of_name(std::string_view name);

/// "BIN", "OCT", "DEC", "UNS", "HEX".
[[nodiscard]] std::string_view radix_title(KVR_MEMORY_RADIXES radix);

} // namespace kvrmem
