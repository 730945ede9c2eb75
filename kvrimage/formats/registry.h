#pragma once

#include "kvrimage/export.h"
#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>
#include <vector>

namespace kvrimage {

/// All formats, in the order in which people should see them.
[[nodiscard]] KVRIMAGE_API std::span<const format* const> formats();

/// Adds a format of the program's own, which must live as long as the program, behind the others.
KVRIMAGE_API void add_format(const format& added);

/// The format called @p name, by its identifier or an extension, letter case ignored; null for other names.
[[nodiscard]] KVRIMAGE_API const format* format_of_name(std::string_view name);

/// All formats that have the extension of @p path, in the order of formats().
[[nodiscard]] KVRIMAGE_API std::vector<const format*> formats_of_path(std::string_view path);

/// The first of them, which is the one that is written under that name; null when there is none.
[[nodiscard]] KVRIMAGE_API const format* format_of_path(std::string_view path);

/// A format that a file may have.
struct sniffed {
    const format* as;   ///< never null
    certainty how_sure; ///< never `no`
};

/// The formats that @p head, the first bytes of a file (up to 64 KiB of it are looked at), may have, the
/// surest first; among equally sure ones those that have the extension of @p file_name first. None: it looks
/// like no format.
[[nodiscard]] KVRIMAGE_API std::vector<sniffed> sniff(std::string_view head, std::string_view file_name = {});

} // namespace kvrimage
