#pragma once

#include "kvrimage/diagnostics/span.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kvrimage {

/// Goes over the lines of a text, one after the other.
class line_walk {
public:
    /// @param of kept alive by the caller
    /// @param begin where a line begins
    explicit line_walk(std::string_view of, std::size_t begin = 0) : text(of), position(begin) {}

    /// Sets @p line to the next one, without its LF; false at the end, with @p line as it was.
    bool next(span& line) {
        if (position >= text.size()) {
            return false;
        }
        const std::size_t end = std::min(text.find('\n', position), text.size());
        line = {position, end - position};
        position = std::min(end + 1, text.size());
        return true;
    }
    /// The part of @p line from the first to the last character that is none of @p blanks; of no length when
    /// there is none.
    [[nodiscard]] span without_blanks(const span& line, std::string_view blanks) const {
        const std::string_view all = line.in(text);
        const std::size_t first = all.find_first_not_of(blanks);
        return first == std::string_view::npos
                   ? span()
                   : span{line.offset + first, all.find_last_not_of(blanks) - first + 1};
    }

    /// The lines to come, for a fast path, which skips the whole lines that it has read.
    [[nodiscard]] std::string_view rest() const { return text.substr(position); }
    [[nodiscard]] std::size_t offset() const noexcept { return position; }
    void skip(std::size_t bytes) noexcept { position += bytes; }

private:
    std::string_view text;
    std::size_t position;
};

} // namespace kvrimage
