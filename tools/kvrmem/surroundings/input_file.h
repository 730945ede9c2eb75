#pragma once

#include "kvr/memory/io/line_source.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvrmem {

/// How messages name the file @p path: "standard input" for "-", and nothing that a terminal may not show.
[[nodiscard]] std::string title_of_file(const std::string& path);

/// The longest line, and the most that is taken from what may have no end: a pipe, a device, a terminal, and
/// what calls itself an empty file.
inline constexpr std::size_t most_bytes_without_end = std::size_t{32} << 20U;

/// A file that a command reads, perhaps more than once. What may have no end is read once, up to a limit, and
/// kept in memory: "-", which is standard input unless that is a file, a pipe, and a device.
class input_file {
public:
    /// @throws tool_error when it cannot be opened or read (what is kept in memory), or goes beyond the
    /// limit.
    explicit input_file(std::string path);
    /// The file that holds @p contents, without a look at the disk. @p title: as messages name it.
    input_file(std::string title, std::string contents);

    /// As messages name it.
    [[nodiscard]] const std::string& name() const noexcept { return title; }

    /// A new source over the whole file, with lines of at most @p limit characters, and of any length up to
    /// most_bytes_without_end when that is line_source::unlimited.
    /// @throws tool_error when it cannot be opened any more.
    [[nodiscard]] kvr::line_source lines(std::size_t limit) const;

    /// Throws if @p source has met a read error.
    /// @throws tool_error
    void require_whole(const kvr::line_source& source) const;

    /// @throws tool_error (bad input) always: the line numbered @p line is longer than any may be.
    [[noreturn]] void refuse_long_line(std::uint64_t line) const;

    /// How many bytes it has; 0 when that cannot be found out.
    [[nodiscard]] std::uint64_t size() const;

    /// All bytes of the file.
    /// @throws tool_error when they cannot be read, or a line is too long.
    [[nodiscard]] std::string contents() const;

private:
    std::string path;
    std::string title;
    bool in_memory;
    std::string text; ///< when in memory
};

} // namespace kvrmem
