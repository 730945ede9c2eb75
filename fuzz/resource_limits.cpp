#include "fuzz/resource_limits.h"

#include "fuzz/expectation.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <sanitizer/allocator_interface.h>

namespace kvr_fuzz {

namespace {

// The hooks are plain functions: what they count stands where they find it.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
bool metering = false;
std::int64_t live_bytes = 0; // negative when older blocks are freed
std::int64_t peak_bytes = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

constexpr std::int64_t memory_free_of_charge = std::int64_t{32} << 20;
constexpr std::int64_t memory_for_a_byte = 100;
constexpr double seconds_free_of_charge = 1.0;
constexpr double seconds_for_a_byte = 20e-6;

void note_allocation(const volatile void* /*block*/, std::size_t size) {
    if (metering) {
        live_bytes += static_cast<std::int64_t>(size);
        peak_bytes = std::max(peak_bytes, live_bytes);
    }
}

void note_release(const volatile void* block) {
    if (metering && block != nullptr) {
        live_bytes -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(block));
    }
}

double processor_seconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void install_hooks() {
    static const bool installed =
        __sanitizer_install_malloc_and_free_hooks(note_allocation, note_release) != 0;
    expect(installed, "the allocations cannot be counted");
}

} // namespace

resource_limits::resource_limits(std::size_t input_size) noexcept
    : size(input_size),
      began(processor_seconds()) {
    install_hooks();
    live_bytes = 0;
    peak_bytes = 0;
    metering = true;
}

resource_limits::~resource_limits() {
    metering = false;
    expect(peak_bytes <= memory_free_of_charge + memory_for_a_byte * static_cast<std::int64_t>(size),
           "it took more memory than 32 MiB and a hundred times the input");
    expect(processor_seconds() - began <=
               seconds_free_of_charge + seconds_for_a_byte * static_cast<double>(size),
           "it took more time than a second and 20 microseconds for each byte");
}

} // namespace kvr_fuzz
