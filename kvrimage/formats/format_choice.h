#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// In which format a file is read.
struct format_choice {
    const format* as = nullptr;            ///< null: there is none, or there are several
    const format* surely = nullptr;        ///< one that it surely has instead
    std::vector<const format*> among = {}; ///< several that it may have, and whose words differ
    certainty how_sure = certainty::no;
    std::optional<read_result> result = std::nullopt; ///< what the format reads, where that was tried
};

/// The format of the options; without one, of those with the file's extension the one that the contents look
/// like most; where no format has the extension, the one that they look like. Of several that are equally
/// likely it is the one that can read the file, if there is only one.
[[nodiscard]] format_choice choose_format(std::string_view contents, const read_options& options);

/// True for a file of bytes, whose lines, if it has any, may be of any length: by the format of the options,
/// else by the file's name, else by @p head, the first bytes of the file.
[[nodiscard]] bool may_have_any_lines(std::string_view head, const read_options& options);

} // namespace kvrimage
