#include "tools/kvrmem/generate/jpeg_file.h"

#include "tools/kvrmem/generate/picture_size.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio> // required by the library's header
#include <jpeglib.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

/// A picture with more scans is only meant to take time.
constexpr int most_scans = 100;

/// The error handler of the library: it jumps, past C functions only.
struct jump_at_error {
    jpeg_error_mgr calls; ///< must be first: the library passes its address
    std::jmp_buf target;
    std::array<char, JMSG_LENGTH_MAX> reason;
    bool has_too_many_scans;
};

jump_at_error& error_of(j_common_ptr decoder) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): its first member
    return *reinterpret_cast<jump_at_error*>(decoder->err);
}

void jump(j_common_ptr decoder) {
    jump_at_error& error = error_of(decoder);
    error.calls.format_message(decoder, error.reason.data());
    std::longjmp(error.target, 1); // NOLINT(cert-err52-cpp): required by the library
}

/// Counts warnings instead of printing them.
void count_warning(j_common_ptr decoder, int level) {
    decoder->err->num_warnings += level < 0 ? 1 : 0;
}

void limit_scans(j_common_ptr decoder) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): it is a decompressor
    if (reinterpret_cast<j_decompress_ptr>(decoder)->input_scan_number > most_scans) {
        error_of(decoder).has_too_many_scans = true;
        std::longjmp(error_of(decoder).target, 1); // NOLINT(cert-err52-cpp)
    }
}

/// Decodes one picture. Its functions call the library, which may jump out of them, so they have no objects
/// with destructors.
class jpeg_decoder {
public:
    jpeg_decoder() {
        decoder.err = jpeg_std_error(&error.calls);
        error.calls.error_exit = jump;
        error.calls.emit_message = count_warning;
        progress.progress_monitor = limit_scans;
    }
    ~jpeg_decoder() { jpeg_destroy_decompress(&decoder); }
    jpeg_decoder(const jpeg_decoder&) = delete;
    jpeg_decoder& operator=(const jpeg_decoder&) = delete;

    /// Returns false if the picture is broken, as do the functions below.
    bool read_head(std::string_view contents) {
        if (setjmp(error.target) != 0) { // NOLINT(cert-err52-cpp)
            return false;
        }
        // Bytes after the picture may be more than the library takes.
        constexpr std::uint64_t most = std::numeric_limits<unsigned long>::max();
        const auto size = static_cast<unsigned long>(std::min<std::uint64_t>(contents.size(), most));
        jpeg_create_decompress(&decoder);
        decoder.progress = &progress;
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes
        jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char*>(contents.data()), size);
        jpeg_read_header(&decoder, TRUE);
        decoder.out_color_space = JCS_RGB;
        decoder.dct_method = JDCT_ISLOW; // the same result on every machine
        return true;
    }
    /// @param pixels room for all pixels
    bool read_pixels(unsigned char* pixels) {
        if (setjmp(error.target) != 0) { // NOLINT(cert-err52-cpp)
            return false;
        }
        jpeg_start_decompress(&decoder);
        while (decoder.output_scanline < decoder.output_height) {
            unsigned char* row = pixels + std::size_t{decoder.output_scanline} * decoder.output_width * 3;
            jpeg_read_scanlines(&decoder, &row, 1);
        }
        jpeg_finish_decompress(&decoder);
        return true;
    }
    [[nodiscard]] std::uint32_t columns() const noexcept { return decoder.image_width; }
    [[nodiscard]] std::uint32_t rows() const noexcept { return decoder.image_height; }
    [[nodiscard]] bool has_warnings() const noexcept { return error.calls.num_warnings != 0; }
    [[nodiscard]] J_COLOR_SPACE colors() const noexcept { return decoder.jpeg_color_space; }
    /// Returns why one of the functions above has failed.
    [[nodiscard]] std::string refusal() const {
        return error.has_too_many_scans ? fmt::format("the picture has more than {} scans", most_scans)
                                        : fmt::format("this is a broken JPEG ({})", error.reason.data());
    }

private:
    jump_at_error error{};
    jpeg_progress_mgr progress{};
    jpeg_decompress_struct decoder{};
};

void require_colors(J_COLOR_SPACE colors) {
    if (colors != JCS_GRAYSCALE && colors != JCS_YCbCr && colors != JCS_RGB) {
        const char* const name = colors == JCS_CMYK   ? "CMYK"
                                 : colors == JCS_YCCK ? "YCCK"
                                                      : "an unknown color space";
        throw std::invalid_argument(
            fmt::format("the picture is in {}; only gray, YCbCr and RGB are read", name));
    }
}

} // namespace

kvrimage::raster jpeg_of(std::string_view contents, std::uint64_t most_pixels) {
    jpeg_decoder decoder;
    if (!decoder.read_head(contents)) {
        throw std::invalid_argument(decoder.refusal());
    }
    require_colors(decoder.colors());
    require_size(decoder.columns(), decoder.rows(), most_pixels);
    const std::size_t count = std::size_t{decoder.columns()} * decoder.rows();
    std::vector<unsigned char> bytes(count * 3);
    if (!decoder.read_pixels(bytes.data())) {
        throw std::invalid_argument(decoder.refusal());
    }
    if (decoder.has_warnings()) {
        throw std::invalid_argument("the picture is cut off or damaged");
    }
    kvrimage::raster read{decoder.columns(), {}};
    read.pixels.reserve(count);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        read.pixels.push_back({bytes[at], bytes[at + 1], bytes[at + 2]});
    }
    return read;
}

} // namespace kvrmem
