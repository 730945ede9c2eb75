#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

class image_words;

/// Words stored as the bytes of a file, in ceil(width / 8) bytes each. If the width is no multiple of 8, the
/// surplus high bits are 0. The words are immutable, so copies share the bytes.
class byte_words {
public:
    /// A block of consecutive words that are set.
    struct block {
        std::uint64_t first;    ///< offset of the first word
        std::string_view bytes; ///< whole words, at least one

        /// Returns the offset of the last word. A word has @p bytes_per_word bytes.
        [[nodiscard]] std::uint64_t last(std::uint32_t bytes_per_word) const noexcept {
            return first + bytes.size() / bytes_per_word - 1;
        }
    };

    /// @param in_order blocks in ascending order of offsets, without overlaps
    /// @param word_width word width in bits, 1 to widest_word
    /// @param keeps_bytes owner of the bytes: they stay valid and unchanged while a copy of it exists
    byte_words(std::vector<block> in_order, std::uint32_t word_width, byte_order order_of_bytes,
               std::shared_ptr<const void> keeps_bytes)
        : all(std::move(in_order)),
          bits(word_width),
          size((word_width - 1) / 8 + 1),
          their_order(order_of_bytes),
          keeper(std::move(keeps_bytes)) {}

    [[nodiscard]] const std::vector<block>& blocks() const noexcept { return all; }
    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    [[nodiscard]] std::uint32_t bytes_per_word() const noexcept { return size; }
    [[nodiscard]] byte_order order() const noexcept { return their_order; }

    /// Returns the parts of the blocks that lie in @p offsets. The ranges ascend and do not overlap.
    [[nodiscard]] std::vector<block> blocks_at(std::span<const address_range> offsets) const;
    /// Returns these words with @p in_order as blocks. The blocks refer to the same bytes, or to bytes owned
    /// by @p keeps_others.
    [[nodiscard]] byte_words with_blocks(std::vector<block> in_order,
                                         std::shared_ptr<const void> keeps_others = nullptr) const;
    /// Returns words of another width and byte order. The blocks of @p in_order refer to the same bytes.
    [[nodiscard]] byte_words with_words(std::vector<block> in_order, std::uint32_t word_width,
                                        byte_order order_of_bytes) const {
        return {std::move(in_order), word_width, order_of_bytes, keeper};
    }
    /// Returns the words from @p first to @p last, inclusive. They get offsets from 0 on.
    [[nodiscard]] byte_words part(std::uint64_t first, std::uint64_t last) const;

    /// Returns the word at @p offset, or nothing if it is not set.
    [[nodiscard]] std::optional<word> word_at(std::uint64_t offset) const;
    /// Returns the last offset of the longest run from @p offset on, at most @p end - 1. A run has equal
    /// words or no words at all.
    [[nodiscard]] std::uint64_t last_of_run(std::uint64_t offset, std::uint64_t end) const;
    /// Sets these words as texts at the same offsets of @p words.
    void set_in(image_words& words) const;

private:
    std::vector<block> all;
    std::uint32_t bits; ///< word width
    std::uint32_t size; ///< bytes of a word
    byte_order their_order;
    std::shared_ptr<const void> keeper;
};

} // namespace kvrimage
