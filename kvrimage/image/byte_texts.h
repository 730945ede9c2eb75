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

/// Size of a word in bytes and in hexadecimal digits.
struct word_shape {
    explicit word_shape(std::uint32_t width) noexcept;

    /// True if the most significant byte has one digit only.
    [[nodiscard]] bool has_odd_digit() const noexcept { return digits % 2 != 0; }

    std::size_t bytes;
    std::size_t digits;
    unsigned surplus_bits; ///< high bits of the most significant byte that do not belong to the word
};

/// Reverses the byte order of each word in @p bytes. @p size is the bytes of a word.
void reverse_words(std::span<char> bytes, std::size_t size) noexcept;

/// Converts words from bytes to the texts that image_words stores.
class byte_texts {
public:
    byte_texts(std::uint32_t width, byte_order in_order) : shape(width), order(in_order) {}

    /// Returns the number of words at the front of @p bytes whose surplus bits are 0. Counting stops at the
    /// first word that is too wide. @p bytes holds whole words.
    [[nodiscard]] std::size_t count_fitting(std::string_view bytes) const noexcept;
    /// Returns the texts of the words in @p bytes, concatenated and without surplus bits. The result is valid
    /// until the next call.
    [[nodiscard]] std::string_view make(std::string_view bytes);
    /// Returns all hexadecimal digits of one word, surplus bits included.
    [[nodiscard]] std::string all_digits(std::string_view word) const;

private:
    [[nodiscard]] std::string_view without_first_digits() noexcept;

    word_shape shape;
    byte_order order;
    std::string reversed;
    std::string texts;
};

/// Sets words from bytes, in the order of the calls. All words are in place after flush(). The target must
/// outlive this object.
class byte_word_setter {
public:
    byte_word_setter(std::uint32_t width, byte_order order, image_words& to)
        : shape(width),
          texts(width, order),
          words(to),
          batch(to.lower_half()) {}

    /// Sets the words from @p offset on from @p bytes and stops at the first word that is too wide.
    /// @return the number of words set
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
