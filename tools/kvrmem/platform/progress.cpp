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
#include <cstdio>
#include <ctime>
#include <initializer_list>
#include <string_view>

namespace kvrmem {

namespace {

constexpr int no_descriptor = -1;

/// What the signal handler shows. It is filled while no handler looks at it.
struct watched_work {
    std::array<char, 200> text{};
    std::size_t length = 0;
    int descriptor = no_descriptor; ///< of a file; none: an operation on a memory
    long long size = 0;             ///< of the file
    timespec begin{};
};

/// How far something has come.
struct work_share {
    long long done = 0;
    long long all = 0; ///< 0: not known
};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): there is no other way to a handler
std::array<watched_work, 2> watched;
std::atomic<int> current = -1; ///< index of the one to look at
std::atomic<bool> line_shown = false;
std::atomic<int> pauses = 0;
std::size_t line_limit = 79; ///< a line that goes on in the next row could not be erased
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

constexpr std::string_view erase_line = "\r\x1B[K";

void write_to_terminal(std::string_view text) noexcept {
    // There is nobody to inform that the terminal cannot be written to.
    static_cast<void>(kvrimage::platform::write_all(system::standard_error, text));
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

work_share share_of(const watched_work& work) noexcept {
    if (work.descriptor >= 0) {
        return {system::position_of(work.descriptor), work.size};
    }
    // Both change while we look at them.
    const auto all = static_cast<long long>(kvrimage::current_work.all.load(std::memory_order_relaxed));
    const auto done = static_cast<long long>(kvrimage::current_work.done.load(std::memory_order_relaxed));
    return {std::min(done, all), all};
}

/// Seconds from the begin of @p work until now.
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

void show_line() {
    const int saved_error = errno;
    const int index = current.load();
    if (index >= 0 && pauses.load() == 0) {
        const watched_work& work = watched[static_cast<std::size_t>(index)];
        line_buffer line;
        line.add(erase_line);
        constexpr std::size_t figures = 24;
        line.add({work.text.data(), std::min(work.length, line_limit - std::min(line_limit, figures))});
        add_share(line, work, share_of(work));
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

void show_progress(std::initializer_list<std::string_view> title, int descriptor, std::uint64_t size) {
    const int next = current.load() == 0 ? 1 : 0;
    watched_work& work = watched[static_cast<std::size_t>(next)];
    work.length = 0;
    for (const std::string_view part : title) {
        const std::size_t count = std::min(part.size(), work.text.size() - work.length);
        std::copy_n(part.data(), count, work.text.data() + work.length);
        work.length += count;
    }
    work.descriptor = descriptor;
    work.size = static_cast<long long>(size);
    clock_gettime(CLOCK_MONOTONIC, &work.begin);
    current.store(next);
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
