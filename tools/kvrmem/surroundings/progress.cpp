#include "tools/kvrmem/surroundings/progress.h"

#include "tools/kvrmem/surroundings/terminal.h"
#include "tools/kvrmem/surroundings/write_all.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <string_view>
#include <sys/time.h>
#include <unistd.h>

namespace kvrmem {

namespace {

/// What the signal handler shows. It is filled while no handler looks at it.
struct watched_file {
    std::array<char, 200> text{};
    std::size_t length = 0;
    int descriptor = -1;
    long long size = 0;
};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): there is no other way to a handler
std::array<watched_file, 2> watched;
std::atomic<int> current = -1; ///< index of the one to look at
std::atomic<bool> line_shown = false;
std::atomic<int> pauses = 0;
std::size_t line_limit = 79; ///< a line that goes on in the next row could not be erased
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

constexpr std::string_view erase_line = "\r\x1B[K";

void write_to_terminal(std::string_view text) noexcept {
    // There is nobody to tell that the terminal cannot be written to.
    static_cast<void>(write_all(STDERR_FILENO, text));
}

/// A line that is put together without memory from the heap, which a signal handler must not ask for.
class line_buffer {
public:
    void add(std::string_view text) noexcept {
        const std::size_t count = std::min(text.size(), bytes.size() - used);
        std::copy_n(text.data(), count, bytes.data() + used);
        used += count;
    }
    void add(long long number) noexcept {
        const auto end = std::to_chars(bytes.data() + used, bytes.data() + bytes.size(), number);
        used = static_cast<std::size_t>(end.ptr - bytes.data());
    }
    [[nodiscard]] std::string_view text() const noexcept { return {bytes.data(), used}; }

private:
    std::array<char, 400> bytes{};
    std::size_t used = 0;
};

void show_line(int /*signal*/) {
    const int saved_error = errno;
    const int index = current.load();
    if (index >= 0 && pauses.load() == 0) {
        constexpr long long percent = 100;
        constexpr long long mebibyte = 1LL << 20;
        const watched_file& file = watched[static_cast<std::size_t>(index)];
        const long long position = lseek(file.descriptor, 0, SEEK_CUR);
        line_buffer line;
        line.add(erase_line);
        constexpr std::size_t figures = 24;
        line.add({file.text.data(), std::min(file.length, line_limit - std::min(line_limit, figures))});
        if (position > 0 && file.size > 0) {
            line.add(" ");
            line.add(std::min(position, file.size) * percent / file.size);
            line.add(" %");
        } else if (position > 0) {
            line.add(" ");
            line.add(position / mebibyte);
            line.add(" MiB");
        }
        write_to_terminal(line.text());
        line_shown.store(true);
    }
    errno = saved_error;
}

void erase() {
    if (line_shown.exchange(false)) {
        write_to_terminal(erase_line);
    }
}

void arm_timer(long first_seconds, long every_microseconds) {
    itimerval timer{};
    timer.it_value.tv_sec = first_seconds;
    timer.it_interval.tv_usec = every_microseconds;
    setitimer(ITIMER_REAL, &timer, nullptr);
}

void show_progress(std::string_view doing, std::string_view name, int descriptor, std::uint64_t size) {
    const int next = current.load() == 0 ? 1 : 0;
    watched_file& file = watched[static_cast<std::size_t>(next)];
    file.length = 0;
    for (const std::string_view part : {doing, std::string_view(" "), name}) {
        const std::size_t count = std::min(part.size(), file.text.size() - file.length);
        std::copy_n(part.data(), count, file.text.data() + file.length);
        file.length += count;
    }
    file.descriptor = descriptor;
    file.size = static_cast<long long>(size);
    current.store(next);
}

} // namespace

void start_progress() {
    if (!is_terminal(stderr)) {
        return;
    }
    constexpr long every_fifth_of_a_second = 200000;
    line_limit = columns_of(stderr) - 1;
    struct sigaction action {};
    action.sa_handler = show_line;
    action.sa_flags = SA_RESTART;
    sigaction(SIGALRM, &action, nullptr);
    arm_timer(1, every_fifth_of_a_second);
}

void show_reading(const std::string& name, int descriptor, std::uint64_t size) {
    show_progress("reading", name, descriptor, size);
}

void show_writing(const std::string& name, int descriptor, std::uint64_t size) {
    show_progress("writing", name, descriptor, size);
}

progress_pause::progress_pause() {
    ++pauses;
    erase();
}

progress_pause::~progress_pause() {
    --pauses;
}

void end_progress() {
    current.store(-1);
    erase();
}

} // namespace kvrmem
