#include "kvrimage/files/open_descriptor.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/replacement_file.h"
#include "tests/kvrimage/files/read_file.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tests/kvrimage/files/written_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <unistd.h>

// Features that only Windows has, and the reasons for omitting tests for POSIX systems.
namespace {

using namespace kvrimage;

class FilesOfWindows : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(folder.path("sub"));
        folder.write("sub/a", "old");
    }
    test_folder folder;
};

TEST_F(FilesOfWindows, HavePathsOfEitherSlash) {
    for (const std::string_view inside : {"\\sub\\a", "/sub/a", "\\sub/a", "\\sub\\..\\sub\\.\\a"}) {
        const std::string path = folder.path() + std::string(inside);
        write_to(path, inside);
        EXPECT_EQ(input_file(path).contents(), inside);
        EXPECT_EQ(input_file(path).name(), path);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path("sub")), {}), 1);
}

TEST_F(FilesOfWindows, HavePathsBelowTheWorkingFolderOfADrive) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path("sub"));
    const std::string drive = std::filesystem::current_path().root_name().string();
    EXPECT_EQ(input_file(drive + "a").contents(), "old");
    EXPECT_EQ(failure_to_write(drive + "a"), "");
    std::filesystem::current_path(before);
    EXPECT_EQ(folder.read("sub/a"), "new");
}

TEST_F(FilesOfWindows, AreReplacedWhileTheyAreRead) {
    const open_descriptor reader(platform::open_to_read(folder.path("sub/a")));
    ASSERT_GE(reader.get(), 0);
    EXPECT_EQ(failure_to_write(folder.path("sub/a")), "");
    EXPECT_EQ(folder.read("sub/a"), "new");
    EXPECT_EQ(input_file(reader.get(), "a").contents(), "old");
}

TEST_F(FilesOfWindows, AreNotReplacedWhenTheyAreReadOnly) {
    const auto change = [this](std::filesystem::perm_options how) {
        std::filesystem::permissions(folder.path("sub/a"), std::filesystem::perms::owner_write, how);
    };
    change(std::filesystem::perm_options::remove);
    EXPECT_EQ(failure_to_write(folder.path("sub/a")),
              folder.path("sub/a") + ": cannot be written: Permission denied");
    EXPECT_EQ(folder.read("sub/a"), "old");
    change(std::filesystem::perm_options::add);
}

TEST_F(FilesOfWindows, CanBeTheNullDevice) {
    EXPECT_EQ(failure_to_write("NUL"), "");
    EXPECT_EQ(input_file("NUL").contents(), "");
}

TEST_F(FilesOfWindows, AreReadUnchangedFromAStandardInputInTextMode) {
    const std::string text = "1\r\n2\n3\r4\x1A\r\n5";
    const open_descriptor kept(dup(platform::standard_input));
    const open_descriptor file(platform::open_to_read(folder.write("a", text)));
    dup2(file.get(), platform::standard_input);
    const int mode = _setmode(platform::standard_input, _O_TEXT);
    const input_file input("-");
    const int mode_after_it = _setmode(platform::standard_input, mode);
    dup2(kept.get(), platform::standard_input);
    EXPECT_EQ(input.contents(), text);
    EXPECT_EQ(mode_after_it, _O_TEXT) << "the mode of the program's own descriptor stays";
}

TEST_F(FilesOfWindows, AreNotThereUnderANameThatIsNotUtf8) {
    EXPECT_EQ(platform::open_to_read(folder.path("sub") + "\\\xFF"), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST(FilesOfPosix, HavePermissions) {
    GTEST_SKIP() << "a file of Windows has the rights of its folder: no owner, group and bits are to be kept";
}

TEST(FilesOfPosix, AreFollowedThroughLinks) {
    GTEST_SKIP()
        << "the library of mingw-w64 makes and reads no symbolic links; an output that is one is refused";
}

TEST(FilesOfPosix, CanBeFullOrEndlessDevices) {
    GTEST_SKIP() << "Windows has no /dev/full, /dev/zero and /proc";
}

TEST(FilesOfPosix, CanHaveAnyByteInTheirNames) {
    GTEST_SKIP() << "no file of Windows has a control character in its name";
}

TEST(FilesOfPosix, AreWrittenAndReadWhileSignalsArrive) {
    GTEST_SKIP() << "Windows interrupts no system call, and runs a signal handler in a thread of its own";
}

TEST(FilesOfPosix, FailWhereACallIsMadeToFail) {
    GTEST_SKIP() << "the system calls of Windows cannot be made to fail from within";
}

} // namespace
