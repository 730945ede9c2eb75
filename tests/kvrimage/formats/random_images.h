#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace kvrimage_tests {

/// The features that a random memory may have.
struct image_traits {
    bool gaps = false;      ///< unset words
    bool dont_care = false; ///< "X" digits, always whole hexadecimal ones, which every notation has
    bool base = false;      ///< a lowest address above 0
};

/// A memory of words of @p width bits: single words, runs and cycles of several words.
[[nodiscard]] kvrimage::memory_image random_image(std::mt19937& random, std::uint32_t width,
                                                  std::uint64_t most_words, const image_traits& traits);

/// The same words, starting at address 0.
[[nodiscard]] kvrimage::memory_image moved_to_zero(const kvrimage::memory_image& image);

/// The options for writing a memory in a format and for reading the file again.
struct file_form {
    kvrimage::write_options to;
    kvrimage::read_options back;
};

/// A form of files of @p as for @p image, with random values for the options that the format leaves open.
/// When the file is read again, the lowest address becomes 0.
[[nodiscard]] file_form random_form(std::mt19937& random, const kvrimage::format& as,
                                    const kvrimage::memory_image& image);
/// The same, with default values if there are any.
[[nodiscard]] file_form usual_form(std::mt19937& random, const kvrimage::format& as,
                                   const kvrimage::memory_image& image);

/// The broken diagnostics of @p result.
[[nodiscard]] std::string reasons_of(const kvrimage::read_result& result);

} // namespace kvrimage_tests
