#pragma once

#include "kvrimage/files/replacement_file.h"

#include <string_view>

namespace kvrmem {

/// Writes @p text to standard output without a buffer.
/// @throws kvrimage::file_error if it cannot be written.
void print(std::string_view text);

/// Standard output with a large buffer, for long texts.
class output_stream {
public:
    output_stream();
    void write(std::string_view text) { file.write(text); }

    /// Writes the rest of the buffer. Nothing may be written after it.
    /// @throws kvrimage::file_error if not everything could be written.
    void finish() { file.commit(); }

private:
    kvrimage::replacement_file file{"-"};
};

} // namespace kvrmem
