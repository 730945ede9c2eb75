#include "kvrimage/formats/writable.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/unset_words.h"
#include "kvrimage/image/word_search.h"

namespace kvrimage {

namespace {

/// Returns the unset words that a format without unset words would have to fill.
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
        if (const auto offset = find_dont_care_word(image.words())) {
            const std::uint64_t address = image.base() + *offset;
            found.push_back(diagnose::holds_no_dont_care({}, image.words()[*offset], address, as.title));
            found.back().address = address;
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
