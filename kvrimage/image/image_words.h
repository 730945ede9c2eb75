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

/// A run of equal texts. Offsets count from the lowest address of a memory.
struct text_run {
    std::uint64_t first;
    std::uint64_t last;    ///< inclusive
    std::string_view text; ///< "" if not set; valid until the words change
};

/// A stretch over which texts repeat: the texts at offsets n and n + `period` are equal.
struct text_cycle {
    std::uint64_t first;
    std::uint64_t last;   ///< inclusive
    std::uint32_t period; ///< 1 if all texts are equal, 0 if no cycle is known

    [[nodiscard]] std::uint64_t length() const noexcept { return last - first + 1; }
};

/// The words of a memory as texts, by offset from its lowest address. A store takes at most 2^32 - 1 words,
/// so two stores hold half of the addresses each. The text of a word of `width` bits has ceil(width / 4)
/// upper-case hexadecimal digits; "X" stands for four don't-care bits. If a don't-care bit shares a digit
/// with other bits, the text has `width` binary digits. The text of a word that is not set is "". During
/// parsing the texts may be those of the file.
///
/// Words of a byte file stay bytes until a text is requested or a word changes. The first such call converts
/// all words to texts and throws what the store throws.
class image_words {
public:
    explicit image_words(std::uint64_t depth = 0) { resize(depth); }
    /// Takes @p words, at most half of the addresses, as the words from offset 0 on.
    explicit image_words(kvr::word_store&& words) { halves[0] = std::move(words); }

    /// Takes words stored as bytes. Their offsets are below @p depth.
    image_words(std::uint64_t depth, byte_words&& bytes) : held_bytes(held{depth, std::move(bytes)}) {}

    image_words(const image_words& other);
    image_words(image_words&& other) noexcept = default;
    image_words& operator=(const image_words&) = delete;
    image_words& operator=(image_words&& other) noexcept = default;
    ~image_words() = default;

    [[nodiscard]] std::uint64_t size() const noexcept {
        return held_bytes ? held_bytes->depth : std::uint64_t{halves[0].size()} + halves[1].size();
    }
    /// Returns the words as bytes, or null if they are texts already.
    [[nodiscard]] const byte_words* bytes() const noexcept {
        return held_bytes ? &held_bytes->words : nullptr;
    }
    /// Keeps the words below @p depth, in bytes if they are bytes. New words are not set. Words stored as
    /// bytes need a depth above 0.
    void resize(std::uint64_t depth);

    [[nodiscard]] std::string_view operator[](std::uint64_t offset) const {
        return half_of(offset)[within_half(offset)];
    }
    void set(std::uint64_t offset, std::string_view text) { half_of(offset).set(within_half(offset), text); }
    /// See kvr::word_store::set_side_by_side(). All offsets lie in one half.
    void set_side_by_side(std::uint64_t first, std::string_view texts, std::size_t length) {
        half_of(first).set_side_by_side(within_half(first), texts, length);
    }
    /// Sets the offsets from @p first to @p last, inclusive, to @p values in order, repeated as often as
    /// needed.
    void fill(std::uint64_t first, std::uint64_t last, const std::vector<std::string_view>& values);

    /// Returns the longest run from @p offset on. It may cross the border of the halves.
    [[nodiscard]] text_run run_at(std::uint64_t offset) const;
    /// See kvr::word_store::cycle_at(). A cycle never crosses the border of the halves.
    [[nodiscard]] text_cycle cycle_at(std::uint64_t offset) const;
    /// See kvr::word_store::row_at(). All words of a row are set.
    [[nodiscard]] kvr::word_row row_at(std::uint64_t offset) const {
        const kvr::word_row row = half_of(offset).row_at(within_half(offset));
        return row.length != 0 ? row : kvr::word_row();
    }
    /// See kvr::word_store::transform(). Returns false and leaves both halves unchanged if @p conversion
    /// returns false.
    bool transform(const kvr::word_conversion& conversion, const kvr::row_test& keeps = {});

    /// Returns the store of the lower half, for code that fills it directly.
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

    // Mutable: both forms hold the same words.
    mutable word_texts halves;              ///< empty while the words are bytes
    mutable std::optional<held> held_bytes; ///< empty once the words are texts
};

} // namespace kvrimage
