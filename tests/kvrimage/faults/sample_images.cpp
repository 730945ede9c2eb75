#include "tests/kvrimage/faults/sample_images.h"

#include "kvrimage/bytes/image_bytes.h"

#include <fmt/format.h>

#include <string>
#include <vector>

namespace kvrimage_tests {

using namespace kvrimage;

word wide_word(std::uint64_t number) {
    return word::parse(fmt::format("{0:08X}{0:08X}{0:08X}", number), radix::hex, 96).value.value();
}

memory_image image_of_wide_words() {
    memory_image image(96, 64, 8);
    image.fill({10, 40}, std::vector{wide_word(1), wide_word(2), wide_word(0x80000000)});
    image.fill({44, 55}, std::vector{wide_word(0xFFFFFFFF)});
    image.set(20, wide_word(0x1234));
    image.set(71, wide_word(5));
    return image;
}

memory_image image_held_as_bytes() {
    std::string bytes;
    for (unsigned number = 0; number < 48; ++number) {
        bytes += static_cast<char>(number % 5 == 0 ? 0 : number * 37);
    }
    byte_options options;
    options.width = 16;
    options.base = 8;
    return image_of_bytes(bytes, options);
}

memory_image deepest_image() {
    memory_image image(16, deepest_memory);
    constexpr std::uint64_t middle = deepest_memory / 2;
    image.fill({middle - 100, middle + 100}, std::vector{word::of(1, 16), word::of(2, 16), word::of(3, 16)});
    image.set(0, word::of(0x1234, 16));
    image.set(deepest_memory - 1, word::of(0xFFFF, 16));
    return image;
}

memory_image image_of_varied_words() {
    constexpr std::uint64_t words = 1200; // a page has 1,024
    memory_image image(16, words);
    for (std::uint64_t address = 0; address < words; ++address) {
        image.set(address, word::of(address * 7 % 2048, 16));
    }
    return image;
}

memory_image image_with_dont_care() {
    memory_image image = image_of_wide_words();
    image.set(12, word::parse(std::string(24, 'X'), radix::hex, 96).value.value());
    image.set(13, word::parse(std::string(95, '1') + "X", radix::bin, 96).value.value());
    return image;
}

} // namespace kvrimage_tests
