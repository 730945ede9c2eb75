#pragma once

#include "tests/models/choices.h"
#include "tools/kvrmem/lsp/text_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// The answers of a text_buffer, computed from the first byte each time.
class plain_text {
public:
    plain_text(std::string initial, kvrmem::lsp::position_encoding unit_of_positions);

    [[nodiscard]] const std::string& text() const noexcept { return contents; }
    void replace(std::size_t begin, std::size_t length, const std::string& with) {
        contents.replace(begin, length, with);
    }

    /// The position of every offset, in order.
    [[nodiscard]] std::vector<kvrmem::lsp::text_position> positions() const;
    /// The offset of the last character on the line of @p where that begins at or before it.
    [[nodiscard]] std::size_t offset_of(const kvrmem::lsp::text_position& where) const;
    [[nodiscard]] kvrmem::lsp::position_encoding unit_of_positions() const noexcept { return unit; }
    /// True if a character begins at @p at.
    [[nodiscard]] bool is_begin(std::size_t at) const;

private:
    [[nodiscard]] bool is_within_line_end(std::size_t at) const;
    [[nodiscard]] std::uint64_t units_of(char byte) const;

    std::string contents;
    kvrmem::lsp::position_encoding unit;
};

/// Makes random edits of a text_buffer and of a plain text, and compares all answers of the buffer.
class text_buffer_operations {
public:
    /// @p source must outlive it.
    explicit text_buffer_operations(choices& source);

    /// Replaces a part of the text.
    /// @throws std::logic_error that describes the difference
    void step();
    /// @throws std::logic_error that describes the difference
    void compare_all();

private:
    [[nodiscard]] std::string any_text();
    [[nodiscard]] std::size_t any_offset();
    void expect(bool holds, std::string_view what, std::size_t at) const;

    choices& chosen;
    bool takes_any_bytes; ///< positions count bytes; otherwise the text is UTF-8 and either unit is used
    plain_text model;
    kvrmem::lsp::text_buffer buffer;
    std::size_t steps = 0;
};

} // namespace kvr_test
