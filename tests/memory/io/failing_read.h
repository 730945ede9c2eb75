#pragma once

#include "tests/allocation.h"

#include <cstddef>
#include <new>

namespace kvr_test {

/// Calls @p read while its allocation @p number, counted from 1, fails. True if it failed and the read threw
/// an exception.
template <class Read>
[[nodiscard]] bool throws_without_allocation(std::size_t number, Read read) {
    const failing_allocation failing(number);
    try {
        read();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

} // namespace kvr_test
