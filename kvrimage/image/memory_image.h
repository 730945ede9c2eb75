#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>

namespace kvrimage {

class image_words;

/// The most words of a memory.
inline constexpr std::uint64_t deepest_memory = std::uint64_t{1} << 32U;

/// Neighbouring addresses with the same word, or all without one. No run ends where a longer one would have
/// been possible.
struct run {
    address_range addresses;   ///< where it is
    std::optional<word> value; ///< nothing: not set
};

/// A stretch of addresses over which words repeat.
struct repetition {
    std::uint64_t last;   ///< the last address of the stretch
    std::uint64_t period; ///< each word equals the one so many addresses before it; 1: all are equal, or all
                          ///< are not set
};

class run_range;

/// The contents of a memory: words of one width at the addresses base() to base() + depth() - 1, each set or
/// not. What is not set costs nothing, and a fill costs its pattern, however many words it sets. A value
/// type; one that was moved from may only be assigned to or destroyed. Use from one thread at a time, also to
/// read.
class KVRIMAGE_API memory_image {
public:
    /// @param width bits a word, 1 to widest_word
    /// @param depth words, 1 to deepest_memory
    /// @param base the lowest address; base + depth - 1 must fit 64 bits
    /// @throws std::invalid_argument
    memory_image(std::uint32_t width, std::uint64_t depth, std::uint64_t base = 0);
    /// Copied and moved as a value. A copy costs what the memory holds, not its depth.
    ///@{
    memory_image(const memory_image& other);
    memory_image(memory_image&& other) noexcept;
    memory_image& operator=(const memory_image& other);
    memory_image& operator=(memory_image&& other) noexcept;
    ///@}
    ~memory_image();

    /// Bits of each word.
    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    /// Words, set or not.
    [[nodiscard]] std::uint64_t depth() const noexcept;
    /// The lowest address.
    [[nodiscard]] std::uint64_t base() const noexcept { return lowest; }
    /// base() + depth() - 1
    [[nodiscard]] std::uint64_t last_address() const noexcept { return lowest + (depth() - 1); }

    /// The word at @p address; nothing: not set.
    /// @throws std::out_of_range beyond the memory; so do all that take addresses
    [[nodiscard]] std::optional<word> operator[](std::uint64_t address) const;
    /// @throws std::invalid_argument when @p value has another width than the memory
    void set(std::uint64_t address, const word& value);
    /// Sets the addresses of @p range to the words of @p pattern in order, from its first one again when they
    /// are used up.
    /// @throws std::invalid_argument when @p pattern is empty or has a word of another width, or @p range
    /// ends before it
    ///         begins; so do all that take a range
    void fill(const address_range& range, std::span<const word> pattern);
    /// Takes the words of @p range away.
    void unset(const address_range& range);
    /// Sets all addresses that are not set. The cost follows what was set one by one.
    /// @throws std::invalid_argument when @p value has another width than the memory
    void fill_unset(const word& value);
    /// Makes the memory @p depth words deep, 1 to deepest_memory. New words are not set.
    /// @throws std::invalid_argument, also when base + depth - 1 does not fit 64 bits
    void resize(std::uint64_t depth);

    /// The addresses from the lowest to the highest one that is set; nothing when none is.
    [[nodiscard]] std::optional<address_range> bounds() const;
    /// The longest stretch from @p address on that is known to repeat without a look at each word: what one
    /// fill set, or a run.
    [[nodiscard]] repetition repetition_at(std::uint64_t address) const;
    /// How many words are set.
    [[nodiscard]] std::uint64_t count_set() const;
    /// How many of @p range are.
    [[nodiscard]] std::uint64_t count_set(const address_range& range) const;

    /// The runs of all addresses, in order, words that are not set among them:
    /// `for (const run& r : image.runs())`. Valid until the image changes.
    [[nodiscard]] run_range runs() const;
    /// Those of @p range, cut to it.
    [[nodiscard]] run_range runs(const address_range& range) const;

    /// Copies the words from @p first on to @p out; words that are not set become @p unset.
    /// @throws std::domain_error for a word with don't-care bits, with the words before it copied, and for
    /// words of more
    ///         than 64 bits
    void copy_to(std::uint64_t first, std::span<std::uint64_t> out, std::uint64_t unset = 0) const;

    /// The same width, addresses, and words; an unset word equals an unset word only.
    friend KVRIMAGE_API bool operator==(const memory_image& left, const memory_image& right);

    /// For the library's own parts.
    ///@{
    [[nodiscard]] image_words& words() noexcept { return *contents; }
    [[nodiscard]] const image_words& words() const noexcept { return *contents; }
    memory_image(std::uint32_t width, std::unique_ptr<image_words> words, std::uint64_t base = 0);
    ///@}

private:
    [[nodiscard]] std::uint64_t offset_of(std::uint64_t address) const;
    [[nodiscard]] address_range offsets_of(const address_range& range) const;
    void check_width(const word& value) const;

    std::uint32_t bits;
    std::uint64_t lowest;
    std::unique_ptr<image_words> contents;
};

/// Goes over the runs of an image, one after the other: an input iterator, which equals
/// std::default_sentinel at the end.
class KVRIMAGE_API run_iterator {
public:
    /// @cond what every input iterator has
    using value_type = run;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag;
    using reference = const run&;
    using pointer = const run*;

    run_iterator() = default; ///< the end
    run_iterator(const memory_image& of, const address_range& range);

    const run& operator*() const noexcept { return current; }
    const run* operator->() const noexcept { return &current; }
    run_iterator& operator++();
    void operator++(int) { ++*this; }
    friend bool operator==(const run_iterator& left, std::default_sentinel_t) noexcept {
        return left.image == nullptr;
    }
    /// @endcond

private:
    [[nodiscard]] run run_from(std::uint64_t address) const;

    const memory_image* image = nullptr; ///< null at the end
    std::uint64_t last = 0;
    run current;
};

/// The runs of an image; see memory_image::runs().
class run_range {
public:
    /// @cond what every range has
    run_range(const memory_image& of, const address_range& runs_of) : image(&of), range(runs_of) {}
    [[nodiscard]] run_iterator begin() const { return {*image, range}; }
    [[nodiscard]] static std::default_sentinel_t end() noexcept { return {}; }
    /// @endcond

private:
    const memory_image* image;
    address_range range;
};

} // namespace kvrimage
