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

/// Returns the addresses that @p statement sets. @p contents must be readable.
[[nodiscard]] address_range set_addresses_of(std::string_view contents, const mif_statement& statement,
                                             const mif_number_form& form);

/// The result of the first pass over a MIF.
struct mif_survey {
    /// The statements that set words to edit, with their offsets.
    std::vector<setting_place> places;
    kvr::address_set single_addresses; ///< set by a statement with one value
    style_finder addresses;
    style_finder values;
    std::optional<std::uint64_t> last_statement; ///< offset
    std::uint64_t end; ///< offset of END, or of the end of the file if END is missing
};

/// Surveys @p contents with numbers of @p form in one pass. Regular lines take about as long as reading them.
void survey_mif(std::string_view contents, const mif_number_form& form, const edit_pieces& pieces,
                mif_survey& survey);

} // namespace kvrimage
