#pragma once

#include "kvr/memory/store/address_set.h"
#include "kvrimage/edit/digit_style.h"
#include "kvrimage/edit/touched_places.h"
#include "kvrimage/formats/mif/mif_words.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The addresses that @p statement of @p contents, which read() takes, sets.
[[nodiscard]] address_range set_addresses_of(std::string_view contents, const mif_statement& statement,
                                             const mif_number_form& form);

/// What a first look at a MIF finds.
struct mif_survey {
    std::vector<setting_place>
        places; ///< the statements that set words to be edited; numbers are their offsets
    kvr::address_set single_addresses; ///< that have a statement with one value
    style_finder addresses;
    style_finder values;
    std::optional<std::uint64_t> last_statement; ///< its offset
    std::uint64_t end; ///< the offset of END; of the end of the file where it is missing
};

/// Looks at @p contents, whose numbers are as @p form says. One pass, which goes over regular lines about as
/// fast as reading them does.
void survey_mif(std::string_view contents, const mif_number_form& form, const edit_pieces& pieces,
                mif_survey& survey);

} // namespace kvrimage
