#pragma once

#include "kvrimage/diagnostics/span.h"

#include <functional>
#include <string_view>

namespace kvrimage {

/// What begins and ends comments and texts in a language.
struct comment_marks {
    std::string_view line;        ///< begins a comment that ends with the line
    std::string_view block_begin; ///< begins one that ends with `block_end`; "": there is none
    std::string_view block_end;
    std::string_view quotes; ///< each begins and ends a text on one line, in which nothing is a comment
    std::string_view own; ///< the beginning of comments that write() makes, all but a hexadecimal number; "":
                          ///< it makes none
    bool has_characters = false; ///< "'" encloses single characters, and means something else elsewhere
};

/// format::find_comments() for a language.
void find_source_comments(std::string_view contents, const comment_marks& marks,
                          const std::function<void(const span&)>& take);

} // namespace kvrimage
