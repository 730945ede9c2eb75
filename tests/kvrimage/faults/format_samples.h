#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

/// Files of a format. Their words, comments and faults reach every part of its code that allocates.
struct format_sample {
    std::string_view format; ///< its identifier
    std::string contents;    ///< readable; "" for a format that can only be written
    std::string broken;      ///< not readable; may have repairs
    std::uint32_t width;     ///< in bits; 0 if the file or its words determine it
    bool has_bytes = false;  ///< words consist of bytes and need a byte order

    [[nodiscard]] kvrimage::read_options options() const;
};

/// The samples, one for each format of the library.
[[nodiscard]] const std::vector<format_sample>& format_samples();

} // namespace kvrimage_tests
