#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A line of one statement of one address and values, and at most a comment of "--": the fast path beside the
/// parser.
struct regular_mif_line {
    std::uint64_t address;
    std::size_t address_begin; ///< offsets in the file
    std::size_t address_end;
    std::size_t values_begin;
    std::size_t values_end;
    std::size_t value_count;
    std::size_t next_line;
};

/// The line of @p contents at @p offset, a line's begin where a statement may begin, when it is regular;
/// addresses are numbers to the base @p address_base and below 2^32. The parser finds the same in it.
[[nodiscard]] std::optional<regular_mif_line>
regular_mif_line_at(std::string_view contents, std::size_t offset, unsigned address_base) noexcept;

} // namespace kvrimage
