#pragma once

#include "kvr/memory/line_source.h"

#include <cstddef>
#include <string>

namespace kvrmem {

/// A file that a command reads, perhaps more than once; "-" is standard input, which is kept in memory.
class input_file {
public:
    /// @throws tool_error when it cannot be opened or (standard input) read.
    explicit input_file(std::string path);

    /// As messages name it.
    [[nodiscard]] const std::string& name() const noexcept { return title; }

    /// A new source over the whole file, with lines of at most @p limit characters.
    /// @throws tool_error when it cannot be opened any more.
    [[nodiscard]] kvr::line_source lines(std::size_t limit) const;

    /// Throws if @p source has met a read error.
    /// @throws tool_error
    void require_whole(const kvr::line_source& source) const;

private:
    std::string path;
    std::string title;
    std::string text; ///< of standard input
};

} // namespace kvrmem
