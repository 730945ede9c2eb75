#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A line with one statement of one address and its values, and at most a "--" comment. Fast path beside the
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

/// Parses the line of @p contents at @p offset, the start of a line where a statement may begin. Returns
/// nothing if the line is not regular. Addresses are numbers to the base @p address_base below 2^32. The
/// parser gives the same result.
[[nodiscard]] std::optional<regular_mif_line>
regular_mif_line_at(std::string_view contents, std::size_t offset, unsigned address_base) noexcept;

} // namespace kvrimage
