#pragma once

#include <atomic>
#include <cstdint>

namespace kvrimage {

/// Progress of the walk over a memory that reported last, in any thread. It is a hint for a progress display;
/// no result depends on it.
struct work_position {
    std::atomic<std::uint64_t> done = 0;
    std::atomic<std::uint64_t> all = 0; ///< 0 if unknown
};

// Global: a signal handler reads it, and no operation must pass it on.
inline work_position current_work; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// Costs two relaxed stores.
inline void note_work(std::uint64_t done, std::uint64_t all) noexcept {
    current_work.done.store(done, std::memory_order_relaxed);
    current_work.all.store(all, std::memory_order_relaxed);
}

} // namespace kvrimage
