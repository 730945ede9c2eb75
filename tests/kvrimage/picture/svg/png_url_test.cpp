#include "kvrimage/operations/checksum/crc.h"
#include "kvrimage/picture/svg/png_url.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvrimage;

// The pixels that other programs read.
TEST(PngUrl, HoldsPixelsAndGaps) {
    const std::vector<std::optional<color>> pixels = {color{255, 0, 0}, color{0, 255, 0}, color{0, 0, 255},
                                                      std::nullopt};
    EXPECT_EQ(svg::png_url(pixels, 2),
              "data:image/png;base64,"
              "iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAYAAABytg0kAAAAHUlEQVR4AQESAO3/AP8AAP8A/wD/"
              "AAAA//8AAAAAP9IF+82QrEwAAAAASUVORK5CYII=");
}

// More than one block of the stream.
TEST(PngUrl, HoldsLargePictures) {
    const std::vector<std::optional<color>> pixels(20000, color{1, 2, 3});
    const std::string url = svg::png_url(pixels, 200);
    EXPECT_EQ(url.size(), 106922U);
    crc check({32, 0x04C11DB7, 0xFFFFFFFF, true, true, 0xFFFFFFFF});
    check.add(url);
    EXPECT_EQ(check.value(), 0x6EAB961CU);
}

} // namespace
