#pragma once

#include "tools/kvrmem/lsp/text_buffer.h"

#include <cstddef>
#include <cstdint>

namespace kvrmem::lsp {

/// Finds the lines of offsets that mostly ascend in small steps.
class line_cursor {
public:
    /// @param of kept alive by the caller
    explicit line_cursor(const text_buffer& of) : buffer(of) {}

    /// Returns the line that contains @p offset.
    std::size_t line_of(std::uint64_t offset) {
        constexpr std::size_t most_steps = 4;
        std::size_t steps = 0;
        const bool is_ahead = buffer.start_of(line) <= offset;
        while (is_ahead && steps < most_steps && line + 1 < buffer.line_count() &&
               buffer.start_of(line + 1) <= offset) {
            ++line;
            ++steps;
        }
        if (!is_ahead || steps == most_steps) {
            line = buffer.line_of(offset);
        }
        return line;
    }

private:
    const text_buffer& buffer;
    std::size_t line = 0;
};

} // namespace kvrmem::lsp
