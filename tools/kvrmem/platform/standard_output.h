#pragma once

#include "kvrimage/files/replacement_file.h"

#include <string_view>

namespace kvrmem {

/// Writes @p text to standard output, at once.
/// @throws tool_error (input/output) when it cannot be written.
void print(std::string_view text);

/// Standard output for long texts, through one large buffer.
class output_stream {
public:
    output_stream();
    void write(std::string_view text) { file.write(text); }

    /// Writes out what is buffered; nothing may be written after that.
    /// @throws kvrimage::file_error when not everything could be written.
    void finish() { file.commit(); }

private:
    kvrimage::replacement_file file{"-"};
};

} // namespace kvrmem
