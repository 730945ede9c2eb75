#pragma once

#include <string_view>

namespace kvrimage {

/// Receives the text of a file in pieces.
class text_sink {
public:
    virtual ~text_sink() = default;
    /// Receives the next piece. An exception ends the writing and reaches the caller.
    virtual void write(std::string_view text) = 0;
};

} // namespace kvrimage
