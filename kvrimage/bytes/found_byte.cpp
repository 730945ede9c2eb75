#include "kvrimage/bytes/found_byte.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

place place_of_bytes(std::string_view contents, const span& where) {
    const std::string_view before = contents.substr(0, static_cast<std::size_t>(where.offset));
    return {1 + static_cast<std::uint64_t>(std::ranges::count(before, '\n')),
            before.size() - (before.rfind('\n') + 1) + 1, where.offset, where.length};
}

} // namespace

std::optional<place> find_byte_of_word(std::string_view contents, const read_options& options,
                                       std::uint64_t address, const byte_finder& find) {
    const std::uint64_t bytes = bytes_of_width(options.width.value_or(bits_per_byte));
    const span where = find(options.base.value_or(0) + address * bytes);
    if (where.length != 0) {
        return place_of_bytes(contents, where);
    }
    return std::nullopt;
}

} // namespace kvrimage
