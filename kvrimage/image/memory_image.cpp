#include "kvrimage/image/memory_image.h"

#include "kvrimage/image/image_words.h"

#include <utility>

namespace kvrimage {

memory_image::memory_image(std::uint32_t width, std::unique_ptr<image_words> words, std::uint64_t base)
    : bits(width),
      lowest(base),
      contents(std::move(words)) {}
memory_image::memory_image(memory_image&& other) noexcept = default;
memory_image& memory_image::operator=(memory_image&& other) noexcept = default;
memory_image::~memory_image() = default;

std::uint64_t memory_image::depth() const noexcept {
    return contents->size();
}

} // namespace kvrimage
