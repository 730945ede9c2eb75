#include "kvrimage/picture/svg/png_url.h"

#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/checksum/crc.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kvrimage::svg {

namespace {

constexpr std::uint32_t byte_mask = 0xFF;

void append_big(std::string& to, std::uint32_t value) {
    for (std::uint32_t shift = 4 * bits_per_byte; shift > 0;) {
        shift -= bits_per_byte;
        to += static_cast<char>(value >> shift & byte_mask);
    }
}

void append_little_16(std::string& to, std::uint32_t value) {
    to += static_cast<char>(value & byte_mask);
    to += static_cast<char>(value >> bits_per_byte & byte_mask);
}

/// Returns the CRC that PNG uses.
std::uint32_t crc_of(std::string_view bytes) {
    crc check({32, 0x04C11DB7, 0xFFFFFFFF, true, true, 0xFFFFFFFF});
    check.add(bytes);
    return static_cast<std::uint32_t>(check.value());
}

void append_chunk(std::string& to, std::string_view type, std::string_view body) {
    append_big(to, static_cast<std::uint32_t>(body.size()));
    const std::string checked = std::string(type).append(body);
    to += checked;
    append_big(to, crc_of(checked));
}

std::uint32_t adler_of(std::string_view bytes) {
    constexpr std::uint32_t modulus = 65521;
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % modulus;
        high = (high + low) % modulus;
    }
    return high << 16U | low;
}

/// Returns a zlib stream of stored (uncompressed) blocks.
std::string stored(std::string_view bytes) {
    constexpr std::size_t longest_block = 0xFFFF;
    const std::uint32_t adler = adler_of(bytes);
    std::string stream = "\x78\x01";
    while (!bytes.empty()) {
        const std::string_view block = bytes.substr(0, longest_block);
        bytes.remove_prefix(block.size());
        const auto size = static_cast<std::uint32_t>(block.size());
        stream += bytes.empty() ? '\1' : '\0'; // set for the final block
        append_little_16(stream, size);
        append_little_16(stream, ~size);
        stream += block;
    }
    append_big(stream, adler);
    return stream;
}

/// Returns rows of red, green, blue and alpha, each preceded by the filter type 0 (none).
std::string scanlines(std::span<const std::optional<color>> pixels, std::uint32_t columns) {
    std::string lines;
    for (std::size_t index = 0; index < pixels.size(); ++index) {
        if (index % columns == 0) {
            lines += '\0';
        }
        const color shown = pixels[index].value_or(color());
        lines += static_cast<char>(shown.red);
        lines += static_cast<char>(shown.green);
        lines += static_cast<char>(shown.blue);
        lines += pixels[index] ? '\xFF' : '\0';
    }
    return lines;
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t group = 3;
    constexpr std::uint32_t digit_bits = 6;
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += group) {
        const std::string_view part = bytes.substr(at, group);
        std::uint32_t value = 0;
        for (std::size_t index = 0; index < group; ++index) {
            const auto byte = index < part.size() ? static_cast<unsigned char>(part[index]) : '\0';
            value = value << bits_per_byte | static_cast<std::uint32_t>(byte);
        }
        for (std::uint32_t digit = 0; digit <= group; ++digit) {
            const std::uint32_t shift = digit_bits * static_cast<std::uint32_t>(group - digit);
            text += digit <= part.size() ? digits[value >> shift & 0x3FU] : '=';
        }
    }
    return text;
}

} // namespace

std::string png_url(std::span<const std::optional<color>> pixels, std::uint32_t columns) {
    std::string head;
    append_big(head, columns);
    append_big(head, static_cast<std::uint32_t>(pixels.size() / columns));
    head.append("\x08\x06\0\0\0", 5); // 8 bits per channel, RGB with alpha
    std::string file = "\x89PNG\r\n\x1A\n";
    append_chunk(file, "IHDR", head);
    append_chunk(file, "IDAT", stored(scanlines(pixels, columns)));
    append_chunk(file, "IEND", "");
    return "data:image/png;base64," + base64(file);
}

} // namespace kvrimage::svg
