#pragma once

#include "tests/allocation.h"

#include <cstddef>

namespace kvr_fuzz {

/// Checks that the code that runs during its lifetime respects the limits for hostile input. Memory: 32 MiB
/// plus a hundred times the input. Processor time: a second plus 20 microseconds per byte of the input. Only
/// one may exist at a time.
class resource_limits {
public:
    /// @param input_size in bytes.
    explicit resource_limits(std::size_t input_size) noexcept;
    ~resource_limits();
    resource_limits(const resource_limits&) = delete;
    resource_limits& operator=(const resource_limits&) = delete;

private:
    std::size_t size;
    double began; ///< in seconds
    allocation_meter memory;
};

} // namespace kvr_fuzz
