#pragma once

#include <atomic>
#include <cstdint>

namespace kvrimage {

/// How far a walk over a memory has come, for a program that shows progress: a hint, of the walk that noted
/// it last, in whichever thread. No result depends on it.
struct work_position {
    std::atomic<std::uint64_t> done = 0;
    std::atomic<std::uint64_t> all = 0; ///< 0: not known
};

// A signal handler looks at it, and every operation would have to hand it on.
inline work_position current_work; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// Costs as little as two stores.
inline void note_work(std::uint64_t done, std::uint64_t all) noexcept {
    current_work.done.store(done, std::memory_order_relaxed);
    current_work.all.store(all, std::memory_order_relaxed);
}

} // namespace kvrimage
