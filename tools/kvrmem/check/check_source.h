#pragma once

#include "kvr/memory/io/line_source.h"
#include "tools/kvrmem/surroundings/input_file.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// The bytes of a file that is checked, and its lines by their numbers.
class check_source {
public:
    explicit check_source(std::string bytes) : contents(std::move(bytes)) {}

    /// Reads the whole of @p file.
    /// @throws tool_error when it cannot be opened or read to its end, or a line is too long.
    static check_source of(const input_file& file);

    [[nodiscard]] const std::string& text() const noexcept { return contents; }

    /// A source over the text, with lines of at most @p limit characters; not beyond the life of this object.
    [[nodiscard]] kvr::line_source lines(std::size_t limit) const {
        return kvr::line_source(std::string_view(contents), limit);
    }

    /// The line numbered @p number (from 1) without its line end; "" behind the last one.
    [[nodiscard]] std::string_view line(std::uint64_t number) const;

    /// Where the line numbered @p number begins in the text; the size of the text behind the last line.
    [[nodiscard]] std::size_t offset_of(std::uint64_t number) const;

    /// Where the byte at @p column (from 1) of the line numbered @p number stands in the text.
    [[nodiscard]] std::size_t offset_of(std::uint64_t number, std::uint64_t column) const {
        return offset_of(number) + column - 1;
    }

    /// Number of lines, as a text stream counts them: behind a final line end there is one more, empty.
    [[nodiscard]] std::uint64_t line_count() const;

    /// The last line that holds more than blanks; 1 when there is none.
    [[nodiscard]] std::uint64_t last_line() const;

    /// @p line with the line end of the first line, or LF, behind it; and before it, where the text does not
    /// end with one. That can be put behind the text.
    [[nodiscard]] std::string as_last_line(std::string_view line) const;

    /// What ends the lines of the file: CR and LF where its first line has both.
    [[nodiscard]] std::string_view line_end() const;

private:
    void build_index() const;

    std::string contents;
    mutable std::vector<std::size_t> marks; ///< where every mark_distance-th line begins
    mutable std::uint64_t count = 0;        ///< lines; 0 before they are counted
};

} // namespace kvrmem
