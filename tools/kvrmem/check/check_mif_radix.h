#pragma once

#include "kvr/memory/mif/mif_memory.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/memory/memory_input.h"

#include <cstdint>
#include <string>

namespace kvrmem {

/// Whether numbers of a file fit its header.
struct radix_fit {
    bool is_another = false;              ///< many do not fit the radix declared, all fit another one
    KVR_MEMORY_RADIXES only = RADIX_NONE; ///< that one; there is no second
    std::string example;                  ///< the first that does not fit what is declared
    std::uint64_t example_line = 0;
    std::uint64_t numbers = 0; ///< how many there are
    std::uint64_t misfits = 0; ///< how many of them are no numbers in the radix declared
};

struct mif_radix_fit {
    radix_fit data;
    radix_fit addresses;
};

/// Tries the radixes on all values and addresses of the MIF file @p source, whose header was read into
/// @p declared. A radix fits when every number is one in it, and, of a value, is not too wide, of an address,
/// is below the depth.
[[nodiscard]] mif_radix_fit find_radix_fit(const check_source& source, const kvr::mif_memory& declared,
                                           const input_options& options);

} // namespace kvrmem
