#include "tools/kvrmem/generate/png_chunks.h"

#include "kvrimage/image/number_of_bytes.h"
#include "kvrimage/operations/checksum/crc.h"

#include <cstddef>
#include <cstdint>

namespace kvrmem {

namespace {

constexpr std::size_t signature_size = 8;
constexpr std::size_t number_size = 4; ///< bytes of a length, a type, and a CRC

std::uint32_t big_number(std::string_view bytes) {
    return static_cast<std::uint32_t>(
        kvrimage::number_of_bytes(bytes.substr(0, number_size), kvrimage::byte_order::big));
}

std::uint32_t check_of(std::string_view bytes) {
    kvrimage::crc check({32, 0x04C11DB7, 0xFFFFFFFF, true, true, 0xFFFFFFFF});
    check.add(bytes);
    return static_cast<std::uint32_t>(check.value());
}

} // namespace

bool has_damaged_chunk(std::string_view contents) {
    constexpr std::size_t frame_size = 3 * number_size; // length and type before the data, CRC after it
    std::string_view rest = contents.substr(signature_size);
    while (rest.size() >= frame_size) {
        const std::size_t length = big_number(rest);
        if (length > rest.size() - frame_size) {
            return true;
        }
        const std::string_view checked = rest.substr(number_size, number_size + length);
        if (check_of(checked) != big_number(rest.substr(2 * number_size + length))) {
            return true;
        }
        if (checked == "IEND") {
            return false;
        }
        rest.remove_prefix(frame_size + length);
    }
    return true;
}

} // namespace kvrmem
