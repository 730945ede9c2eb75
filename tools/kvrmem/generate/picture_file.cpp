#include "tools/kvrmem/generate/picture_file.h"

#include "tools/kvrmem/generate/jpeg_file.h"
#include "tools/kvrmem/generate/picture_size.h"
#include "tools/kvrmem/generate/png_chunks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <stdexcept>

namespace {

/// The remaining bytes that the decoder may allocate for one picture. Freed bytes are not returned.
struct decoder_budget {
    std::size_t bytes_left;
    bool is_exceeded;

    /// Returns false if too little is left.
    bool take(std::size_t size) noexcept {
        is_exceeded |= size > bytes_left;
        bytes_left -= is_exceeded ? 0 : size;
        return !is_exceeded;
    }
};

// The decoder passes no context to its allocator.
thread_local decoder_budget budget_of_picture{}; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// NOLINTBEGIN(cppcoreguidelines-no-malloc): required by a C decoder
void* allocate_for_picture(std::size_t size) {
    return budget_of_picture.take(size) ? std::malloc(size) : nullptr;
}

void* reallocate_for_picture(void* old, std::size_t old_size, std::size_t size) {
    return budget_of_picture.take(size - std::min(old_size, size)) ? std::realloc(old, size) : nullptr;
}
// NOLINTEND(cppcoreguidelines-no-malloc)

} // namespace

// Only the supported formats are enabled, to reduce the attack surface. Processor-specific code is disabled,
// so that a picture gives the same words on every machine.
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_ONLY_BMP
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_SIMD
#define STBI_MALLOC allocate_for_picture
#define STBI_REALLOC_SIZED reallocate_for_picture
#define STBI_FREE std::free
// The decoder copies zero bytes of an empty chunk to a null buffer, which a sanitizer would report.
#ifdef __clang__
#pragma clang attribute push(__attribute__((no_sanitize("nonnull-attribute"))), apply_to = function)
#endif
#include <stb/stb_image.h>
#ifdef __clang__
#pragma clang attribute pop
#endif

namespace kvrmem {

namespace {

constexpr int channels = 4;
constexpr unsigned opaque = 255;

struct pixel_deleter {
    void operator()(unsigned char* pixels) const noexcept { stbi_image_free(pixels); }
};
using pixel_bytes = std::unique_ptr<unsigned char, pixel_deleter>;

/// Reads the bytes of a file and detects a truncated file. The library itself replaces missing bytes by 0.
class byte_reader {
public:
    explicit byte_reader(std::string_view bytes) : rest(bytes) {}
    [[nodiscard]] bool was_asked_for_more() const noexcept { return is_exhausted; }

    static const stbi_io_callbacks calls;

private:
    static byte_reader& of(void* reader) { return *static_cast<byte_reader*>(reader); }

    std::size_t take(std::size_t size) {
        is_exhausted |= rest.empty() && size > 0;
        const std::size_t taken = std::min(size, rest.size());
        rest.remove_prefix(taken);
        return taken;
    }
    static int read(void* reader, char* to, int size) {
        const std::string_view bytes = of(reader).rest;
        const std::size_t taken = of(reader).take(static_cast<std::size_t>(size));
        bytes.copy(to, taken);
        return static_cast<int>(taken);
    }
    static void skip(void* reader, int size) { of(reader).take(static_cast<std::size_t>(std::max(size, 0))); }
    static int is_at_end(void* reader) { return of(reader).rest.empty() ? 1 : 0; }

    std::string_view rest;
    bool is_exhausted = false;
};

const stbi_io_callbacks byte_reader::calls = {read, skip, is_at_end};

[[noreturn]] void refuse_picture() {
    const char* const reason = stbi_failure_reason();
    throw std::invalid_argument(
        fmt::format("this is not a valid PNG, BMP or JPEG file ({})", reason != nullptr ? reason : "empty"));
}

bool is_jpeg(std::string_view contents) noexcept {
    return contents.starts_with("\xFF\xD8\xFF");
}

bool is_png(std::string_view contents) noexcept {
    return contents.starts_with("\x89PNG\r\n\x1A\n");
}

/// Returns the upper limit of bytes for decoding a picture of @p pixels. A PNG is collected in a buffer that
/// doubles and inflated into another one; its pixels of up to 8 bytes are unpacked and converted in several
/// copies.
std::size_t most_bytes_of_decoding(std::size_t pixels, std::size_t size_of_file) {
    constexpr std::uint64_t bytes_of_pixel = 8;
    constexpr std::uint64_t copies = 6;
    constexpr std::uint64_t least_buffers = std::uint64_t{64} << 10U;
    const std::uint64_t most =
        least_buffers + copies * bytes_of_pixel * pixels + 2 * std::uint64_t{size_of_file};
    return static_cast<std::size_t>(std::min<std::uint64_t>(most, std::numeric_limits<std::size_t>::max()));
}

struct picture_size {
    std::uint32_t columns;
    std::uint32_t rows;
};

/// Returns the stated size of the picture, which is neither empty nor too large.
picture_size size_of_picture(std::string_view contents) {
    int columns = 0;
    int rows = 0; // negative in a BMP with the top row first
    int found = 0;
    byte_reader head(contents);
    if (stbi_info_from_callbacks(&byte_reader::calls, &head, &columns, &rows, &found) == 0) {
        refuse_picture();
    }
    const picture_size size = {static_cast<std::uint32_t>(columns),
                               rows < 0 ? 0U - static_cast<std::uint32_t>(rows)
                                        : static_cast<std::uint32_t>(rows)};
    if (size.columns == 0 || size.rows == 0) {
        throw std::invalid_argument("the picture has no pixels");
    }
    require_size(size.columns, size.rows, most_picture_pixels);
    return size;
}

/// Returns the pixels of a picture of @p size, top row first, `channels` bytes each.
pixel_bytes decode_picture(std::string_view contents, const picture_size& size) {
    int columns = 0;
    int rows = 0;
    int found = 0;
    byte_reader reader(contents);
    budget_of_picture = {most_bytes_of_decoding(std::size_t{size.columns} * size.rows, contents.size()),
                         false};
    pixel_bytes decoded(
        stbi_load_from_callbacks(&byte_reader::calls, &reader, &columns, &rows, &found, channels));
    if (budget_of_picture.is_exceeded) {
        throw std::invalid_argument(
            fmt::format("the picture holds more data than {} x {} pixels need", size.columns, size.rows));
    }
    if (!decoded) {
        refuse_picture();
    }
    if (reader.was_asked_for_more()) {
        throw std::invalid_argument("the picture is cut off");
    }
    return decoded;
}

std::uint8_t over_black(unsigned char channel, unsigned opacity) {
    return static_cast<std::uint8_t>((channel * opacity + opaque / 2) / opaque);
}

} // namespace

read_picture picture_of(std::string_view contents) {
    if (is_jpeg(contents)) {
        return {jpeg_of(contents, most_picture_pixels), false};
    }
    const picture_size size = size_of_picture(contents);
    const std::size_t count = std::size_t{size.columns} * size.rows;
    const pixel_bytes decoded = decode_picture(contents, size);
    if (is_png(contents) && has_damaged_chunk(contents)) {
        throw std::invalid_argument("the picture is damaged");
    }
    read_picture read;
    read.pixels.columns = size.columns;
    read.pixels.pixels.reserve(count);
    for (const unsigned char* pixel = decoded.get(); read.pixels.pixels.size() < count; pixel += channels) {
        const unsigned opacity = pixel[3];
        read.has_transparency |= opacity != opaque;
        read.pixels.pixels.push_back(
            {over_black(pixel[0], opacity), over_black(pixel[1], opacity), over_black(pixel[2], opacity)});
    }
    return read;
}

} // namespace kvrmem
