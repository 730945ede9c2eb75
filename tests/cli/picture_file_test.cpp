// Pictures that the tool reads: valid ones in each format, and hostile ones.

#include "kvrimage/operations/checksum/crc.h"
#include "tools/kvrmem/generate/picture_file.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio> // the JPEG header needs it
#include <cstdlib>
#include <jpeglib.h>
#include <random>
#include <stb/stb_image_write.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using kvrimage::color;
using kvrmem::picture_of;

constexpr int columns = 16;
constexpr int rows = 9;

/// A picture without sharp edges, which JPEG changes only slightly.
std::vector<unsigned char> soft_pixels(int channels) {
    std::vector<unsigned char> bytes;
    for (int index = 0; index < columns * rows; ++index) {
        const int column = index % columns;
        const int row = index / columns;
        for (int channel = 0; channel < channels; ++channel) {
            bytes.push_back(static_cast<unsigned char>(8 * column + 10 * row + 5 * channel));
        }
    }
    return bytes;
}

void append_to_string(void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
}

std::string png_file(int channels) {
    std::string file;
    stbi_write_png_to_func(append_to_string, &file, columns, rows, channels, soft_pixels(channels).data(),
                           columns * channels);
    return file;
}

std::string bmp_file() {
    std::string file;
    stbi_write_bmp_to_func(append_to_string, &file, columns, rows, 3, soft_pixels(3).data());
    return file;
}

std::string jpeg_file() {
    std::string file;
    stbi_write_jpg_to_func(append_to_string, &file, columns, rows, 3, soft_pixels(3).data(), 95);
    return file;
}

/// The largest difference of a channel from soft_pixels().
int difference_from_soft(const kvrmem::read_picture& read) {
    const std::vector<unsigned char> wanted = soft_pixels(3);
    EXPECT_EQ(read.pixels.columns, static_cast<unsigned>(columns));
    EXPECT_EQ(read.pixels.pixels.size() * 3, wanted.size());
    int greatest = 0;
    for (std::size_t index = 0; index < read.pixels.pixels.size(); ++index) {
        const color& pixel = read.pixels.pixels[index];
        greatest = std::max({greatest, std::abs(pixel.red - wanted[index * 3]),
                             std::abs(pixel.green - wanted[index * 3 + 1]),
                             std::abs(pixel.blue - wanted[index * 3 + 2])});
    }
    return greatest;
}

TEST(PictureFile, IsReadInEachFormat) {
    EXPECT_EQ(difference_from_soft(picture_of(png_file(3))), 0);
    EXPECT_EQ(difference_from_soft(picture_of(bmp_file())), 0);
    EXPECT_LE(difference_from_soft(picture_of(jpeg_file())), 8);
    EXPECT_FALSE(picture_of(png_file(3)).has_transparency);
}

TEST(PictureFile, IsMixedWithBlackWhereItIsTransparent) {
    const kvrmem::read_picture read = picture_of(png_file(4));
    EXPECT_TRUE(read.has_transparency);
    // The last pixel: 200, 205 and 210 at an opacity of 215 of 255.
    EXPECT_EQ(read.pixels.pixels.back(), (color{169, 173, 177}));
}

TEST(PictureFile, IsRefusedInOtherFormats) {
    for (const char* other : {"", "GIF89a", "P6 1 1 255 abc", "8BPS", "qoif"}) {
        EXPECT_THROW(static_cast<void>(picture_of(other)), std::invalid_argument) << other;
    }
}

/// Reads @p file, which may contain anything: the result must be a picture or a refusal.
bool is_read(const std::string& file) {
    try {
        return !picture_of(file).pixels.pixels.empty();
    } catch (const std::invalid_argument& error) {
        EXPECT_STRNE(error.what(), "");
        return false;
    }
}

TEST(PictureFile, MayBeCutOffAnywhere) {
    for (const std::string& file : {png_file(3), png_file(4), bmp_file(), jpeg_file()}) {
        EXPECT_TRUE(is_read(file));
        for (std::size_t size = 0; size < file.size(); ++size) {
            EXPECT_FALSE(is_read(file.substr(0, size))) << size << " of " << file.size();
        }
    }
}

TEST(PictureFile, MayHaveAnyByteChanged) {
    std::mt19937 random(17);
    int refused = 0;
    for (const std::string& file : {png_file(3), bmp_file(), jpeg_file()}) {
        for (std::size_t at = 0; at < file.size(); ++at) {
            std::string damaged = file;
            damaged[at] = static_cast<char>(random());
            refused += is_read(damaged) ? 0 : 1;
        }
    }
    EXPECT_GT(refused, 20);
}

TEST(PictureFile, PngMayHaveNoBitChanged) {
    const std::string file = png_file(3);
    for (std::size_t at = 0; at < file.size(); ++at) {
        std::string damaged = file;
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << at % 8);
        EXPECT_FALSE(is_read(damaged)) << at;
    }
}

/// The message of the refusal of @p file.
std::string refusal_of(const std::string& file) {
    try {
        static_cast<void>(picture_of(file));
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

TEST(PictureFile, IsRefusedWithTheReason) {
    EXPECT_EQ(refusal_of(jpeg_file().substr(0, jpeg_file().size() - 9)), "the picture is cut off or damaged");
    EXPECT_EQ(refusal_of(bmp_file().substr(0, bmp_file().size() - 9)), "the picture is cut off");
    EXPECT_EQ(refusal_of("GIF89a"), "this is not a valid PNG, BMP or JPEG file (unknown image type)");
}

/// @p file, a BMP, with a different number of rows.
std::string with_bmp_rows(std::string file, std::int32_t number) {
    for (std::size_t index = 0; index < 4; ++index) {
        file[22 + index] = static_cast<char>(static_cast<std::uint32_t>(number) >> 8 * index);
    }
    return file;
}

TEST(PictureFile, MayBeginWithTheTopRow) {
    const std::vector<color> upright = picture_of(bmp_file()).pixels.pixels;
    const kvrmem::read_picture read = picture_of(with_bmp_rows(bmp_file(), -rows));
    EXPECT_EQ(read.pixels.columns, static_cast<unsigned>(columns));
    ASSERT_EQ(read.pixels.pixels.size(), upright.size());
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            EXPECT_EQ(read.pixels.pixels[row * columns + column],
                      upright[(rows - 1 - row) * columns + column]);
        }
    }
}

TEST(PictureFile, IsRefusedByTheRowsThatItClaims) {
    EXPECT_EQ(refusal_of(with_bmp_rows(bmp_file(), INT32_MIN)),
              "the picture has 16 x 2147483648 pixels; at most 4194304 are read");
    EXPECT_EQ(refusal_of(with_bmp_rows(bmp_file(), -0x7FFFFFFF)),
              "the picture has 16 x 2147483647 pixels; at most 4194304 are read");
    EXPECT_EQ(refusal_of(with_bmp_rows(bmp_file(), 0)), "the picture has no pixels");
}

std::string big_endian(std::uint32_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<char>(number >> static_cast<unsigned>(shift)));
    }
    return bytes;
}

std::string png_chunk(const std::string& name, const std::string& body) {
    kvrimage::crc check({32, 0x04C11DB7, 0xFFFFFFFF, true, true, 0xFFFFFFFF});
    check.add(name + body);
    return big_endian(static_cast<std::uint32_t>(body.size())) + name + body +
           big_endian(static_cast<std::uint32_t>(check.value()));
}

/// A PNG of one gray pixel whose @p size bytes inflate to about 160 times as many zeros: a block with fixed
/// codes, which contains a literal and then copies of 258 bytes at distance 1, 13 bits each.
std::string png_bomb(std::size_t size) {
    std::string stream = "\x78\x01";
    unsigned bits = 0;
    unsigned count = 0;
    const auto put = [&](unsigned value, unsigned width) {
        bits |= value << count;
        for (count += width; count >= 8; count -= 8) {
            stream.push_back(static_cast<char>(bits));
            bits >>= 8U;
        }
    };
    put(0b011, 3);       // the last block, of fixed codes
    put(0b0000'1100, 8); // the literal 0 with the code 00110000, first bit first
    while (stream.size() < size) {
        put(0b1010'0011, 8); // the length 258 with the code 11000101
        put(0, 5);           // the distance 1
    }
    put(0, 7); // the end of the block
    put(0, 7); // padding to a whole byte
    const std::string head = big_endian(1) + big_endian(1) + std::string("\x08\0\0\0\0", 5);
    return "\x89PNG\r\n\x1A\n" + png_chunk("IHDR", head) + png_chunk("IDAT", stream) + png_chunk("IEND", "");
}

TEST(PictureFile, MayHaveAnEmptyChunkBeforeItsData) {
    std::string file = png_file(3);
    file.insert(file.find("IDAT") - 4, png_chunk("IDAT", ""));
    EXPECT_EQ(difference_from_soft(picture_of(file)), 0);
}

TEST(PictureFile, IsRefusedByWhatItInflatesTo) {
    EXPECT_EQ(refusal_of(png_bomb(100)), ""); // any picture may have 16 KB
    EXPECT_EQ(refusal_of(png_bomb(1'000'000)), "the picture holds more data than 1 x 1 pixels need");
}

TEST(PictureFile, IsRefusedByTheChunkThatItClaims) {
    std::string file = png_bomb(100);
    file[file.find("IDAT") - 4] = '\x3F';
    EXPECT_EQ(refusal_of(file), "the picture holds more data than 1 x 1 pixels need");
}

/// The form in which a JPEG is written.
struct jpeg_shape {
    J_COLOR_SPACE colors;
    int channels;
    std::vector<jpeg_scan_info> scans; ///< if empty, a single scan
};

std::string jpeg_in_shape(const jpeg_shape& shape) {
    jpeg_error_mgr errors{};
    jpeg_compress_struct encoder{};
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &bytes, &size);
    encoder.image_width = columns;
    encoder.image_height = rows;
    encoder.input_components = shape.channels;
    encoder.in_color_space = shape.colors;
    jpeg_set_defaults(&encoder);
    encoder.scan_info = shape.scans.empty() ? nullptr : shape.scans.data();
    encoder.num_scans = static_cast<int>(shape.scans.size());
    jpeg_start_compress(&encoder, TRUE);
    std::vector<unsigned char> pixels = soft_pixels(shape.channels);
    for (int row = 0; row < rows; ++row) {
        unsigned char* begin = &pixels[static_cast<std::size_t>(row * columns * shape.channels)];
        jpeg_write_scanlines(&encoder, &begin, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    std::string file(bytes, bytes + size);
    std::free(bytes); // the JPEG library has allocated it
    return file;
}

/// A scan of the lowest frequency, and a scan of each other frequency of each channel.
std::vector<jpeg_scan_info> scan_for_each_frequency() {
    std::vector<jpeg_scan_info> scans = {{3, {0, 1, 2}, 0, 0, 0, 0}};
    for (int channel = 0; channel < 3; ++channel) {
        for (int frequency = 1; frequency < 64; ++frequency) {
            scans.push_back({1, {channel}, frequency, frequency, 0, 0});
        }
    }
    return scans;
}

TEST(PictureFile, IsRefusedWithMoreThan100Scans) {
    const auto with_scans = [](std::size_t count) {
        std::vector<jpeg_scan_info> scans = scan_for_each_frequency();
        EXPECT_EQ(scans.size(), 190U);
        scans.resize(count);
        return jpeg_in_shape({JCS_RGB, 3, scans});
    };
    EXPECT_EQ(refusal_of(with_scans(190)), "the picture has more than 100 scans");
    EXPECT_EQ(refusal_of(with_scans(101)), "the picture has more than 100 scans");
    EXPECT_EQ(refusal_of(with_scans(100)), "");
}

TEST(PictureFile, IsRefusedInTheColorsOfInks) {
    EXPECT_EQ(refusal_of(jpeg_in_shape({JCS_CMYK, 4, {}})),
              "the picture is in CMYK; only gray, YCbCr and RGB are read");
    EXPECT_EQ(refusal_of(jpeg_in_shape({JCS_UNKNOWN, 2, {}})),
              "the picture is in an unknown color space; only gray, YCbCr and RGB are read");
    EXPECT_EQ(refusal_of(jpeg_in_shape({JCS_GRAYSCALE, 1, {}})), "");
    EXPECT_LE(difference_from_soft(picture_of(jpeg_in_shape({JCS_RGB, 3, {}}))), 40);
}

TEST(PictureFile, IsRefusedByTheSizeThatItClaims) {
    std::string file = bmp_file();
    file[19] = '\x7F'; // columns
    file[23] = '\x7F'; // rows
    EXPECT_EQ(refusal_of(file), "the picture has 32528 x 32521 pixels; at most 4194304 are read");
    file[20] = 1; // 65536 columns more
    EXPECT_EQ(refusal_of(file), "the picture has 98064 x 32521 pixels; at most 4194304 are read");
}

TEST(PictureFile, IsRefusedByTheSizeThatAJpegClaims) {
    std::string file = jpeg_file();
    const std::size_t frame = file.find("\xFF\xC0");
    file[frame + 5] = '\x7F'; // rows
    file[frame + 7] = '\x7F'; // columns
    EXPECT_EQ(refusal_of(file), "the picture has 32528 x 32521 pixels; at most 4194304 are read");
}

} // namespace
