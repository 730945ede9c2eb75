#pragma once

#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <system_error>

#if defined(_WIN32)
#include <io.h>
#endif

namespace kvr_test {

/// A call of the library whose allocations fail. A Subject holds the objects of the call and its result; its
/// outcome() describes all of them as a text.
template <class Subject>
struct faulty_call {
    std::string name;
    std::function<void(Subject&)> prepare; ///< without failures
    std::function<void(Subject&)> call;
    bool allocates = true; ///< false: it must not allocate at all
};

/// The number of open files of the process; 0 if the system does not report it.
inline std::size_t open_file_count() {
    std::size_t count = 0;
#if defined(_WIN32)
    constexpr int most_files = 512; // the most streams that can be open
    for (int descriptor = 0; descriptor < most_files; ++descriptor) {
        count += _get_osfhandle(descriptor) != -1 ? 1U : 0U;
    }
#else
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", ignored)) {
        count += entry.path().empty() ? 0U : 1U;
    }
#endif
    return count;
}

/// The distance between the failing allocations. If code is counted or checked, a call takes ten times as
/// long, so only some of its allocations fail; in other builds, every one does.
#ifdef KVR_SLOW_BUILD
constexpr std::size_t fault_step = 17;
#else
constexpr std::size_t fault_step = 1;
#endif

/// Makes each allocation of a call fail, one per trial.
template <class Subject>
class allocation_faults {
public:
    explicit allocation_faults(const faulty_call<Subject>& which) : tried(which) {}

    /// The number of points of failure. Each is tried twice: alone, and with all later allocations failing as
    /// well.
    std::size_t count() {
        const std::size_t files_before = open_file_count();
        undisturbed = outcome_of_undisturbed_call();
        const std::size_t points = count_of(failing_allocation::extent::one);
        count_of(failing_allocation::extent::all_from_there);
        EXPECT_EQ(points != 0, tried.allocates) << tried.name;
        EXPECT_EQ(open_file_count(), files_before) << tried.name << " leaves files open";
        return points;
    }

private:
    [[nodiscard]] std::string outcome_of_undisturbed_call() const {
        Subject subject;
        tried.prepare(subject);
        tried.call(subject);
        return subject.outcome();
    }

    std::size_t count_of(failing_allocation::extent which) const {
        std::size_t count = 0;
        while (is_failed_and_survived(1 + count * fault_step, which)) {
            ++count;
        }
        return count;
    }

    /// False if the call has no such allocation, or if a check fails: one report is enough.
    [[nodiscard]] bool is_failed_and_survived(std::size_t number, failing_allocation::extent which) const {
        SCOPED_TRACE(tried.name + ", allocation " + std::to_string(number) +
                     (which == failing_allocation::extent::one ? "" : " and those after it"));
        trial_result result;
        const allocation_meter meter;
        {
            Subject subject;
            tried.prepare(subject);
            result = trial(subject, number, which);
        }
        const std::size_t lost = allocation_meter::live();
        EXPECT_TRUE(result.right) << "the outcome is another one";
        EXPECT_TRUE(!result.right || lost == 0) << lost << " bytes are lost";
        return result.failed && result.right && lost == 0;
    }

    struct trial_result {
        bool failed = false; ///< the allocation existed
        bool right = false;
    };

    [[nodiscard]] trial_result trial(Subject& subject, std::size_t number,
                                     failing_allocation::extent which) const {
        const ending end = call_with_fault(subject, number, which);
        if (end == ending::bad_alloc) {
            // The object must still be usable.
            tried.call(subject);
        }
        // A call that does not need the memory may succeed (unnoticed), but its result must be right.
        const std::string outcome = subject.outcome();
        if (outcome != undisturbed) {
            EXPECT_EQ(outcome, undisturbed);
        }
        return {end != ending::undisturbed, end != ending::another_exception && outcome == undisturbed};
    }

    enum class ending { undisturbed, unnoticed, bad_alloc, another_exception };

    [[nodiscard]] ending call_with_fault(Subject& subject, std::size_t number,
                                         failing_allocation::extent which) const {
        try {
            const failing_allocation failing(number, which);
            tried.call(subject);
        } catch (const std::bad_alloc&) {
            return ending::bad_alloc;
        } catch (const std::exception& error) {
            ADD_FAILURE() << "not std::bad_alloc comes out, but " << error.what();
            return ending::another_exception;
        }
        return failing_allocation::happened() ? ending::unnoticed : ending::undisturbed;
    }

    const faulty_call<Subject>& tried;
    std::string undisturbed;
};

/// Tries every call of @p table and records the number of their points of failure.
template <class Table>
void expect_allocation_faults_survived(const Table& table) {
    std::size_t points = 0;
    for (const auto& entry : table) {
        points += allocation_faults(entry).count();
    }
    testing::Test::RecordProperty("calls", std::to_string(std::size(table)));
    testing::Test::RecordProperty("fault_points", std::to_string(points));
}

} // namespace kvr_test
