#pragma once

#include <array>
#include <csignal>

namespace kvrimage {

/// Signals that end a program and that it may handle; while a temporary file is made or moved to its place,
/// they wait.
#ifdef _WIN32
inline constexpr std::array<int, 3> ending_signals = {SIGINT, SIGTERM, SIGBREAK};
#else
inline constexpr std::array<int, 6> ending_signals = {SIGINT, SIGTERM, SIGHUP, SIGXCPU, SIGXFSZ, SIGPIPE};
#endif

/// While it lives, ending_signals wait in the thread that has made it. On Windows, where a handler runs in a
/// thread of its own, they do not.
class signal_pause {
public:
    signal_pause() noexcept;
    ~signal_pause();
    signal_pause(const signal_pause&) = delete;
    signal_pause& operator=(const signal_pause&) = delete;

#ifndef _WIN32
private:
    sigset_t before{};
#endif
};

} // namespace kvrimage
