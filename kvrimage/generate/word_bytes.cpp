#include "kvrimage/generate/word_bytes.h"

#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

generated_words::generated_words(std::uint32_t width, std::uint64_t words)
    : bits(word(width).width()),
      word_size(bytes_of_width(width)) {
    bytes.reserve(words * word_size);
}

void generated_words::add(std::uint64_t value) {
    add_limbs([&value] {
        const std::uint64_t limb = value;
        value = 0;
        return limb;
    });
}

void generated_words::add_signed(std::int64_t value) {
    add_limbs([&value] {
        const auto limb = static_cast<std::uint64_t>(value);
        value = value < 0 ? -1 : 0;
        return limb;
    });
}

void generated_words::add(const word& value) {
    bytes += value.to_bytes(byte_order::little).value();
}

memory_image generated_words::take() const {
    return image_of_bytes(bytes, {bits, byte_order::little});
}

void generated_words::append(std::uint64_t value, std::size_t size) {
    for (std::size_t index = 0; index < size; ++index) {
        bytes += static_cast<char>(value >> (index * bits_per_byte));
    }
}

void generated_words::clear_surplus() {
    const auto surplus = static_cast<std::uint32_t>(word_size * bits_per_byte - bits);
    bytes.back() = static_cast<char>(static_cast<unsigned char>(bytes.back()) & 0xFFU >> surplus);
}

} // namespace kvrimage
