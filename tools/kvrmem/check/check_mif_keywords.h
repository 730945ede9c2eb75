#pragma once

#include "kvr/memory/mif/mif_memory.h"
#include "tools/kvrmem/check/mif_check.h"

namespace kvrmem {

/// Adds warnings where the library takes a header line of width, depth or a radix otherwise than is likely
/// meant.
///
/// @param memory what was read.
void check_mif_keywords(mif_check& check, const kvr::mif_memory& memory);

/// Where the numbers of the file are all of another radix than its header says, adds a warning at the header,
/// and takes back what was said of nearly every line.
///
/// @param memory what was read.
void check_radix_fits(mif_check& check, const kvr::mif_memory& memory);

} // namespace kvrmem
