#pragma once

#include "kvrimage/diagnostics/span.h"

#include <functional>
#include <string_view>

namespace kvrimage {

/// The delimiters of comments and strings in a language.
struct comment_marks {
    std::string_view line;        ///< begins a comment up to the end of the line
    std::string_view block_begin; ///< begins a comment up to `block_end`; "": none
    std::string_view block_end;
    std::string_view quotes; ///< each delimits a string on one line, which contains no comments
    /// The start of comments that write() makes, before a hexadecimal number; "": it makes none.
    std::string_view own;
    bool has_characters = false; ///< "'" encloses single characters and has another meaning elsewhere
};

/// Implements format::find_comments for a language.
void find_source_comments(std::string_view contents, const comment_marks& marks,
                          const std::function<void(const span&)>& take);

} // namespace kvrimage
