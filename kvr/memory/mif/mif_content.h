#pragma once

#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_line.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kvr {

/// A physical line within the text of a content line.
struct line_piece {
    std::size_t offset; ///< its start in the text
    std::uint64_t line; ///< its number, from 1
};

/// A byte of a file. Line and column count from 1.
struct line_place {
    std::uint64_t line;
    std::uint32_t column;
};

/// The parts of a content line. The text has no comments, is in upper case, and has all lines up to the first
/// ";".
struct mif_content {
    std::string_view text;
    std::vector<line_piece> pieces; ///< the lines that form the text
    text_span first_address;
    text_span last_address; ///< of a range; not found on a line with a single address
    std::size_t data = 0;   ///< start of the values
    std::vector<std::string_view> values;
    std::uint32_t first = 0;
    std::uint32_t last = 0; ///< inclusive

    /// Returns the place in the file of the character at @p offset of the text.
    [[nodiscard]] line_place place(std::size_t offset) const;
};

/// Parses the content line `content.text` and stores its words: a range if it contains "[", otherwise words
/// from a single address on. After a fault nothing is stored.
std::optional<text_fault> parse_content_line(mif_memory& memory, mif_content& content);

/// Parses "<address> : <value> <value> …". The values go to consecutive addresses.
std::optional<text_fault> parse_single_address(mif_memory& memory, mif_content& content);

/// Parses "[<first>..<last>] : <value> <value> …". The values are repeated over the range; values beyond its
/// end are ignored.
std::optional<text_fault> parse_range(mif_memory& memory, mif_content& content);

/// Stores the values of `content.text` from `content.data` on at the addresses `first` to `last`. If the two
/// are equal, further values go to the addresses after them. In this case a single value marks its address,
/// which must not be marked yet.
std::optional<text_fault> fill_addresses(mif_memory& memory, mif_content& content);

} // namespace kvr
