#pragma once

#include "kvrimage/diagnostics/span.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kvrimage {

/// Iterates over the lines of a text.
class line_walk {
public:
    /// @param of kept alive by the caller
    /// @param begin offset of the start of a line
    explicit line_walk(std::string_view of, std::size_t begin = 0) : text(of), position(begin) {}

    /// Sets @p line to the next line, without its LF. Returns false at the end and leaves @p line unchanged.
    bool next(span& line) {
        if (position >= text.size()) {
            return false;
        }
        const std::size_t end = std::min(text.find('\n', position), text.size());
        line = {position, end - position};
        position = std::min(end + 1, text.size());
        return true;
    }
    /// Returns @p line without leading and trailing @p blanks; of length 0 if nothing remains.
    [[nodiscard]] span without_blanks(const span& line, std::string_view blanks) const {
        const std::string_view all = line.in(text);
        const std::size_t first = all.find_first_not_of(blanks);
        return first == std::string_view::npos
                   ? span()
                   : span{line.offset + first, all.find_last_not_of(blanks) - first + 1};
    }

    /// Returns the remaining lines. A fast path that has read whole lines of them calls skip().
    [[nodiscard]] std::string_view rest() const { return text.substr(position); }
    [[nodiscard]] std::size_t offset() const noexcept { return position; }
    void skip(std::size_t bytes) noexcept { position += bytes; }

private:
    std::string_view text;
    std::size_t position;
};

} // namespace kvrimage
