// Linked into the test programs that scripts/mutate builds. Determines the mutant that runs and its time
// limit, and records the parts of the sources that each test enters.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <memory>
#include <sys/mman.h>
#include <sys/time.h>

// The sources with mutants declare these.
unsigned kvr_active_mutant = 0; // none
constexpr unsigned long parts_size = 1U << 16;
alignas(parts_size) unsigned char kvr_entered_parts[parts_size]; // by number of the first mutant in the part

namespace {

unsigned number_in(const char* variable) {
    const char* text = std::getenv(variable);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : 0;
}

/// Runs before the first constructor of a global object.
[[gnu::constructor(101)]] void choose_mutant() {
    kvr_active_mutant = number_in("KVR_ACTIVE_MUTANT");
    if (const unsigned milliseconds = number_in("KVR_MOST_MILLISECONDS"); milliseconds != 0) {
        const timeval limit = {milliseconds / 1000, static_cast<suseconds_t>(milliseconds % 1000) * 1000};
        const itimerval timer = {{}, limit};
        setitimer(ITIMER_PROF, &timer, nullptr); // processor time; the signal ends the program
    }
}

/// A test may also enter a part in a child process, which must mark the same bytes.
[[gnu::constructor(101)]] void share_parts_with_children() {
    mmap(kvr_entered_parts, parts_size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS | MAP_FIXED, -1,
         0);
}

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
