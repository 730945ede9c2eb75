#include "tools/kvrmem/generate/jpeg_file.h"

#include <stdexcept>

// A build without the JPEG library.

namespace kvrmem {

kvrimage::raster jpeg_of(std::string_view /*contents*/, std::uint64_t /*most_pixels*/) {
    throw std::invalid_argument("this kvrmem was built without a library that reads JPEG");
}

} // namespace kvrmem
