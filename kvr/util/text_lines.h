#pragma once

#include "kvr/util/platform.h"

#include <cstddef>
#include <string>

namespace kvr {

/// Reads the lines of a text file up to a length limit. A line ends at its LF, which is removed; all other
/// bytes are kept.
class text_lines {
public:
    explicit text_lines(const char* path);
    explicit text_lines(platform::file_stream opened) noexcept;

    [[nodiscard]] bool is_open() const noexcept { return stream != nullptr; }

    /// Sets @p line to the next line, or to the first @p limit characters of a longer one; its rest is then
    /// the next line.
    /// @return false after the last line, with @p line empty. A line cut off by a read error is not returned.
    bool next(std::string& line, std::size_t limit);

    /// Returns whether the opened file could not be read to its end.
    [[nodiscard]] bool failed() const;

private:
    int next_character();

    platform::file_stream stream;
};

} // namespace kvr
