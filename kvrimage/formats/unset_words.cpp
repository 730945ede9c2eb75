#include "kvrimage/formats/unset_words.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/image/word_runs.h"

#include <algorithm>

namespace kvrimage {

namespace {

/// Receives the set words in order and counts the gaps between them.
class gap_counter {
public:
    /// Marks the words from offset @p first to @p last as set.
    void skip(std::uint64_t first, std::uint64_t last) {
        close(first);
        next = last + 1;
    }

    void close(std::uint64_t end) {
        if (end > next && found.count == 0) {
            found.first = next;
        }
        found.count += end - next;
        next = end;
    }

    [[nodiscard]] unset_words result() const { return found; }

private:
    unset_words found;
    std::uint64_t next = 0; ///< the first offset not yet examined
};

} // namespace

unset_words count_unset(const memory_image& image) {
    const image_words& words = image.words();
    gap_counter gaps;
    for_each_set_stretch(words, [&gaps](std::uint64_t first, std::uint64_t last) { gaps.skip(first, last); });
    gaps.close(words.size());
    unset_words found = gaps.result();
    found.first += image.base();
    return found;
}

std::optional<diagnostic> find_unset_words(const read_result& result, const std::string& consequence) {
    const unset_words unset = result.image ? count_unset(*result.image) : unset_words{};
    if (unset.count == 0) {
        return std::nullopt;
    }
    if (unset.count != result.image->depth()) {
        return diagnose::gap({}, unset.count, result.image->depth(), unset.count == 1 ? "is" : "are",
                             unset.first, consequence);
    }
    const bool is_reported = std::ranges::find(result.diagnostics, diagnostic_id::no_words,
                                               &diagnostic::id) != result.diagnostics.end();
    return is_reported ? std::nullopt : std::optional(diagnose::no_words({}));
}

} // namespace kvrimage
