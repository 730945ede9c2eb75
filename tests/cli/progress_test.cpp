#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace {

/// While it exists, standard error is a terminal.
class terminal_on_standard_error {
public:
    terminal_on_standard_error() : screen(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (screen < 0 || grantpt(screen) != 0 || unlockpt(screen) != 0) {
            return;
        }
        const int keyboard = open(ptsname(screen), O_RDWR | O_NOCTTY | O_CLOEXEC);
        is_open = keyboard >= 0 && dup2(keyboard, STDERR_FILENO) >= 0;
        close(keyboard);
        reader = std::thread([this] { read_all(); });
    }
    terminal_on_standard_error(const terminal_on_standard_error&) = delete;
    terminal_on_standard_error& operator=(const terminal_on_standard_error&) = delete;
    ~terminal_on_standard_error() {
        end();
        close(before);
        close(screen);
    }

    [[nodiscard]] bool exists() const { return is_open; }
    /// Returns everything that was written to the terminal, and restores standard error.
    std::string end() {
        dup2(before, STDERR_FILENO);
        if (reader.joinable()) {
            reader.join();
        }
        return text;
    }

private:
    /// Reading fails when no descriptor of the terminal is left.
    void read_all() {
        std::array<char, 4096> block{};
        ssize_t size = 0;
        while ((size = read(screen, block.data(), block.size())) > 0) {
            text.append(block.data(), static_cast<std::size_t>(size));
        }
    }

    int before = dup(STDERR_FILENO);
    int screen;
    bool is_open = false;
    std::thread reader;
    std::string text;
};

/// While it exists, the timer's signal arrives without a pause, in another thread.
class constant_alarm {
public:
    constant_alarm() = default;
    constant_alarm(const constant_alarm&) = delete;
    constant_alarm& operator=(const constant_alarm&) = delete;
    ~constant_alarm() {
        is_over = true;
        raiser.join();
    }

    /// Returns after a signal has been handled that arrived after the call.
    void wait_for_one() const {
        const unsigned before = handled;
        while (handled - before < 2) {
            std::this_thread::yield();
        }
    }

private:
    std::atomic<bool> is_over = false;
    std::atomic<unsigned> handled = 0;
    std::thread raiser = std::thread([this] {
        for (; !is_over; ++handled) {
            std::raise(SIGALRM);
        }
    });
};

/// What remains on a terminal of @p text, whose lines are erased at their begin only.
std::string remaining(std::string_view text) {
    constexpr std::string_view erase = "\r\x1B[K";
    std::string rows;
    for (std::size_t begin = 0; begin < text.size();) {
        if (text.substr(begin).starts_with(erase)) {
            rows.erase(rows.rfind('\n') + 1); // from the begin where there is none: npos + 1 is 0
            begin += erase.size();
        } else {
            rows += text[begin++];
        }
    }
    return rows;
}

TEST(Progress, IsNotShownWithinMessagesOfAnotherThread) {
    constexpr int messages = 10'000;
    std::string expected;
    terminal_on_standard_error terminal;
    if (!terminal.exists()) {
        GTEST_SKIP() << "this system has no pseudo-terminals";
    }
    kvrmem::start_progress();
    {
        const constant_alarm alarm;
        kvrmem::show_operation("merge", "in.mif");
        alarm.wait_for_one();
        for (int number = 0; number < messages; ++number) {
            kvrmem::print_message("message " + std::to_string(number));
            expected += "message " + std::to_string(number) + "\r\n";
        }
        kvrmem::end_progress();
    }
    const std::string written = terminal.end();
    EXPECT_NE(written.find("merge of in.mif"), std::string::npos) << "the line has never been shown";
    EXPECT_EQ(remaining(written), expected);
}

} // namespace
