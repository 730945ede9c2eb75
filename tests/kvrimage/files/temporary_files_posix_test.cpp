#include "kvrimage/files/open_descriptor.h"
#include "kvrimage/files/temporary_files.h"
#include "tests/kvrimage/files/failing_call.h"
#include "tests/kvrimage/files/free_standard_input.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace {

using namespace kvrimage;

TEST(TemporaryFilesOnPosix, CanBePrivate) {
    const test_folder folder;
    temporary_file file;
    close(file.make_in(folder.path(), true));
    EXPECT_EQ(std::filesystem::status(file.path()).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(TemporaryFilesOnPosix, CannotBeMadeWhereEveryNameIsTaken) {
    const test_folder folder;
    const auto answer = [&] {
        temporary_file file;
        const int descriptor = file.make_in(folder.path(), false);
        return std::to_string(descriptor) + " " + std::strerror(errno) + file.path();
    };
    EXPECT_EXIT(end_with_answer({{SYS_openat, EEXIST, 2, O_EXCL, O_EXCL}}, answer),
                testing::ExitedWithCode(0), "^-1 File exists$");
}

TEST(TemporaryFilesOnPosix, MayHaveTheDescriptorZero) {
    const test_folder folder;
    const free_standard_input none;
    temporary_file file;
    errno = EEXIST; // of an earlier call
    const open_descriptor made(file.make_in(folder.path(), false));
    EXPECT_EQ(made.get(), 0);
    EXPECT_NE(file.path(), "");
    EXPECT_EQ(folder.count_files(), 1);
}

} // namespace
