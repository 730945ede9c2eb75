#pragma once

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvrimage {

/// Builds a memory from words in order of addresses, from 0 on.
class generated_words {
public:
    /// @param words the expected number of words
    /// @throws std::invalid_argument if @p width is no valid word width
    generated_words(std::uint32_t width, std::uint64_t words);

    /// Appends a word: the lowest bits of @p value, zero-extended.
    void add(std::uint64_t value);
    /// Appends a word: the lowest bits of @p value, sign-extended.
    void add_signed(std::int64_t value);
    void add(const word& value);
    /// Appends a word of several limbs. @p next returns 64 bits at each call, lowest limb first.
    template <class Next>
    void add_limbs(const Next& next) {
        for (std::size_t rest = word_size; rest > 0;) {
            const std::size_t size = rest < sizeof(std::uint64_t) ? rest : sizeof(std::uint64_t);
            append(next(), size);
            rest -= size;
        }
        clear_surplus();
    }
    /// Returns the memory. At least one word must have been appended.
    [[nodiscard]] memory_image take() const;

private:
    void append(std::uint64_t value, std::size_t size);
    void clear_surplus();

    std::uint32_t bits;
    std::size_t word_size;
    std::string bytes; ///< in little-endian order
};

} // namespace kvrimage
