#pragma once

#include "kvr/memory/mif/mif_content.h"
#include "kvr/memory/mif/mif_memory.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kvrmem {

/// A content line of a MIF as the reader has taken it apart, and where its characters stand in the file.
class mif_statement {
public:
    /// @param file_number counts the statements of the file from 0.
    /// @param line_starts where the lines that the statement was joined of begin in @p file_text.
    mif_statement(std::string_view file_text, std::uint64_t file_number, const kvr::mif_content& parts,
                  const std::vector<std::size_t>& line_starts)
        : file(file_text),
          order(file_number),
          taken_apart(parts),
          starts(line_starts) {}

    [[nodiscard]] std::uint64_t number() const noexcept { return order; }
    [[nodiscard]] const kvr::mif_content& content() const noexcept { return taken_apart; }
    [[nodiscard]] bool is_range() const noexcept { return taken_apart.last_address.found(); }

    /// Where the character at @p position of the statement's text stands in the file.
    [[nodiscard]] std::size_t offset_of(std::size_t position) const;
    /// The same for @p token, a view of the statement's text.
    [[nodiscard]] std::size_t offset_of(std::string_view token) const;
    /// @p token in the letter case that it has in the file.
    [[nodiscard]] std::string_view in_file(std::string_view token) const;
    [[nodiscard]] std::string_view first_address() const;
    /// Of a range.
    [[nodiscard]] std::string_view last_address() const;
    /// Where the line with the character at @p position of the statement's text begins in the file.
    [[nodiscard]] std::size_t line_of(std::size_t position) const;
    /// Where the last line of the statement ends, its line end not counted.
    [[nodiscard]] std::size_t end() const;
    /// Where the line behind the statement begins.
    [[nodiscard]] std::size_t behind() const;
    /// What stands before the addresses in their line.
    [[nodiscard]] std::string_view indent() const;

private:
    [[nodiscard]] std::size_t piece_of(std::size_t position) const;

    std::string_view file;
    std::uint64_t order;
    const kvr::mif_content& taken_apart;
    const std::vector<std::size_t>& starts;
};

/// Calls @p take with every statement of @p text, a file that was read before, and leaves in @p memory, which
/// is fresh, what the reader makes of them.
void for_each_statement(std::string_view text, kvr::mif_memory& memory,
                        const std::function<void(const mif_statement&)>& take);

/// Where the first line behind the one with "BEGIN" starts in @p text, a file that was read before.
[[nodiscard]] std::size_t content_start(std::string_view text);

/// Where new lines go into @p text: to the start of the line with "END". @p from: where the line behind the
/// last statement starts.
[[nodiscard]] std::size_t line_before_end(std::string_view text, std::size_t from);

} // namespace kvrmem
