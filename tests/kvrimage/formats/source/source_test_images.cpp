#include "tests/kvrimage/formats/source/source_test_images.h"

namespace kvrimage_tests {

kvrimage::memory_image image_of_hex(std::uint32_t width, const std::vector<std::string_view>& texts,
                                    std::uint64_t base) {
    kvrimage::memory_image image(width, texts.size(), base);
    for (std::uint64_t index = 0; index < texts.size(); ++index) {
        image.set(base + index,
                  kvrimage::word::parse(texts[index], kvrimage::radix::hex, width).value.value());
    }
    return image;
}

} // namespace kvrimage_tests
