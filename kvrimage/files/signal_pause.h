#pragma once

#include <array>
#include <csignal>

namespace kvrimage {

/// The signals that end a program and that it may handle. They are blocked while a temporary file is created
/// or moved to its target.
#ifdef _WIN32
inline constexpr std::array<int, 3> ending_signals = {SIGINT, SIGTERM, SIGBREAK};
#else
inline constexpr std::array<int, 6> ending_signals = {SIGINT, SIGTERM, SIGHUP, SIGXCPU, SIGXFSZ, SIGPIPE};
#endif

/// While it exists, ending_signals are blocked in its thread. It has no effect on Windows, where a handler
/// runs in another thread.
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
