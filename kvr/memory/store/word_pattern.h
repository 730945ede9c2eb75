#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvr {

class pattern_ref;

/// Converts the text of a word. Overwrites the second argument; returns false if there is no result.
using word_conversion = std::function<bool(std::string_view, std::string&)>;

/// Texts that repeat over the addresses: the word at `first` has the first text, the next word the next text,
/// and so on cyclically. A pattern is immutable, and the text depends on the address only. So any number of
/// words, pages and subtrees can share a pattern.
class word_pattern {
public:
    /// Returns the pattern in which every word has @p text.
    static pattern_ref uniform(std::string_view text);

    /// Returns the pattern of the @p count texts at @p values (at least one), starting at address @p first.
    /// @throws std::length_error if the texts exceed 2^32 - 1 characters in total
    static pattern_ref repeating(std::uint32_t first, const std::string_view* values, std::size_t count);

    /// Returns the text of the word at @p address, which must not be below `first` unless the pattern is
    /// uniform.
    [[nodiscard]] std::string_view text_at(std::uint32_t address) const noexcept {
        return is_uniform() ? std::string_view(texts) : value((address - first) % period());
    }

    /// True if every word has the same text.
    [[nodiscard]] bool is_uniform() const noexcept { return places.empty(); }

    /// Returns the number of addresses after which the texts repeat.
    [[nodiscard]] std::uint32_t period() const noexcept {
        return is_uniform() ? 1 : static_cast<std::uint32_t>(places.size());
    }

    /// Returns the first address from @p from to @p last (inclusive) whose word is not @p text, or last + 1.
    [[nodiscard]] std::uint64_t find_other(std::uint32_t from, std::uint32_t last,
                                           std::string_view text) const noexcept;

    /// Returns the pattern with every text converted, or none if @p conversion returns false.
    [[nodiscard]] pattern_ref converted(const word_conversion& conversion) const;

private:
    friend class pattern_ref;

    explicit word_pattern(std::string_view text) : texts(text) {}
    void count_equal_values();
    word_pattern(std::uint32_t first_address, const std::string_view* values, std::size_t count);

    [[nodiscard]] std::string_view value(std::uint32_t index) const noexcept {
        const std::uint32_t begin = index == 0 ? 0 : places[index - 1].end;
        return {texts.data() + begin, places[index].end - begin};
    }

    struct value_place {
        std::uint32_t end; ///< in `texts`
        std::uint32_t
            equal_ahead; ///< equal values from this one on, also in the next period; at most the period
    };

    mutable std::uint32_t references = 0;
    std::uint32_t first = 0;
    std::vector<value_place> places; ///< empty if the pattern is uniform
    std::string texts;
};

/// A reference-counted pointer to a pattern, or none. It has the size of a pointer and counts without
/// atomics: every page of a memory has one, and a memory is used from one thread at a time.
class pattern_ref {
public:
    pattern_ref() noexcept = default;
    explicit pattern_ref(const word_pattern* taken) noexcept : pattern(taken) { retain(); }
    pattern_ref(const pattern_ref& other) noexcept : pattern(other.pattern) { retain(); }
    pattern_ref(pattern_ref&& other) noexcept : pattern(std::exchange(other.pattern, nullptr)) {}
    pattern_ref& operator=(pattern_ref other) noexcept {
        std::swap(pattern, other.pattern);
        return *this;
    }
    ~pattern_ref() { release(); }

    [[nodiscard]] const word_pattern* get() const noexcept { return pattern; }
    const word_pattern* operator->() const noexcept { return pattern; }
    const word_pattern& operator*() const noexcept { return *pattern; }
    explicit operator bool() const noexcept { return pattern != nullptr; }

private:
    void retain() const noexcept {
        if (pattern != nullptr) {
            ++pattern->references;
        }
    }
    void release() const noexcept {
        if (pattern != nullptr && --pattern->references == 0) {
            delete pattern;
        }
    }

    const word_pattern* pattern = nullptr;
};

/// True if both are known in constant time to have the same texts at every address: they are the same
/// pattern, or both are uniform with the same text.
[[nodiscard]] bool same_texts(const pattern_ref& left, const pattern_ref& right) noexcept;

} // namespace kvr
