#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The format for reading a file.
struct format_choice {
    const format* as = nullptr;            ///< null if there is none, or several
    const format* surely = nullptr;        ///< another format that the contents certainly have
    std::vector<const format*> among = {}; ///< the candidates, if several fit and read different words
    certainty how_sure = certainty::no;
    std::optional<read_result> result = std::nullopt; ///< the result of reading, if that was tried
};

/// Chooses the format of @p contents: the one of @p options, else the best match among formats with the
/// file's extension, else the best match of all formats. Of several equally good matches, the only one that
/// can read the file is chosen.
[[nodiscard]] format_choice choose_format(std::string_view contents, const read_options& options);

/// Returns whether the file is binary, so that its lines may have any length. Decided by the format of the
/// options, else by the file name, else by @p head, the first bytes of the file.
[[nodiscard]] bool may_have_any_lines(std::string_view head, const read_options& options);

} // namespace kvrimage
