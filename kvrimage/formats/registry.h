#pragma once

#include "kvrimage/export.h"
#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Returns all formats in the order to show them.
[[nodiscard]] KVRIMAGE_API std::span<const format* const> formats();

/// Appends a format to formats(). @p added must live as long as the program.
KVRIMAGE_API void add_format(const format& added);

/// Returns the format with identifier or extension @p name, ignoring letter case; null if there is none.
[[nodiscard]] KVRIMAGE_API const format* format_of_name(std::string_view name);

/// Returns all formats with the extension of @p path, in the order of formats().
[[nodiscard]] KVRIMAGE_API std::vector<const format*> formats_of_path(std::string_view path);

/// Returns the first format with the extension of @p path, the one used for writing; null if there is none.
[[nodiscard]] KVRIMAGE_API const format* format_of_path(std::string_view path);

/// A possible format of a file.
struct sniffed {
    const format* as;   ///< never null
    certainty how_sure; ///< never `no`
};

/// Returns the possible formats of a file that begins with @p head, of which sniffed_bytes are examined. They
/// are sorted by confidence; at equal confidence, formats with the extension of @p file_name come first.
/// Empty if no format fits.
[[nodiscard]] KVRIMAGE_API std::vector<sniffed> sniff(std::string_view head, std::string_view file_name = {});

} // namespace kvrimage
