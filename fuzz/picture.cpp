// Reads pictures, then writes the same pixels as a plain bitmap, which must be read as the same picture.

#include "fuzz/exact_bytes.h"
#include "fuzz/expectation.h"
#include "fuzz/resource_limits.h"
#include "fuzz/tool_targets.h"
#include "tools/kvrmem/generate/picture_file.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace kvr_fuzz {

namespace {

using kvrimage::color;
using kvrimage::raster;
using kvrmem::read_picture;

/// The largest picture that is written again, in pixels.
constexpr std::size_t most_pixels = 10'000;

std::optional<read_picture> read_if_picture(std::string_view contents) {
    try {
        return kvrmem::picture_of(contents);
    } catch (const std::invalid_argument& refusal) {
        expect(*refusal.what() != '\0', "a picture is refused without a reason");
        return std::nullopt;
    }
}

std::string in_four_bytes(std::uint64_t value) {
    std::string bytes;
    for (int count = 0; count < 4; ++count, value /= 256) {
        bytes += static_cast<char>(value % 256);
    }
    return bytes;
}

/// A bitmap of 24 bits per pixel, from the bottom row to the top.
std::string bitmap_of(const raster& picture) {
    const std::size_t rows = picture.pixels.size() / picture.columns;
    std::string body;
    for (std::size_t row = rows; row-- > 0;) {
        for (std::size_t column = 0; column < picture.columns; ++column) {
            const color& pixel = picture.pixels[row * picture.columns + column];
            for (const std::uint8_t channel : {pixel.blue, pixel.green, pixel.red}) {
                body += static_cast<char>(channel);
            }
        }
        body.append((4 - body.size() % 4) % 4, '\0');
    }
    constexpr std::size_t head_size = 54;
    const std::string one_plane_24_bits("\1\0\x18\0", 4);
    return "BM" + in_four_bytes(head_size + body.size()) + in_four_bytes(0) + in_four_bytes(head_size) +
           in_four_bytes(40) + in_four_bytes(picture.columns) + in_four_bytes(rows) + one_plane_24_bits +
           in_four_bytes(0) + in_four_bytes(body.size()) + std::string(16, '\0') + body;
}

} // namespace

void try_picture(std::string_view input) {
    const exact_bytes file(input);
    const auto picture = read_if_picture(file.view());
    if (!picture) {
        return;
    }
    const raster& pixels = picture->pixels;
    expect(pixels.columns != 0 && !pixels.pixels.empty() && pixels.pixels.size() % pixels.columns == 0,
           "a picture without whole rows");
    expect(pixels.pixels.size() <= kvrmem::most_picture_pixels, "a picture with too many pixels");
    const kvrimage::memory_image image = picture_words(pixels, {.format = kvrimage::pixel_format::rgb888});
    expect(image.depth() == pixels.pixels.size(), "the number of words");
    if (pixels.pixels.size() > most_pixels) {
        return;
    }
    for (std::size_t index = 0; index < pixels.pixels.size(); ++index) {
        const color& pixel = pixels.pixels[index];
        expect(image[index]->to_unsigned() == (std::uint64_t{pixel.red} << 16U |
                                               std::uint64_t{pixel.green} << 8U | std::uint64_t{pixel.blue}),
               "the word of a pixel");
    }
    const read_picture again = kvrmem::picture_of(bitmap_of(pixels));
    expect(again.pixels.columns == pixels.columns && again.pixels.pixels == pixels.pixels,
           "a picture that is written again is another one");
}

} // namespace kvr_fuzz
