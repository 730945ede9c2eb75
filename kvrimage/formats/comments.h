#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <functional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Calls @p take with the place of each comment of @p contents, in order. The format is determined by the
/// contents, else by @p path, else it is the first format that finds a comment.
void for_each_comment(std::string_view contents, std::string_view path,
                      const std::function<void(const span&)>& take);

/// The comments of a file that are missing from another one.
struct missing_comments {
    std::uint64_t count = 0;
    std::uint64_t first_line = 0; ///< from 1; 0 if no comment is missing
};

/// Returns the comments of @p old_contents, a file named @p path, that are not in @p new_contents. Repeated
/// comments are counted. Memory use is proportional to the new contents.
[[nodiscard]] missing_comments find_missing_comments(std::string_view old_contents,
                                                     std::string_view new_contents, std::string_view path);

} // namespace kvrimage
