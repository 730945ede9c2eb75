#pragma once

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvrimage {

/// Words under construction, in order of addresses from 0 on.
class generated_words {
public:
    /// @param words as many as there will be about
    /// @throws std::invalid_argument when a word cannot have @p width bits
    generated_words(std::uint32_t width, std::uint64_t words);

    /// Appends a word: the lowest bits of @p value, which is extended with zeros.
    void add(std::uint64_t value);
    /// The same, extended with the sign.
    void add_signed(std::int64_t value);
    void add(const word& value);
    /// Appends the lowest bits of @p limbs() numbers, which @p next hands out from the lowest on.
    template <class Next>
    void add_limbs(const Next& next) {
        for (std::size_t rest = word_size; rest > 0;) {
            const std::size_t size = rest < sizeof(std::uint64_t) ? rest : sizeof(std::uint64_t);
            append(next(), size);
            rest -= size;
        }
        clear_surplus();
    }
    /// The memory of these words, at least one.
    [[nodiscard]] memory_image take() const;

private:
    void append(std::uint64_t value, std::size_t size);
    void clear_surplus();

    std::uint32_t bits;
    std::size_t word_size;
    std::string bytes; ///< little endian
};

} // namespace kvrimage
