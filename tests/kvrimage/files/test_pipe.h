#pragma once

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

/// A pipe that carries bytes as they are: its end to read and its end to write. False when there is none.
inline bool make_pipe(std::array<int, 2>& ends) {
#if defined(_WIN32)
    constexpr unsigned room = 65536;
    return _pipe(ends.data(), room, _O_BINARY) == 0;
#else
    return pipe(ends.data()) == 0;
#endif
}

/// While it lives, a write to a closed pipe is an answer, as it always is on Windows, and not the end of the
/// tests.
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
