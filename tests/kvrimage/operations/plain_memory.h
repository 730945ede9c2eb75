#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "tests/models/choices.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// A memory as a list of its words. Each word is its binary digits, most significant first; no value for an
/// unset word.
using plain_words = std::vector<std::optional<std::string>>;

/// The word of the binary digits @p bits.
inline kvrimage::word word_of_digits(const std::string& bits) {
    return kvrimage::word::parse(bits, kvrimage::radix::bin, static_cast<std::uint32_t>(bits.size()))
        .value.value();
}

inline plain_words plain_words_of(const kvrimage::memory_image& image) {
    plain_words words;
    for (std::uint64_t offset = 0; offset < image.depth(); ++offset) {
        const auto value = image[image.base() + offset];
        words.push_back(value ? value->to_text(kvrimage::radix::bin) : std::nullopt);
    }
    return words;
}

/// A page of different words of @p digits hexadecimal digits, which the store keeps in a row.
inline std::vector<std::string> page_of_words(std::size_t digits) {
    std::vector<std::string> words;
    for (std::size_t index = 0; index < 1024; ++index) {
        constexpr std::size_t odd = 40503;
        std::string word(digits, '0');
        for (std::size_t rest = index * odd, place = digits; place-- > 0; rest /= 16) {
            word[place] = "0123456789ABCDEF"[rest % 16];
        }
        words.push_back(std::move(word));
    }
    return words;
}

/// Sets the words of @p image from @p offset on to @p texts, side by side.
inline void set_in_row(kvrimage::memory_image& image, std::uint64_t offset,
                       const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        image.words().set(offset++, text);
    }
}

/// Generates memories with single words, fills and unset words.
class memory_maker {
public:
    explicit memory_maker(std::uint32_t seed) : engine(seed) {}
    /// Uses the random choices of @p choices, which must outlive it. One choice determines all digits of a
    /// word, because the input of a fuzzer is short.
    explicit memory_maker(kvr_test::choices& choices) : source(&choices) {}

    [[nodiscard]] std::uint64_t below(std::uint64_t end) {
        return source != nullptr ? source->below(static_cast<std::uint32_t>(end)) : engine() % end;
    }
    /// Random binary digits; one in @p dont_care_share digits is "X", or none if it is 0.
    [[nodiscard]] std::string bits(std::uint32_t width, unsigned dont_care_share = 0) {
        std::string digits(width, '0');
        state = source != nullptr ? source->below(different_words) : 0;
        for (char& digit : digits) {
            digit = (number() & 1U) != 0 ? '1' : '0';
            digit = dont_care_share != 0 && number() % dont_care_share == 0 ? 'X' : digit;
        }
        return digits;
    }
    [[nodiscard]] kvrimage::memory_image memory(std::uint32_t width, std::uint64_t depth,
                                                unsigned dont_care_share = 0, std::uint64_t base = 0) {
        kvrimage::memory_image image(width, depth, base);
        const auto word = [&] { return word_of_digits(bits(width, dont_care_share)); };
        for (std::uint64_t turn = 0; turn < 1 + depth / 64; ++turn) {
            const std::uint64_t first = base + below(depth);
            const kvrimage::address_range range = {first, first + below(base + depth - first)};
            switch (below(4)) {
            case 0:
                image.fill(range, std::array{word()});
                break;
            case 1:
                image.fill(range, std::array{word(), word(), word()});
                break;
            case 2:
                image.unset(range);
                break;
            default:
                for (std::uint64_t address = range.first; address <= range.last; ++address) {
                    image.set(address, word());
                }
            }
        }
        return image;
    }

private:
    static constexpr std::uint32_t different_words = 1U << 16U;

    /// A number for a digit of a word. With a source, the next number of a sequence that the word's choice
    /// starts.
    std::uint64_t number() {
        if (source == nullptr) {
            return engine();
        }
        constexpr std::uint64_t step = 0x9E3779B97F4A7C15;
        constexpr std::uint64_t factor = 0xBF58476D1CE4E5B9;
        state += step;
        const std::uint64_t mixed = (state ^ (state >> 30U)) * factor;
        return mixed ^ (mixed >> 31U);
    }

    kvr_test::choices* source = nullptr;
    std::mt19937_64 engine; // NOLINT(cert-msc51-cpp): seeded, or not used
    std::uint64_t state = 0;
};
