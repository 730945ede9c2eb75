#pragma once

#include "kvr/memory/mif/mif_content.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace kvrmem {

// What can be told of a MIF statement (what ends with ";") beyond the reader's verdict. Its text is without
// comments, and its lines stand in it one behind the other.

/// The place of the character at @p offset of @p statement; quick however many lines it has.
[[nodiscard]] kvr::line_place place_in(const kvr::mif_content& statement, std::size_t offset);

/// The place behind the character before @p offset, which is at least 1: where something is missing there.
[[nodiscard]] kvr::line_place place_behind(const kvr::mif_content& statement, std::size_t offset);

/// True when @p word, a stretch of @p statement, is not part of a longer word of its line.
[[nodiscard]] bool is_whole_word(const kvr::mif_content& statement, const kvr::text_span& word);

/// @p statement up to @p end.
[[nodiscard]] kvr::mif_content text_before(const kvr::mif_content& statement, std::size_t end);

/// A statement that begins within another one, which has no ";", or neither a value nor a ";".
struct inner_statement {
    std::size_t behind;  ///< offset behind the last character that belongs to the first statement
    std::size_t address; ///< offset of the address that follows
    std::size_t end;     ///< offset behind the ":" of that
    bool has_value;      ///< what is missing is a ";"; else a value, too
    bool at_line_end;    ///< the address begins a line
};

/// All of them, in their order.
[[nodiscard]] std::vector<inner_statement> find_inner_statements(const kvr::mif_content& statement);

/// A range whose two addresses are not separated by "..".
struct misspelt_range {
    std::size_t begin = 0; ///< of the "["
    std::size_t end = 0;   ///< behind the "]"
    kvr::text_span first;  ///< address
    kvr::text_span last;
    bool certain = false; ///< what separates them is one of "-", ":" and "TO"
};

[[nodiscard]] std::optional<misspelt_range> find_misspelt_range(std::string_view text);

/// True when a value stands behind the first ";" of @p text.
[[nodiscard]] bool values_behind_semicolon(std::string_view text);

} // namespace kvrmem
