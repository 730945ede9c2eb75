#include "kvrimage/files/input_file.h"
#include "tests/kvrimage/files/free_standard_input.h"
#include "tests/kvrimage/files/interrupting_signals.h"
#include "tests/kvrimage/files/read_file.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <system_error>
#include <unistd.h>

// Features that only POSIX systems have: signals, endless devices, sparse files, line ends in names.
namespace {

using namespace kvrimage;

TEST(InputFileOnPosix, IsNamedVisibly) {
    const test_folder folder;
    const input_file file(folder.write("a\nb", "x"));
    EXPECT_EQ(file.name(), folder.path("a\\x0Ab"));
}

TEST(InputFileOnPosix, TakesUpAReadThatASignalInterrupts) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const interrupting_signals signals([&ends] {
        EXPECT_EQ(::write(ends[1], "01\n", 3), 3);
        close(ends[1]);
    });
    EXPECT_EQ(input_file(ends[0], "a pipe").contents(), "01\n");
    close(ends[0]);
}

TEST(InputFileOnPosix, RefusesADeviceWithoutEnd) {
    std::error_code code;
    EXPECT_EQ(failure_to_read("/dev/zero", code),
              "/dev/zero: error: only a file may have more than 32 MiB; copy the input to a file first");
    EXPECT_EQ(code, std::errc::file_too_large);
}

TEST(InputFileOnPosix, RefusesAHugeFileOfOneLineEarly) {
    const test_folder folder;
    const std::string path = folder.write("a", "");
    ASSERT_EQ(truncate(path.c_str(), off_t{1} << 40U), 0);
    EXPECT_EQ(failure_to_read(path), path + ":1: error: the line is longer than 32 MiB");
}

TEST(InputFileOnPosix, MayHaveTheDescriptorZero) {
    const test_folder folder;
    const std::string path = folder.write("a", "01\n");
    const free_standard_input none;
    EXPECT_EQ(input_file(path).contents(), "01\n");
    EXPECT_FALSE(is_open_descriptor(0));
}

TEST(InputFileOnPosix, SaysWhyAFileCannotBeRead) {
    // The memory of a process can be opened, but reading fails at unmapped addresses.
    EXPECT_EQ(failure_to_read("/proc/self/mem"), "/proc/self/mem: cannot be read: Input/output error");
}

} // namespace
