#include "kvrimage/operations/byte_mapping.h"

#include "kvr/numeric/character_block.h"
#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/image/work_position.h"
#include "kvrimage/operations/byte_numbers.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Maps words of up to 16 bytes as numbers, in parts.
class number_mapper {
public:
    number_mapper(const byte_words& held, const word_mapping& by)
        : mapping(by),
          reader(held),
          new_size((by.width + bits_per_byte - 1) / bits_per_byte),
          is_big(held.order() == byte_order::big) {}

    /// Maps @p words and writes the new words to @p to. @p words has at most the bytes that the reader takes,
    /// and @p to needs room for 16 more bytes than the new words.
    void map(std::string_view words, char* to) {
        char* const begin = to;
        reader.read(words, [&](const wide_number& value) {
            const wide_number made = mapping.number(value);
            kvr::store_eight(made.low, to);
            if (new_size > bytes_per_limb) {
                kvr::store_eight(made.high, to + bytes_per_limb);
            }
            to += new_size;
        });
        if (is_big) {
            reverse_words({begin, to}, new_size);
        }
    }

private:
    const word_mapping& mapping;
    byte_number_reader reader;
    std::size_t new_size;
    bool is_big;
};

/// Maps all blocks. @p map gets whole old words and the place of the new ones.
template <class Map>
byte_words mapped_blocks(const byte_words& held, std::uint32_t width, Map&& map) {
    const std::size_t old_size = held.bytes_per_word();
    const std::size_t new_size = (width + bits_per_byte - 1) / bits_per_byte;
    const std::size_t part = std::max<std::size_t>(byte_number_reader::most_at_once / old_size, 1) * old_size;
    std::uint64_t words = 0;
    for (const byte_words::block& each : held.blocks()) {
        words += each.bytes.size() / old_size;
    }
    const auto made = std::make_shared<byte_buffer>();
    made->reserve(words * new_size + 2 * bytes_per_limb); // numbers are written as whole limbs
    std::vector<byte_words::block> blocks;
    blocks.reserve(held.blocks().size());
    for (const byte_words::block& each : held.blocks()) {
        blocks.push_back({each.first, {made->end(), each.bytes.size() / old_size * new_size}});
        for (std::string_view left = each.bytes; !left.empty();) {
            const std::string_view some = left.substr(0, part);
            note_work(made->size(), words * new_size);
            map(some, made->end());
            made->used(some.size() / old_size * new_size);
            left.remove_prefix(some.size());
        }
    }
    return {std::move(blocks), width, held.order(), made};
}

} // namespace

std::optional<byte_words> mapped_bytes(const image_words& words, const word_mapping& mapping) {
    const byte_words* const held = words.bytes();
    if (held == nullptr) {
        return std::nullopt;
    }
    if (mapping.bytes && held->width() % bits_per_byte == 0) {
        return mapped_blocks(*held, mapping.width, [&mapping](std::string_view some, char* to) {
            mapping.bytes({to, some.copy(to, some.size())});
        });
    }
    if (held->width() > widest_number_word || mapping.width > widest_number_word) {
        return std::nullopt;
    }
    number_mapper mapper(*held, mapping);
    return mapped_blocks(*held, mapping.width,
                         [&mapper](std::string_view some, char* to) { mapper.map(some, to); });
}

} // namespace kvrimage
