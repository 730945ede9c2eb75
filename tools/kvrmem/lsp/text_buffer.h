#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem::lsp {

/// What the character of a position counts.
enum class position_encoding : std::uint8_t { utf8, utf16 };

/// A place between two characters of a text, as a client names it.
struct text_position {
    std::uint64_t line = 0;      ///< from 0; LF, CR LF and CR end one
    std::uint64_t character = 0; ///< from 0, in units of the position_encoding

    friend bool operator==(const text_position&, const text_position&) = default;
};

/// The text of a document, which its client edits. It is UTF-8; other bytes count as a unit each.
class text_buffer {
public:
    text_buffer(std::string contents, position_encoding unit_of_positions);

    [[nodiscard]] const std::string& text() const noexcept { return contents; }
    /// At least one: the last one has no line end.
    [[nodiscard]] std::size_t line_count() const noexcept { return starts.size(); }

    /// The offset of @p where; the end of the line, or of the text, for what is beyond it, and the begin of a
    /// character for a place within one.
    [[nodiscard]] std::size_t offset_of(const text_position& where) const;
    /// The position of the byte @p offset, at most the size of the text. Fast where it follows, on the same
    /// line, the one that was asked for before.
    [[nodiscard]] text_position position_of(std::size_t offset) const;
    /// The line that @p offset is in.
    [[nodiscard]] std::size_t line_of(std::size_t offset) const;
    /// Where line @p line, which there is, begins, and where it ends without its line end.
    ///@{
    [[nodiscard]] std::size_t start_of(std::size_t line) const { return starts[line]; }
    [[nodiscard]] std::size_t end_of(std::size_t line) const;
    ///@}

    /// Replaces the bytes from @p begin to before @p end, at most the size of the text. The cost is that of
    /// moving what follows.
    void replace(std::size_t begin, std::size_t end, std::string_view replacement);

private:
    /// Appends the begins of lines after @p begin and up to @p end.
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
