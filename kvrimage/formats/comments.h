#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <functional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Calls @p take with the place of each comment of @p contents, in order, in the format that the contents
/// say; where they say none, in that of @p path, or in the first format that finds any.
void for_each_comment(std::string_view contents, std::string_view path,
                      const std::function<void(const span&)>& take);

/// Comments of a file that another one does not have.
struct missing_comments {
    std::uint64_t count = 0;
    std::uint64_t first_line = 0; ///< from 1; 0 when there are none
};

/// The comments of @p old_contents, a file called @p path, that are not among those of @p new_contents: of
/// two equal ones both must be there. The cost in memory follows the new contents.
[[nodiscard]] missing_comments find_missing_comments(std::string_view old_contents,
                                                     std::string_view new_contents, std::string_view path);

} // namespace kvrimage
