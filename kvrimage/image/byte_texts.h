#pragma once

#include "kvr/memory/store/word_batch.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kvrimage {

/// How a word stands in bytes and in hexadecimal digits.
struct word_shape {
    explicit word_shape(std::uint32_t width) noexcept;

    /// Whether the most significant byte is one digit.
    [[nodiscard]] bool has_odd_digit() const noexcept { return digits % 2 != 0; }

    std::size_t bytes;
    std::size_t digits;
    unsigned surplus_bits; ///< of the most significant byte
};

/// Reverses the byte order of the words of @p size bytes each that @p bytes are.
void reverse_words(std::span<char> bytes, std::size_t size) noexcept;

/// Makes the texts of words, as image_words holds them, of bytes.
class byte_texts {
public:
    byte_texts(std::uint32_t width, byte_order in_order) : shape(width), order(in_order) {}

    /// How many words at the front of @p bytes, which are whole words, have surplus bits of 0: all, or those
    /// before the first one that is too wide.
    [[nodiscard]] std::size_t count_fitting(std::string_view bytes) const noexcept;
    /// The texts of the words that @p bytes are, side by side, without their surplus bits. Valid until the
    /// next call.
    [[nodiscard]] std::string_view make(std::string_view bytes);
    /// All digits of the bytes of one word, the surplus bits among them.
    [[nodiscard]] std::string all_digits(std::string_view word) const;

private:
    [[nodiscard]] std::string_view without_first_digits() noexcept;

    word_shape shape;
    byte_order order;
    std::string reversed;
    std::string texts;
};

/// Sets words of bytes in the order of the calls. The words, which must outlive it, are complete after
/// flush().
class byte_word_setter {
public:
    byte_word_setter(std::uint32_t width, byte_order order, image_words& to)
        : shape(width),
          texts(width, order),
          words(to),
          batch(to.lower_half()) {}

    /// Sets the words from @p offset on to those of @p bytes, up to the first one that is too wide.
    /// @return how many were set
    std::uint64_t set(std::uint64_t offset, std::string_view bytes);
    void flush() { batch.flush(); }

private:
    void set_texts(std::uint64_t offset, std::string_view all);

    word_shape shape;
    byte_texts texts;
    image_words& words;
    kvr::word_batch batch;
};

} // namespace kvrimage
