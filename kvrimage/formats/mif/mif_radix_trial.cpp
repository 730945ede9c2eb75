#include "kvrimage/formats/mif/mif_radix_trial.h"

#include "kvrimage/diagnostics/named_text.h"

#include <algorithm>

namespace kvrimage {

void mif_radix_trial::note(std::string_view text, radix tried, reading found) {
    if (tried == declared && found == reading::no_number && misfits++ == 0) {
        first_misfit = text.substr(0, named_text::longest + 1);
    }
}

/// A single invalid number is a fault of its own. Of the numbers 0 to 1F, three in eight contain a letter.
std::optional<radix> mif_radix_trial::other() const {
    const bool are_many = misfits != 0 && misfits * 3 >= numbers;
    if (!are_many || std::ranges::count(fits, true) != 1) {
        return std::nullopt;
    }
    return static_cast<radix>(std::ranges::find(fits, true) - fits.begin());
}

} // namespace kvrimage
