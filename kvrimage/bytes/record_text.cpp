#include "kvrimage/bytes/record_text.h"

#include "kvr/numeric/digit_blocks.h"
#include "kvrimage/image/hex_block.h"

namespace kvrimage {

char* put_record(const record_style& style, std::uint64_t address, std::string_view data,
                 char* place) noexcept {
    for (const char character : style.mark) {
        *place++ = character;
    }
    const std::uint64_t header = style.header(data.size(), address);
    const std::size_t header_bytes = style.header_bytes();
    const unsigned sum = style.sum - sum_of_limb(header);
    write_limb(header << 8 * (sizeof(header) - header_bytes), place); // digits after the header are
                                                                      // overwritten
    place += 2 * header_bytes;
    const unsigned checksum = sum - encode_blocks(data, place);
    place += 2 * data.size();
    kvr::write_hex_pair(place, checksum);
    place[2] = '\n';
    return place + 3;
}

} // namespace kvrimage
