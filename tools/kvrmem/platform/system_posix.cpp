#include "kvrimage/files/platform.h"
#include "tools/kvrmem/platform/system.h"

#include <csignal>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/time.h>
#include <unistd.h>

namespace kvrmem::system {

namespace {

// A signal handler has no parameter for it.
void (*regular_work)() = nullptr; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void do_regular_work(int /*signal*/) {
    regular_work();
}

} // namespace

const bool shows_utf8_by_itself = false; // the C locale, which is ASCII

void prepare(int& /*count*/, char**& /*words*/) {}

bool is_terminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}

std::uint32_t columns_of(std::FILE* stream) {
    winsize size{};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void call_regularly(void (*work)()) {
    constexpr long fifth_of_a_second = 200000; // in microseconds
    regular_work = work;
    struct sigaction action {};
    action.sa_handler = do_regular_work;
    action.sa_flags = SA_RESTART;
    sigaction(SIGALRM, &action, nullptr);
    itimerval timer{};
    timer.it_value.tv_sec = 1;
    timer.it_interval.tv_usec = fifth_of_a_second;
    setitimer(ITIMER_REAL, &timer, nullptr);
}

std::int64_t position_of(int descriptor) noexcept {
    return lseek(descriptor, 0, SEEK_CUR);
}

bool input_is_waiting(int milliseconds) {
    pollfd input{kvrimage::platform::standard_input, POLLIN, 0};
    return poll(&input, 1, milliseconds) > 0;
}

bool is_of_closed_pipe(int number) noexcept {
    return number == SIGPIPE;
}

} // namespace kvrmem::system
