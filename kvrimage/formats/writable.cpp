#include "kvrimage/formats/writable.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/unset_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <optional>

namespace kvrimage {

namespace {

/// The first word with a don't-care bit, by its offset.
std::optional<text_run> find_dont_care_word(const image_words& words) {
    std::optional<text_run> found;
    for_each_row_cycle_or_run(
        words, [](const kvr::word_row& row, std::uint64_t) { return is_plain(row.all()) ? row.count : 0U; },
        [&words](const text_cycle& cycle) {
            bool all_plain = true;
            for (std::uint64_t index = 0; index < cycle.period; ++index) {
                all_plain = all_plain && is_plain(words[cycle.first + index]);
            }
            return all_plain ? cycle.length() : 0;
        },
        [&found](const text_run& run) {
            if (!found && !is_plain(run.text)) {
                found = run;
            }
        });
    return found;
}

/// The words that a format without a way to leave words out would have to make up.
unset_words words_to_fill(const memory_image& image, const format& as) {
    unset_words unset = count_unset(image);
    const auto bounds = image.bounds();
    if (!as.states_depth && bounds) {
        unset.count -= image.last_address() - bounds->last;
    }
    return unset;
}

} // namespace

std::vector<diagnostic> general_obstacles(const memory_image& image, const write_options& options) {
    std::vector<diagnostic> found;
    const format& as = *options.as;
    if (!as.holds_unset) {
        const unset_words unset = words_to_fill(image, as);
        if (unset.count != 0) {
            found.push_back(diagnose::fill_needed({}, unset.count, unset.count == 1 ? "word is" : "words are",
                                                  unset.first, as.title));
            found.back().option = "--fill 0";
        }
    }
    if (!as.holds_dont_care) {
        if (const auto word = find_dont_care_word(image.words())) {
            found.push_back(
                diagnose::holds_no_dont_care({}, word->text, image.base() + word->first, as.title));
            found.back().address = image.base() + word->first;
        }
    }
    if (as.counts == address_unit::byte && !options.order && bytes_of_width(image.width()) > 1) {
        found.push_back(diagnose::byte_order({}, image.width()));
        found.back().hint = "add --endian little or --endian big";
        found.back().option = "--endian little";
    }
    return found;
}

} // namespace kvrimage
