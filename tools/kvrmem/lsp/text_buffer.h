#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem::lsp {

/// The unit of `character` in a position.
enum class position_encoding : std::uint8_t { utf8, utf16 };

/// A position between two characters of a text, as clients specify it.
struct text_position {
    std::uint64_t line = 0;      ///< from 0; lines end with LF, CR LF or CR
    std::uint64_t character = 0; ///< from 0, in units of position_encoding

    friend bool operator==(const text_position&, const text_position&) = default;
};

/// The text of a document that the client edits. It is UTF-8; each invalid byte counts as one unit.
class text_buffer {
public:
    text_buffer(std::string contents, position_encoding unit_of_positions);

    [[nodiscard]] const std::string& text() const noexcept { return contents; }
    /// Returns the number of lines, at least 1: the last line has no line end.
    [[nodiscard]] std::size_t line_count() const noexcept { return starts.size(); }

    /// Returns the offset of @p where. Positions beyond the line or the text are moved to its end, positions
    /// within a character to its start.
    [[nodiscard]] std::size_t offset_of(const text_position& where) const;
    /// Returns the position of @p offset, at most the size of the text. Fast if it follows the previously
    /// requested offset on the same line.
    [[nodiscard]] text_position position_of(std::size_t offset) const;
    /// Returns the line that contains @p offset.
    [[nodiscard]] std::size_t line_of(std::size_t offset) const;
    /// Return the start of the existing line @p line, and its end without the line end.
    ///@{
    [[nodiscard]] std::size_t start_of(std::size_t line) const { return starts[line]; }
    [[nodiscard]] std::size_t end_of(std::size_t line) const;
    ///@}

    /// Replaces the bytes from @p begin to before @p end, at most the size of the text. Takes time
    /// proportional to the text after @p begin.
    void replace(std::size_t begin, std::size_t end, std::string_view replacement);

private:
    /// Appends the line starts after @p begin and up to @p end.
    void find_lines(std::size_t begin, std::size_t end, std::vector<std::size_t>& found) const;
    [[nodiscard]] std::uint64_t units_in(std::size_t begin, std::size_t end) const;

    std::string contents;
    position_encoding unit;
    bool is_ascii;
    std::vector<std::size_t> starts; ///< of the lines
    struct known_position {
        std::size_t offset = 0;
        text_position where;
    };
    mutable known_position last_asked;
};

} // namespace kvrmem::lsp
