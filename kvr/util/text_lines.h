#pragma once

#include "kvr/util/platform.h"

#include <cstddef>
#include <string>

namespace kvr {

/// Reads the lines of a text file up to a limit. A line ends at its LF, which is dropped; every other byte is
/// kept.
class text_lines {
public:
    explicit text_lines(const char* path);
    explicit text_lines(platform::file_stream opened) noexcept;

    [[nodiscard]] bool is_open() const noexcept { return stream != nullptr; }

    /// The next line, or the first @p limit characters of a longer one, whose rest is the next line then.
    /// @return false after the last line, which leaves @p line empty. A line that a read error cuts
    ///         off is not returned.
    bool next(std::string& line, std::size_t limit);

    /// True when the lines, which are open, ended because the file could not be read to its end.
    [[nodiscard]] bool failed() const;

private:
    int next_character();

    platform::file_stream stream;
};

} // namespace kvr
