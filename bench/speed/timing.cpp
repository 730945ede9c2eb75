#include "bench/speed/timing.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace speed {

double now() {
    const std::chrono::duration<double> time = std::chrono::steady_clock::now().time_since_epoch();
    return time.count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

comparison compare(const measurement& work, const measurement& floor, int rounds) {
    std::vector<double> work_times;
    std::vector<double> floor_times;
    std::vector<double> ratios;
    for (int round = -1; round < rounds; ++round) {
        const double work_time = work();
        const double floor_time = floor();
        if (round >= 0) {
            work_times.push_back(work_time);
            floor_times.push_back(floor_time);
            ratios.push_back(work_time / floor_time);
        }
    }
    return {median(work_times), median(floor_times), median(ratios)};
}

std::vector<char*> argument_pointers(std::vector<std::string>& command) {
    std::vector<char*> pointers;
    pointers.reserve(command.size() + 1);
    for (std::string& word : command) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

namespace {

/// Runs @p command with its output discarded and waits for its end. Ends the program if the command cannot be
/// started or does not exit with 0.
rusage run_process(const std::vector<std::string>& command) {
    std::vector<std::string> words = command;
    const std::vector<char*> pointers = argument_pointers(words);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = -1;
    rusage usage{};
    if (posix_spawn(&child, pointers[0], &actions, nullptr, pointers.data(), environ) == 0) {
        wait4(child, &status, 0, &usage);
    }
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        std::fprintf(stderr, "%s %s failed\n", words[0].c_str(), words.size() > 1 ? words[1].c_str() : "");
        std::exit(1);
    }
    return usage;
}

double seconds_of(const timeval& time) {
    constexpr double microseconds = 1e6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / microseconds;
}

} // namespace

double time_of_process(const std::vector<std::string>& command) {
    const double begin = now();
    static_cast<void>(run_process(command));
    return now() - begin;
}

double processor_time_of_process(const std::vector<std::string>& command) {
    const rusage usage = run_process(command);
    return seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime);
}

double peak_of_process(const std::vector<std::string>& command) {
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        std::vector<std::string> words = command;
        const std::vector<char*> pointers = argument_pointers(words);
        execv(pointers[0], pointers.data());
        _exit(1);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): how the system declares it
    return static_cast<double>(usage.ru_maxrss) / 1000;
}

std::string milliseconds(const comparison& result) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.1f ms / %.1f ms", result.work * 1e3, result.floor * 1e3);
    return text.data();
}

} // namespace speed
