#pragma once

#include "kvr/memory/line_source.h"

#include <cstddef>
#include <string>

namespace kvrmem {

/// How messages name the file @p path: "standard input" for "-", and nothing that a terminal may not show.
[[nodiscard]] std::string title_of_file(const std::string& path);

/// A file that a command reads, perhaps more than once. What can be read once only is kept in memory: "-",
/// which is standard input, and a pipe.
class input_file {
public:
    /// @throws tool_error when it cannot be opened or (standard input) read.
    explicit input_file(std::string path);
    /// The file that holds @p contents, without a look at the disk. @p title: as messages name it.
    input_file(std::string title, std::string contents);

    /// As messages name it.
    [[nodiscard]] const std::string& name() const noexcept { return title; }

    /// A new source over the whole file, with lines of at most @p limit characters.
    /// @throws tool_error when it cannot be opened any more.
    [[nodiscard]] kvr::line_source lines(std::size_t limit) const;

    /// Throws if @p source has met a read error.
    /// @throws tool_error
    void require_whole(const kvr::line_source& source) const;

    /// All bytes of the file.
    /// @throws tool_error when they cannot be read.
    [[nodiscard]] std::string contents() const;

private:
    std::string path;
    std::string title;
    bool in_memory;
    std::string text; ///< when in memory
};

} // namespace kvrmem
