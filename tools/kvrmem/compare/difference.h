#pragma once

#include "tools/kvrmem/memory/memory_image.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kvrmem {

/// One of the two memories.
struct diff_side {
    std::string name; ///< as a terminal may show it
    std::string path; ///< the same, every byte as it is
    memory_image image;
};

/// Neighbouring addresses that all hold @p left in one memory and @p right, another value, in the other. ""
/// is a word that was never set.
struct difference {
    std::uint64_t first;
    std::uint64_t last;
    std::string_view left;
    std::string_view right;
};

/// Calls @p take with every difference, in the order of addresses. Words of different widths are the same
/// when their values are; a word that was never set is the same as another such word only.
void for_each_difference(const diff_side& left, const diff_side& right,
                         const std::function<void(const difference&)>& take);

} // namespace kvrmem
