#include "kvrimage/files/signal_pause.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>

namespace {

using namespace kvrimage;

TEST(SignalPause, LetsSignalsWait) {
    static volatile std::sig_atomic_t handled = 0;
    void (*const before)(int) = std::signal(SIGTERM, [](int) { handled = handled + 1; });
    {
        const signal_pause pause;
        static_cast<void>(std::raise(SIGTERM));
        EXPECT_EQ(handled, 0);
    }
    EXPECT_EQ(handled, 1);
    static_cast<void>(std::signal(SIGTERM, before));
}

/// Overwrites the part of the stack that the next call uses.
[[gnu::noinline]] void fill_stack() {
    std::array<volatile unsigned char, 4096> bytes;
    for (volatile unsigned char& byte : bytes) {
        byte = 0xFF;
    }
}

TEST(SignalPause, LetsOtherSignalsThrough) {
    fill_stack();
    const signal_pause pause;
    sigset_t waiting;
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, nullptr, &waiting), 0);
    EXPECT_EQ(sigismember(&waiting, SIGTERM), 1);
    EXPECT_EQ(sigismember(&waiting, SIGUSR1), 0);
}

} // namespace
