#pragma once

#include "kvr/memory/store/word_store.h"
#include "kvrimage/image/byte_words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

/// A run of equal texts; offsets from the lowest address of a memory.
struct text_run {
    std::uint64_t first;
    std::uint64_t last;    ///< inclusive
    std::string_view text; ///< "": not set. Valid until the words change
};

/// A stretch over which texts repeat: those at an offset and `period` offsets on are the same.
struct text_cycle {
    std::uint64_t first;
    std::uint64_t last;   ///< inclusive
    std::uint32_t period; ///< 1 where all are equal, 0 when no cycle is known

    [[nodiscard]] std::uint64_t length() const noexcept { return last - first + 1; }
};

/// The words of a memory as texts, by their offsets from its lowest address, in two stores of half of the
/// addresses each, since a store takes one word less than 2^32. A word of `width` bits is held as ceil(width
/// / 4) upper-case hexadecimal digits, which may be "X" for four don't-care bits; or, where a don't-care bit
/// stands beside a plain one, as `width` binary digits; "" is a word that is not set. While a file is read,
/// its own texts may stand here.
///
/// Words that a file has as bytes stay bytes until a text is asked for, or one of them changes: the first
/// call of that kind makes the texts of all of them, and throws what the store does.
class image_words {
public:
    explicit image_words(std::uint64_t depth = 0) { resize(depth); }
    /// @p words, at most half of the addresses, from offset 0 on.
    explicit image_words(kvr::word_store&& words) { halves[0] = std::move(words); }

    /// @p bytes, whose offsets are below @p depth.
    image_words(std::uint64_t depth, byte_words&& bytes) : held_bytes(held{depth, std::move(bytes)}) {}

    image_words(const image_words& other);
    image_words(image_words&& other) noexcept = default;
    image_words& operator=(const image_words&) = delete;
    image_words& operator=(image_words&& other) noexcept = default;
    ~image_words() = default;

    [[nodiscard]] std::uint64_t size() const noexcept {
        return held_bytes ? held_bytes->depth : std::uint64_t{halves[0].size()} + halves[1].size();
    }
    /// The words as bytes, for what can do without texts; null where they are texts already.
    [[nodiscard]] const byte_words* bytes() const noexcept {
        return held_bytes ? &held_bytes->words : nullptr;
    }
    /// Keeps the words that stay, as bytes where they are; new ones are not set. Bytes need a depth above 0.
    void resize(std::uint64_t depth);

    [[nodiscard]] std::string_view operator[](std::uint64_t offset) const {
        return half_of(offset)[within_half(offset)];
    }
    void set(std::uint64_t offset, std::string_view text) { half_of(offset).set(within_half(offset), text); }
    /// See kvr::word_store::set_side_by_side(). All offsets are in one half.
    void set_side_by_side(std::uint64_t first, std::string_view texts, std::size_t length) {
        half_of(first).set_side_by_side(within_half(first), texts, length);
    }
    /// Sets the offsets from @p first to @p last to @p values in order, from the first again when they are
    /// used up.
    void fill(std::uint64_t first, std::uint64_t last, const std::vector<std::string_view>& values);

    /// The longest run from @p offset on, over the border of the halves too.
    [[nodiscard]] text_run run_at(std::uint64_t offset) const;
    /// See kvr::word_store::cycle_at(). A cycle ends with its half.
    [[nodiscard]] text_cycle cycle_at(std::uint64_t offset) const;
    /// See kvr::word_store::row_at(). The words of a row are set.
    [[nodiscard]] kvr::word_row row_at(std::uint64_t offset) const {
        const kvr::word_row row = half_of(offset).row_at(within_half(offset));
        return row.length != 0 ? row : kvr::word_row();
    }
    /// See kvr::word_store::transform(): false, with the words of both halves as they were, when @p
    /// conversion answers false.
    bool transform(const kvr::word_conversion& conversion, const kvr::row_test& keeps = {});

    /// The store of the lower half, for what fills it directly.
    [[nodiscard]] kvr::word_store& lower_half() { return texts()[0]; }
    [[nodiscard]] static constexpr std::uint64_t half() noexcept { return std::uint64_t{1} << 31U; }

private:
    using word_texts = std::array<kvr::word_store, 2>;
    struct held {
        std::uint64_t depth;
        byte_words words;
    };

    [[nodiscard]] word_texts& texts() {
        make_texts();
        return halves;
    }
    [[nodiscard]] const word_texts& texts() const {
        make_texts();
        return halves;
    }
    void make_texts() const {
        if (held_bytes) [[unlikely]] {
            make_texts_of_bytes();
        }
    }
    void make_texts_of_bytes() const;

    [[nodiscard]] kvr::word_store& half_of(std::uint64_t offset) { return texts()[offset >= half() ? 1 : 0]; }
    [[nodiscard]] const kvr::word_store& half_of(std::uint64_t offset) const {
        return texts()[offset >= half() ? 1 : 0];
    }
    [[nodiscard]] static std::uint32_t within_half(std::uint64_t offset) noexcept {
        return static_cast<std::uint32_t>(offset & (half() - 1));
    }

    // The words are the same in either form.
    mutable word_texts halves;              ///< empty while there are bytes
    mutable std::optional<held> held_bytes; ///< until there are texts
};

} // namespace kvrimage
