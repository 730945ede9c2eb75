#include "kvrimage/files/signal_pause.h"

#include <gtest/gtest.h>

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

} // namespace
