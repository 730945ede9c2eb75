#include "kvrimage/bytes/found_byte.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/exchange/line_place.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

std::optional<place> find_byte_of_word(std::string_view contents, const read_options& options,
                                       std::uint64_t address, const byte_finder& find) {
    const std::uint64_t bytes = bytes_of_width(options.width.value_or(bits_per_byte));
    const span where = find(options.base.value_or(0) + address * bytes);
    if (where.length != 0) {
        return line_place(contents, where);
    }
    return std::nullopt;
}

} // namespace kvrimage
