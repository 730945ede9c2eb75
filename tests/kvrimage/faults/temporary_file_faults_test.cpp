// Creating a file in a folder in which every name is taken: the attempts, and allocations that fail.

#include "kvrimage/files/temporary_files.h"
#include "tests/allocation.h"
#include "tests/kvrimage/files/failing_call.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <new>
#include <string>

namespace {

using namespace kvrimage;

TEST(TemporaryFileFaults, TryManyNames) {
    const test_folder folder;
    const auto answer = [&] {
        temporary_file file;
        const std::size_t before = allocation_count(); // one or more for each name
        static_cast<void>(file.make_in(folder.path(), false));
        return allocation_count() - before >= 1000 ? "many" : "few";
    };
    EXPECT_EXIT(end_with_answer({{SYS_openat, EEXIST, 2, O_EXCL, O_EXCL}}, answer),
                testing::ExitedWithCode(0), "^many$");
}

TEST(TemporaryFileFaults, LeaveTheFileWhoseNameWasTaken) {
    const test_folder scratch;
    const std::string folder = scratch.path("taken"); // never looked at: the call fails before
    const auto answer = [&] {
        for (std::size_t number = 1; number <= 50; ++number) {
            temporary_file file;
            const failing_allocation failing(number);
            try {
                static_cast<void>(file.make_in(folder, false));
            } catch (const std::bad_alloc&) {
                if (!file.path().empty()) {
                    return "its name is kept";
                }
            }
        }
        return "no name";
    };
    EXPECT_EXIT(end_with_answer({{SYS_openat, EEXIST, 2, O_EXCL, O_EXCL}}, answer),
                testing::ExitedWithCode(0), "^no name$");
}

} // namespace
