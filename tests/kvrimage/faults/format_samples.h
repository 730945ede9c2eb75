#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

/// Files of a format whose words, comments and faults take every part of its code that allocates.
struct format_sample {
    std::string_view format; ///< its identifier
    std::string contents;    ///< can be read; "" for a format that is written only
    std::string broken;      ///< cannot, and may have repairs
    std::uint32_t width;     ///< of the words; 0: the file or its words say it
    bool has_bytes = false;  ///< words are made of bytes, which need an order

    [[nodiscard]] kvrimage::read_options options() const;
};

/// One for each format of the library.
[[nodiscard]] const std::vector<format_sample>& format_samples();

} // namespace kvrimage_tests
