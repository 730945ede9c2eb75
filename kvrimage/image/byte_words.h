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

/// Words held as a file of bytes has them: a byte costs a byte. Surplus high bits, where the width is no
/// multiple of 8, are 0. The words never change, so that copies share the bytes.
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
    /// @param word_width bits, 1 to widest_word
    /// @param keeps_bytes as long as a copy of it exists the bytes stay as they are
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

    /// What the blocks have at @p offsets, ranges that ascend without overlaps.
    [[nodiscard]] std::vector<block> blocks_at(std::span<const address_range> offsets) const;
    /// @p in_order instead of the blocks: of the same bytes, or of such that @p keeps_others keeps.
    [[nodiscard]] byte_words with_blocks(std::vector<block> in_order,
                                         std::shared_ptr<const void> keeps_others = nullptr) const;
    /// @p in_order, blocks of the same bytes, as words of another kind.
    [[nodiscard]] byte_words with_words(std::vector<block> in_order, std::uint32_t word_width,
                                        byte_order order_of_bytes) const {
        return {std::move(in_order), word_width, order_of_bytes, keeper};
    }
    /// The words at the offsets from @p first to @p last, as those from offset 0 on.
    [[nodiscard]] byte_words part(std::uint64_t first, std::uint64_t last) const;

    /// The word at @p offset; nothing when it is not set.
    [[nodiscard]] std::optional<word> word_at(std::uint64_t offset) const;
    /// The last offset of the longest run of equal words, or of such that are not set, from @p offset on. It
    /// ends before @p end at the latest.
    [[nodiscard]] std::uint64_t last_of_run(std::uint64_t offset, std::uint64_t end) const;
    /// Sets these words in @p words, which has their offsets, as texts.
    void set_in(image_words& words) const;

private:
    std::vector<block> all;
    std::uint32_t bits; ///< of a word
    std::uint32_t size; ///< bytes of a word
    byte_order their_order;
    std::shared_ptr<const void> keeper;
};

} // namespace kvrimage
