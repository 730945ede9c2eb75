#include "kvrimage/formats/plain_words.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/unset_words.h"

namespace kvrimage {

void refuse_base(const memory_image& image, std::string_view target, std::vector<diagnostic>& found) {
    if (image.base() != 0) {
        found.push_back(diagnose::base_not_zero({}, image.base(), target));
    }
}

void refuse_gaps(const memory_image& image, std::string_view target, std::vector<diagnostic>& found) {
    unset_words unset = count_unset(image);
    const auto bounds = image.bounds();
    unset.count -= bounds ? image.last_address() - bounds->last : 0;
    if (unset.count != 0) {
        found.push_back(diagnose::fill_needed({}, unset.count, unset.count == 1 ? "word is" : "words are",
                                              unset.first, target));
        found.back().option = "--fill 0";
    }
}

} // namespace kvrimage
