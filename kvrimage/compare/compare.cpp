#include "kvrimage/compare/compare.h"

#include "kvrimage/image/differing_runs.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

/// Returns @p text without leading zeros, but with at least one digit.
std::string_view significant(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of('0'), text.size() - 1));
}

std::string bits_of(std::string_view word, std::uint32_t width) {
    std::string bits;
    show_word(word, radix::bin, width, bits);
    return bits;
}

/// Compares words in the form that images store.
class word_equality {
public:
    word_equality(std::uint32_t width_of_left, std::uint32_t width_of_right)
        : left_width(width_of_left),
          right_width(width_of_right) {}

    [[nodiscard]] equal_texts of_equal_texts() const {
        return left_width == right_width ? equal_texts::are_same : equal_texts::may_differ;
    }

    bool operator()(std::string_view left, std::string_view right) const {
        if (left_width == right_width || left.empty() || right.empty()) {
            return left == right;
        }
        if (is_plain(left) && is_plain(right)) {
            return significant(left) == significant(right);
        }
        return significant(bits_of(left, left_width)) == significant(bits_of(right, right_width));
    }

private:
    std::uint32_t left_width;
    std::uint32_t right_width;
};

std::optional<word> word_or_none(std::string_view text, std::uint32_t width) {
    return text.empty() ? std::nullopt : std::optional(word_of_text(text, width));
}

} // namespace

void for_each_difference(const memory_image& left, const memory_image& right,
                         const std::function<void(const difference&)>& take) {
    const address_range all = {std::min(left.base(), right.base()),
                               std::max(left.last_address(), right.last_address())};
    for_each_difference(left, right, std::span(&all, 1), take);
}

void for_each_difference(const memory_image& left, const memory_image& right,
                         std::span<const address_range> where,
                         const std::function<void(const difference&)>& take) {
    const word_equality same(left.width(), right.width());
    const placed_words left_words(left.words(), left.base());
    const placed_words right_words(right.words(), right.base());
    for (const address_range& range : where) {
        differing_run_finder runs(left_words, right_words, range, same, same.of_equal_texts());
        while (const auto run = runs.next()) {
            take({{run->first, run->last},
                  word_or_none(run->one, left.width()),
                  word_or_none(run->other, right.width())});
        }
    }
}

} // namespace kvrimage
