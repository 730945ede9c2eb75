#pragma once

#include "kvr/memory/mif/mif_memory.h"
#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/edit/mif_line_style.h"
#include "tools/kvrmem/memory/memory_image.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kvrmem {

/// What a first look at a MIF file finds.
struct mif_survey {
    std::vector<setting_place> places; ///< the statements that set words that are edited
    mif_line_style style;              ///< of the last statement, with digits as all of them have them
    std::size_t end_line = 0;          ///< where the line with "END" starts
};

/// Looks at @p text, which read_memory() has read as @p image. @p memory, which is fresh, then knows which
/// addresses have lines of their own.
[[nodiscard]] mif_survey survey_mif(std::string_view text, const memory_image& image,
                                    const edit_pieces& pieces, kvr::mif_memory& memory);

} // namespace kvrmem
