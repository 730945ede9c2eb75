#include "tools/kvrmem/surroundings/interruption.h"

#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstddef>
#include <unistd.h>

namespace kvrmem {

namespace {

// What a signal handler may touch: memory that is always there, and a flag that says whether it is filled.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): there is no other way to a handler
std::array<char, PATH_MAX> temporary_path{};
std::atomic<bool> has_temporary = false;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
static_assert(std::atomic<bool>::is_always_lock_free);

constexpr std::array<int, 5> ending_signals = {SIGINT, SIGTERM, SIGHUP, SIGXCPU, SIGXFSZ};

void remove_temporary_and_end(int signal) {
    if (has_temporary.load()) {
        unlink(temporary_path.data());
    }
    static_cast<void>(std::signal(signal, SIG_DFL));
    static_cast<void>(std::raise(signal));
}

} // namespace

void clean_up_when_interrupted() {
    for (const int signal : ending_signals) {
        // Who has a signal ignored (nohup) wants it ignored here, too.
        if (std::signal(signal, remove_temporary_and_end) == SIG_IGN) {
            static_cast<void>(std::signal(signal, SIG_IGN));
        }
    }
    // Some programs hand a closed pipe down as an error. Here it ends the tool, without a word.
    static_cast<void>(std::signal(SIGPIPE, remove_temporary_and_end));
}

interruption_pause::interruption_pause() {
    sigset_t waiting;
    sigemptyset(&waiting);
    sigaddset(&waiting, SIGPIPE);
    for (const int signal : ending_signals) {
        sigaddset(&waiting, signal);
    }
    sigprocmask(SIG_BLOCK, &waiting, &before);
}

interruption_pause::~interruption_pause() {
    sigprocmask(SIG_SETMASK, &before, nullptr);
}

void set_temporary_file(const std::string& path) noexcept {
    has_temporary.store(false);
    if (!path.empty() && path.size() < temporary_path.size()) {
        path.copy(temporary_path.data(), path.size());
        temporary_path[path.size()] = '\0';
        has_temporary.store(true);
    }
}

} // namespace kvrmem
