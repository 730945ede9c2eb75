#pragma once

#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

class image_words;

/// Words of whole bytes, held as a file of bytes has them: a byte costs a byte. They never change, so that
/// copies share the bytes.
class byte_words {
public:
    /// Words that are set, side by side.
    struct block {
        std::uint64_t first;    ///< offset of the first word
        std::string_view bytes; ///< whole words, at least one

        /// The offset of the last word of @p bytes_per_word bytes.
        [[nodiscard]] std::uint64_t last(std::uint32_t bytes_per_word) const noexcept {
            return first + bytes.size() / bytes_per_word - 1;
        }
    };

    /// @param in_order blocks whose offsets ascend, without overlaps
    /// @param word_bytes of a word
    /// @param keeps_bytes as long as a copy of it exists the bytes stay as they are
    byte_words(std::vector<block> in_order, std::uint32_t word_bytes, byte_order order_of_bytes,
               std::shared_ptr<const void> keeps_bytes)
        : all(std::move(in_order)),
          size(word_bytes),
          their_order(order_of_bytes),
          keeper(std::move(keeps_bytes)) {}

    [[nodiscard]] const std::vector<block>& blocks() const noexcept { return all; }
    [[nodiscard]] std::uint32_t bytes_per_word() const noexcept { return size; }
    [[nodiscard]] byte_order order() const noexcept { return their_order; }

    /// The word at @p offset; nothing when it is not set.
    [[nodiscard]] std::optional<word> word_at(std::uint64_t offset) const;
    /// Sets these words in @p words, which has their offsets, as texts.
    void set_in(image_words& words) const;

private:
    std::vector<block> all;
    std::uint32_t size;
    byte_order their_order;
    std::shared_ptr<const void> keeper;
};

} // namespace kvrimage
