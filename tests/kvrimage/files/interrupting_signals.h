#pragma once

#include <chrono>
#include <csignal>
#include <functional>
#include <pthread.h>
#include <thread>
#include <utility>

/// A thread that interrupts the calling thread a few times, 10 ms apart, in any system call, and then calls a
/// function. The destructor waits for it.
class interrupting_signals {
public:
    explicit interrupting_signals(std::function<void()> then) {
        struct sigaction action {};
        action.sa_handler = [](int) {}; // without SA_RESTART, interrupted calls fail
        sigaction(SIGUSR1, &action, &before);
        thread = std::thread([target = pthread_self(), last = std::move(then)] {
            constexpr int times = 5;
            for (int time = 0; time < times; ++time) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
                pthread_kill(target, SIGUSR1);
            }
            last();
        });
    }
    interrupting_signals(const interrupting_signals&) = delete;
    interrupting_signals& operator=(const interrupting_signals&) = delete;
    ~interrupting_signals() {
        thread.join();
        sigaction(SIGUSR1, &before, nullptr);
    }

private:
    struct sigaction before {};
    std::thread thread;
};
