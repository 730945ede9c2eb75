#pragma once

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

/// Creates a binary pipe: its read end and its write end. False if that fails.
inline bool make_pipe(std::array<int, 2>& ends) {
#if defined(_WIN32)
    constexpr unsigned room = 65536;
    return _pipe(ends.data(), room, _O_BINARY) == 0;
#else
    return pipe(ends.data()) == 0;
#endif
}

/// While it exists, a write to a closed pipe fails instead of ending the tests. On Windows, it always fails.
class surviving_closed_pipes {
public:
#if defined(_WIN32)
    surviving_closed_pipes() {}
#else
    surviving_closed_pipes() : before(std::signal(SIGPIPE, SIG_IGN)) {}
    surviving_closed_pipes(const surviving_closed_pipes&) = delete;
    surviving_closed_pipes& operator=(const surviving_closed_pipes&) = delete;
    ~surviving_closed_pipes() {
        static_cast<void>(std::signal(SIGPIPE, before));
    }

private:
    void (*before)(int);
#endif
};
