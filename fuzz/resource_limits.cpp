#include "fuzz/resource_limits.h"

#include "fuzz/expectation.h"

#include <ctime>

namespace kvr_fuzz {

namespace {

constexpr std::size_t memory_free_of_charge = std::size_t{32} << 20;
constexpr std::size_t memory_for_a_byte = 100;
constexpr double seconds_free_of_charge = 1.0;
constexpr double seconds_for_a_byte = 20e-6;

double processor_seconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

} // namespace

resource_limits::resource_limits(std::size_t input_size) noexcept
    : size(input_size),
      began(processor_seconds()) {}

resource_limits::~resource_limits() {
    expect(allocation_meter::peak() <= memory_free_of_charge + memory_for_a_byte * size,
           "it took more memory than 32 MiB and a hundred times the input");
    expect(processor_seconds() - began <=
               seconds_free_of_charge + seconds_for_a_byte * static_cast<double>(size),
           "it took more time than a second and 20 microseconds for each byte");
}

} // namespace kvr_fuzz
