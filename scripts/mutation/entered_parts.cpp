// Linked into the test programs that scripts/mutate builds. Records the parts of the sources that each test
// enters.

#include "active_mutant.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <memory>

namespace {

/// Writes a line for each test: its name, its processor time in microseconds, and the parts that it has
/// entered. At the end, writes a line for all entered parts.
class entered_parts : public testing::EmptyTestEventListener {
public:
    void OnTestStart(const testing::TestInfo& /*test*/) override {
        collect();
        start = std::clock();
    }

    void OnTestEnd(const testing::TestInfo& test) override {
        const long long microseconds = (std::clock() - start) * 1'000'000LL / CLOCKS_PER_SEC;
        std::fprintf(stderr, "\nentered: %s.%s %lld", test.test_suite_name(), test.name(), microseconds);
        print(kvr_entered_parts);
        collect();
    }

    void OnTestProgramEnd(const testing::UnitTest& /*all*/) override {
        collect();
        std::fprintf(stderr, "\nentered: all 0");
        print(entered_until_now);
    }

private:
    using parts = unsigned char[std::size(kvr_entered_parts)];

    void collect() {
        for (std::size_t part = 0; part < std::size(kvr_entered_parts); ++part) {
            entered_until_now[part] |= kvr_entered_parts[part];
        }
        std::ranges::fill(kvr_entered_parts, 0);
    }

    static void print(const parts& entered) {
        for (std::size_t part = 0; part < std::size(entered); ++part) {
            if (entered[part] != 0) {
                std::fprintf(stderr, " %zu", part);
            }
        }
        std::fputc('\n', stderr);
    }

    parts entered_until_now = {};
    std::clock_t start = 0;
};

/// The list, which is created before main(), owns the listener.
const bool is_listening = [] {
    if (number_in("KVR_PRINT_ENTERED") != 0) {
        testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<entered_parts>().release());
    }
    return true;
}();

} // namespace
