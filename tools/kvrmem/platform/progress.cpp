#include "tools/kvrmem/platform/progress.h"

#include "kvrimage/files/platform.h"
#include "kvrimage/image/work_position.h"
#include "tools/kvrmem/platform/system.h"
#include "tools/kvrmem/platform/terminal.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <initializer_list>
#include <mutex>
#include <string_view>
#include <thread>

namespace kvrmem {

namespace {

constexpr int no_descriptor = -1;

/// The terminal, for one of the timer and the rest of the tool at a time. The timer runs in a signal handler
/// or in another thread. A handler cannot wait for the thread that it interrupts, and must not use a
/// std::mutex.
class terminal_lock {
public:
    bool try_lock() noexcept { return !is_taken.test_and_set(std::memory_order_acquire); }
    void lock() noexcept {
        while (!try_lock()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the timer writes its line
        }
    }
    void unlock() noexcept { is_taken.clear(std::memory_order_release); }

private:
    std::atomic_flag is_taken;
};

/// The work that the line reports.
struct watched_work {
    bool is_going_on = false;
    std::array<char, 200> text{};
    std::size_t length = 0;
    int descriptor = no_descriptor; ///< of a file; none for an operation on a memory
    long long size = 0;             ///< of the file
    timespec begin{};
};

/// The finished part of the work, in bytes or in units of note_work().
struct work_share {
    long long done = 0;
    long long all = 0; ///< 0: not known
};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): a signal handler has no parameter for them
terminal_lock terminal_access; ///< also guards the other variables
watched_work watched;
bool is_line_shown = false;
std::size_t line_limit = 79; ///< a line that continues in the next row could not be erased
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

constexpr std::string_view erase_line = "\r\x1B[K";

void write_to_terminal(std::string_view text) noexcept {
    // A failure to write to the terminal cannot be reported.
    static_cast<void>(kvrimage::platform::write_all(kvrimage::platform::standard_error, text));
}

/// A line in memory of its own: a signal handler must not allocate any.
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

work_share share_of(const watched_work& work) noexcept {
    if (work.descriptor >= 0) {
        return {system::position_of(work.descriptor), work.size};
    }
    // Both may change between the two reads.
    const auto all = static_cast<long long>(kvrimage::current_work.all.load(std::memory_order_relaxed));
    const auto done = static_cast<long long>(kvrimage::current_work.done.load(std::memory_order_relaxed));
    return {std::min(done, all), all};
}

/// Seconds since @p work began.
double age_of(const watched_work& work) noexcept {
    constexpr double nanoseconds = 1e9;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec - work.begin.tv_sec) +
           static_cast<double>(now.tv_nsec - work.begin.tv_nsec) / nanoseconds;
}

void add_share(line_buffer& line, const watched_work& work, const work_share& share) noexcept {
    constexpr long long percent = 100;
    constexpr long long mebibyte = 1LL << 20;
    if (share.done <= 0) {
        return;
    }
    line.add(" ");
    if (share.all <= 0) {
        line.add(share.done / mebibyte);
        line.add(" MiB");
        return;
    }
    const double part = static_cast<double>(std::min(share.done, share.all)) / static_cast<double>(share.all);
    line.add(static_cast<long long>(part * percent));
    line.add(" %, ");
    line.add(static_cast<long long>(age_of(work) * (1 / part - 1) + 1));
    line.add(" s left");
}

/// Called by the timer. Leaves the line as it is while the terminal is in use.
void show_line() {
    const std::unique_lock access(terminal_access, std::try_to_lock);
    if (!access.owns_lock() || !watched.is_going_on) {
        return;
    }
    const int saved_error = errno;
    line_buffer line;
    line.add(erase_line);
    constexpr std::size_t figures = 24;
    line.add({watched.text.data(), std::min(watched.length, line_limit - std::min(line_limit, figures))});
    add_share(line, watched, share_of(watched));
    write_to_terminal(line.text());
    is_line_shown = true;
    errno = saved_error;
}

/// Requires the lock.
void erase() {
    if (is_line_shown) {
        write_to_terminal(erase_line);
        is_line_shown = false;
    }
}

void show_progress(std::initializer_list<std::string_view> title, int descriptor, std::uint64_t size) {
    const std::lock_guard access(terminal_access);
    watched.length = 0;
    for (const std::string_view part : title) {
        const std::size_t count = std::min(part.size(), watched.text.size() - watched.length);
        std::copy_n(part.data(), count, watched.text.data() + watched.length);
        watched.length += count;
    }
    watched.descriptor = descriptor;
    watched.size = static_cast<long long>(size);
    clock_gettime(CLOCK_MONOTONIC, &watched.begin);
    watched.is_going_on = true;
}

} // namespace

void start_progress() {
    if (!is_terminal(stderr)) {
        return;
    }
    line_limit = columns_of(stderr) - 1;
    system::call_regularly(show_line);
}

void show_reading(const std::string& name, int descriptor, std::uint64_t size) {
    show_progress({"reading ", name}, descriptor, size);
}

void show_writing(const std::string& name, int descriptor, std::uint64_t size) {
    show_progress({"writing ", name}, descriptor, size);
}

void show_operation(const std::string& operation, const std::string& name) {
    kvrimage::note_work(0, 0);
    show_progress({operation, " of ", name}, no_descriptor, 0);
}

progress_pause::progress_pause() {
    terminal_access.lock();
    erase();
}

progress_pause::~progress_pause() {
    terminal_access.unlock();
}

void end_progress() {
    const std::lock_guard access(terminal_access);
    watched.is_going_on = false;
    erase();
}

} // namespace kvrmem
