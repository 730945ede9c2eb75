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

/// The greatest depth of a memory, in words.
inline constexpr std::uint64_t deepest_memory = std::uint64_t{1} << 32U;

/// A run of adjacent addresses that have the same word or no word. It is as long as possible.
struct run {
    address_range addresses;   ///< the addresses of the run
    std::optional<word> value; ///< the word, or nothing if the addresses are not set
};

/// A stretch of addresses over which the words repeat.
struct repetition {
    std::uint64_t last;   ///< the last address of the stretch
    std::uint64_t period; ///< each word equals the one `period` addresses before it; 1 if all are equal or
                          ///< none is set
};

class run_range;

/// The contents of a memory: words of one width at the addresses base() to base() + depth() - 1, each set or
/// not set. Words that are not set take no memory, and a fill takes memory proportional to its pattern, not
/// to the words it sets. This is a value type; a moved-from object may only be assigned to or destroyed. Not
/// thread-safe: even concurrent reads need a lock.
class KVRIMAGE_API memory_image {
public:
    /// @param width word width in bits, 1 to widest_word
    /// @param depth number of words, 1 to deepest_memory
    /// @param base the lowest address; base + depth - 1 must fit 64 bits
    /// @throws std::invalid_argument if an argument is out of range
    memory_image(std::uint32_t width, std::uint64_t depth, std::uint64_t base = 0);
    /// Copies and moves like a value. A copy takes time proportional to the stored content, not to the depth.
    ///@{
    memory_image(const memory_image& other);
    memory_image(memory_image&& other) noexcept;
    memory_image& operator=(const memory_image& other);
    memory_image& operator=(memory_image&& other) noexcept;
    ///@}
    ~memory_image();

    /// Returns the word width in bits.
    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    /// Returns the number of words, set or not.
    [[nodiscard]] std::uint64_t depth() const noexcept;
    /// Returns the lowest address.
    [[nodiscard]] std::uint64_t base() const noexcept { return lowest; }
    /// Returns the highest address, base() + depth() - 1.
    [[nodiscard]] std::uint64_t last_address() const noexcept { return lowest + (depth() - 1); }

    /// Returns the word at @p address, or nothing if it is not set.
    /// @throws std::out_of_range if the address is outside the memory. All members that take addresses throw
    /// this.
    [[nodiscard]] std::optional<word> operator[](std::uint64_t address) const;
    /// Sets the word at @p address.
    /// @throws std::invalid_argument if the width of @p value differs from that of the memory
    void set(std::uint64_t address, const word& value);
    /// Sets the words of @p range to @p pattern, repeated as often as needed. The last repetition may be cut.
    /// @throws std::invalid_argument if @p pattern is empty or has a word of another width, or if @p range
    /// ends before it begins. All members that take a range throw the latter.
    void fill(const address_range& range, std::span<const word> pattern);
    /// Removes the words of @p range.
    void unset(const address_range& range);
    /// Sets all words that are not set to @p value. The time depends on the words that were set one by one.
    /// @throws std::invalid_argument if the width of @p value differs from that of the memory
    void fill_unset(const word& value);
    /// Changes the depth to @p depth words, 1 to deepest_memory. New words are not set.
    /// @throws std::invalid_argument if @p depth is out of range or base + depth - 1 exceeds 64 bits
    void resize(std::uint64_t depth);

    /// Returns the range from the lowest to the highest address that is set, or nothing if no word is set.
    [[nodiscard]] std::optional<address_range> bounds() const;
    /// Returns the longest repetition from @p address on that is known without comparing words: a fill or a
    /// run.
    [[nodiscard]] repetition repetition_at(std::uint64_t address) const;
    /// Returns the number of words that are set.
    [[nodiscard]] std::uint64_t count_set() const;
    /// Returns the number of words of @p range that are set.
    [[nodiscard]] std::uint64_t count_set(const address_range& range) const;

    /// Returns the runs of all addresses in order, including runs of words that are not set:
    /// `for (const run& r : image.runs())`. Valid until the image changes.
    [[nodiscard]] run_range runs() const;
    /// Returns the runs of @p range, cut to it.
    [[nodiscard]] run_range runs(const address_range& range) const;

    /// Copies the words from address @p first on to @p out. Words that are not set become @p unset.
    /// @throws std::domain_error for a word with don't-care bits, after the words before it were copied, and
    /// for words of more than 64 bits
    void copy_to(std::uint64_t first, std::span<std::uint64_t> out, std::uint64_t unset = 0) const;

    /// Compares width, addresses and words. A word that is not set equals only another one that is not set.
    friend KVRIMAGE_API bool operator==(const memory_image& left, const memory_image& right);

    /// For internal use.
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

/// Input iterator over the runs of an image. The end equals std::default_sentinel.
class KVRIMAGE_API run_iterator {
public:
    /// @cond members of every input iterator
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

/// The range of runs that memory_image::runs() returns.
class run_range {
public:
    /// @cond members of every range
    run_range(const memory_image& of, const address_range& runs_of) : image(&of), range(runs_of) {}
    [[nodiscard]] run_iterator begin() const { return {*image, range}; }
    [[nodiscard]] static std::default_sentinel_t end() noexcept { return {}; }
    /// @endcond

private:
    const memory_image* image;
    address_range range;
};

} // namespace kvrimage
