#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace kvrimage_tests {

/// What a random memory may have.
struct image_traits {
    bool gaps = false;      ///< words that are not set
    bool dont_care = false; ///< digits of "X", whole hexadecimal ones, so that every notation has them
    bool base = false;      ///< a lowest address above 0
};

/// A memory of words of @p width bits: single words, runs and cycles of several words.
[[nodiscard]] kvrimage::memory_image random_image(std::mt19937& random, std::uint32_t width,
                                                  std::uint64_t most_words, const image_traits& traits);

/// The same words, from address 0 on.
[[nodiscard]] kvrimage::memory_image moved_to_zero(const kvrimage::memory_image& image);

/// How a memory is written in a format, and how the file is read again.
struct file_form {
    kvrimage::write_options to;
    kvrimage::read_options back;
};

/// A form of files of @p as for @p image, with random answers to what the format leaves open. Reading again
/// makes address 0 of the lowest one.
[[nodiscard]] file_form random_form(std::mt19937& random, const kvrimage::format& as,
                                    const kvrimage::memory_image& image);
/// The same with no answer where there is a usual one.
[[nodiscard]] file_form usual_form(std::mt19937& random, const kvrimage::format& as,
                                   const kvrimage::memory_image& image);

/// What @p result says instead of words: its broken diagnostics.
[[nodiscard]] std::string reasons_of(const kvrimage::read_result& result);

} // namespace kvrimage_tests
