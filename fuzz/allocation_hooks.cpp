// Measures allocations when a sanitizer has its own allocator, which reports them to these hooks.

#include "fuzz/expectation.h"
#include "tests/allocation.h"

#include <algorithm>
#include <cstdint>
#include <sanitizer/allocator_interface.h>

namespace {

// The hooks are free functions, so their counts are global.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
bool counts = false;
std::int64_t counted_bytes = 0; // negative if older blocks are freed
std::int64_t most_bytes = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void note_allocation(const volatile void* /*block*/, std::size_t size) {
    if (counts) {
        counted_bytes += static_cast<std::int64_t>(size);
        most_bytes = std::max(most_bytes, counted_bytes);
    }
}

void note_release(const volatile void* block) {
    if (counts && block != nullptr) {
        counted_bytes -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(block));
    }
}

void install_hooks() {
    static const bool installed =
        __sanitizer_install_malloc_and_free_hooks(note_allocation, note_release) != 0;
    kvr_fuzz::expect(installed, "the allocations cannot be counted");
}

} // namespace

allocation_meter::allocation_meter() noexcept {
    install_hooks();
    counted_bytes = 0;
    most_bytes = 0;
    counts = true;
}

allocation_meter::~allocation_meter() {
    counts = false;
}

std::size_t allocation_meter::peak() noexcept {
    return static_cast<std::size_t>(std::max<std::int64_t>(most_bytes, 0));
}
