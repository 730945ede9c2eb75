#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Texts for the offsets from `first` to `last`, repeated as often as necessary.
struct filling {
    std::uint64_t first;
    std::uint64_t last;
    std::vector<std::string_view> texts;
};

inline image_words words_of(std::uint64_t depth, std::initializer_list<filling> fillings) {
    image_words words(depth);
    for (const filling& part : fillings) {
        words.fill(part.first, part.last, part.texts);
    }
    return words;
}

inline memory_image memory_of(std::uint32_t width, std::uint64_t depth,
                              std::initializer_list<filling> fillings, std::uint64_t base = 0) {
    return {width, std::make_unique<image_words>(words_of(depth, fillings)), base};
}

/// The runs of all @p words, in sequence.
template <class Taker>
void take_all(const image_words& words, Taker& taker) {
    for (std::uint64_t offset = 0; offset < words.size();) {
        const text_run run = words.run_at(offset);
        taker.take(run);
        offset = run.last + 1;
    }
}

/// @p digits random characters of @p alphabet.
inline std::string random_text(std::mt19937& random, std::string_view alphabet, std::size_t digits) {
    std::string text;
    while (text.size() < digits) {
        text += alphabet[random() % alphabet.size()];
    }
    return text;
}

} // namespace kvrimage
