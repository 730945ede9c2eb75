#include "kvrimage/files/replacement_file.h"
#include "tests/kvrimage/files/failing_call.h"
#include "tests/kvrimage/files/free_standard_input.h"
#include "tests/kvrimage/files/interrupting_signals.h"
#include "tests/kvrimage/files/written_file.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// Features that only POSIX systems have: permissions, owners, links, these devices, signals, and system calls
// that can fail on request.
namespace {

using namespace kvrimage;

#ifdef SYS_access
constexpr long access_call = SYS_access;
#else
constexpr long access_call = SYS_faccessat;
#endif

#ifdef SYS_readlink
constexpr long readlink_call = SYS_readlink;
#else
constexpr long readlink_call = SYS_readlinkat;
#endif

#ifdef SYS_newfstatat
constexpr long status_call = SYS_newfstatat;
#else
constexpr long status_call = SYS_fstatat64;
#endif

#ifdef SYS_fchown32
constexpr long owner_call = SYS_fchown32;
#else
constexpr long owner_call = SYS_fchown;
#endif

#ifdef SYS_fcntl64
constexpr long flags_call = SYS_fcntl64;
#else
constexpr long flags_call = SYS_fcntl;
#endif

mode_t permissions_of(const std::string& path) {
    struct stat status {};
    stat(path.c_str(), &status);
    return status.st_mode & 07777U;
}

TEST_F(ReplacementFile, GivesANewFileThePermissionsOfTheProcess) {
    const mode_t mask = umask(027);
    write_to(folder.path("a"), "new");
    umask(mask);
    EXPECT_EQ(permissions_of(folder.path("a")), 0640U);
}

TEST_F(ReplacementFile, KeepsThePermissionsOfTheOldFile) {
    folder.write("a", "old");
    for (const mode_t mode : {0604U, 01751U}) {
        chmod(folder.path("a").c_str(), mode);
        write_to(folder.path("a"), "new");
        EXPECT_EQ(permissions_of(folder.path("a")), mode);
    }
}

/// Returns the size of the only file in @p folder.
std::uintmax_t size_of_file_in(const test_folder& folder) {
    return std::filesystem::file_size(std::filesystem::directory_iterator(folder.path())->path());
}

TEST_F(ReplacementFile, HasALargeTextWithoutABuffer) {
    for (const std::size_t size : {1U, 65535U, 65536U, 65537U}) {
        replacement_file file(folder.path("a"));
        file.write(std::string(size, 'x'));
        EXPECT_EQ(size_of_file_in(folder), size < 65536 ? 0 : size);
    }
}

TEST_F(ReplacementFile, IsWrittenWithTheDescriptorZero) {
    const std::string large(65536, 'x');
    const free_standard_input none;
    {
        replacement_file file(folder.path("a"));
        file.write(large);
        EXPECT_EQ(size_of_file_in(folder), large.size()) << "not in a buffer";
        file.commit();
        EXPECT_FALSE(is_open_descriptor(0));
    }
    write_to(folder.path("a"), "new");
    EXPECT_EQ(folder.read("a"), "new");
    EXPECT_FALSE(is_open_descriptor(0));
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, FollowsLinksAlsoToWhereNothingIs) {
    std::filesystem::create_symlink("b", folder.path("a"));
    std::filesystem::create_symlink(folder.path("c"), folder.path("b"));
    write_to(folder.path("a"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("a")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("b")));
    EXPECT_EQ(folder.read("c"), "new");
}

TEST_F(ReplacementFile, RefusesLinksInACircle) {
    std::filesystem::create_symlink("b", folder.path("a"));
    std::filesystem::create_symlink("a", folder.path("b"));
    EXPECT_EQ(failure_to_write(folder.path("a")),
              folder.path("a") + ": cannot be written: Too many levels of symbolic links");
}

TEST_F(ReplacementFile, FollowsAsManyLinksAsTheSystem) {
    folder.write("0", "old");
    for (int link = 1; link <= 41; ++link) {
        std::filesystem::create_symlink(std::to_string(link - 1), folder.path(std::to_string(link)));
    }
    write_to(folder.path("40"), "new");
    EXPECT_EQ(folder.read("0"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("1")));
    EXPECT_EQ(failure_to_write(folder.path("41")),
              folder.path("41") + ": cannot be written: Too many levels of symbolic links");
}

TEST_F(ReplacementFile, WritesADeviceDirectly) {
    EXPECT_EQ(failure_to_write("/dev/null"), "");
    EXPECT_EQ(failure_to_write("/dev/full"), "/dev/full: cannot be written: No space left on device");
}

TEST_F(ReplacementFile, TakesUpAWriteThatASignalInterrupts) {
    const std::string text(std::size_t{4} << 20U, 'x');
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const int kept = dup(STDOUT_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[1]);
    std::size_t received = 0;
    {
        const interrupting_signals signals([&] {
            std::array<char, 65536> block{};
            while (received < text.size()) {
                const ssize_t count = read(ends[0], block.data(), block.size());
                received += count > 0 ? static_cast<std::size_t>(count) : 0;
            }
        });
        write_to("-", text);
        dup2(kept, STDOUT_FILENO);
    }
    close(kept);
    close(ends[0]);
    EXPECT_EQ(received, text.size());
}

TEST_F(ReplacementFile, SaysThisFolderForTheWorkingOne) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::create_directory(folder.path("gone"));
    std::filesystem::current_path(folder.path("gone"));
    std::filesystem::remove(folder.path("gone"));
    EXPECT_EQ(failure_to_write("a"),
              "a: cannot be written: no file can be made in this folder: No such file or directory");
    std::filesystem::current_path(before);
}

TEST_F(ReplacementFile, RefusesAPathBelowAFile) {
    folder.write("a", "old");
    EXPECT_EQ(failure_to_write(folder.path("a/b")),
              folder.path("a/b") + ": cannot be written: Not a directory");
}

TEST_F(ReplacementFile, RefusesAFileThatIsNotToBeWritten) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may write everything";
    }
    folder.write("a", "old");
    chmod(folder.path("a").c_str(), 0444);
    EXPECT_EQ(failure_to_write(folder.path("a")),
              folder.path("a") + ": cannot be written: Permission denied");
}

TEST_F(ReplacementFile, KeepsTheGroupOfTheOldFile) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder.write("a", "old");
    ASSERT_EQ(chown(folder.path("a").c_str(), geteuid(), 65533), 0);
    write_to(folder.path("a"), "new");
    struct stat status {};
    stat(folder.path("a").c_str(), &status);
    EXPECT_EQ(status.st_gid, 65533U);
}

TEST_F(ReplacementFile, KeepsTheOwnerOfTheOldFile) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder.write("a", "old");
    ASSERT_EQ(chown(folder.path("a").c_str(), 65534, 65533), 0);
    write_to(folder.path("a"), "new");
    struct stat status {};
    stat(folder.path("a").c_str(), &status);
    EXPECT_EQ(status.st_uid, 65534U);
    EXPECT_EQ(status.st_gid, 65533U);
}

/// Replaces a file while @p calls fail. The child process ends with the message of the failure.
class ReplacementFileThatFails : public ReplacementFile {
protected:
    void SetUp() override {
        folder.write("a", "old");
        chmod(folder.path("a").c_str(), 01755); // unlike others, this right outlasts a write of any user
    }
    /// Replaces the file by one of @p size bytes.
    void replace(std::initializer_list<failing_call> calls, std::uint32_t size = 3) {
        end_with_answer(
            calls, [&] { return "<" + failure_to_write(folder.path("a"), std::string(size, 'x')) + ">"; });
    }
    static constexpr std::uint32_t large = 0x100000; ///< is not copied into the buffer
};

TEST_F(ReplacementFileThatFails, RefusesAFileThatMayNotBeWritten) {
    EXPECT_EXIT(replace({{SYS_faccessat, EACCES}, {access_call, EACCES}}), testing::ExitedWithCode(0),
                "a: cannot be written: Permission denied>$");
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_F(ReplacementFileThatFails, LeavesTheOldFileWhenThePermissionsCannotBeKept) {
    EXPECT_EXIT(replace({{SYS_fchmod, EPERM}}), testing::ExitedWithCode(0),
                "a: cannot be written: Operation not permitted>$");
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFileThatFails, RefusesAFileThatMayBeALink) {
    constexpr std::uint32_t flag = AT_SYMLINK_NOFOLLOW;
    EXPECT_EXIT(replace({{status_call, EIO, 3, flag, flag}, {SYS_statx, EIO, 2, flag, flag}}),
                testing::ExitedWithCode(0), "a: cannot be written: Input/output error>$");
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_F(ReplacementFileThatFails, RefusesALinkThatCannotBeRead) {
    std::filesystem::create_symlink("a", folder.path("link"));
    const auto write_to_link = [this] { return "<" + failure_to_write(folder.path("link")) + ">"; };
    EXPECT_EXIT(end_with_answer({{SYS_readlinkat, EIO}, {readlink_call, EIO}}, write_to_link),
                testing::ExitedWithCode(0), "link: cannot be written: Input/output error>$");
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_F(ReplacementFileThatFails, LeavesTheOldFileWhenTheNewOneIsNotStored) {
    EXPECT_EXIT(replace({{SYS_fsync, EIO}}), testing::ExitedWithCode(0),
                "a: cannot be written: Input/output error>$");
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFileThatFails, LeavesTheOldFileWhenALargeTextCannotBeWritten) {
    EXPECT_EXIT(replace({{SYS_write, ENOSPC, 2, ~std::uint32_t{0}, large}}, large),
                testing::ExitedWithCode(0), "a: cannot be written: No space left on device>$");
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFileThatFails, WritesNothingAfterAFailure) {
    const auto write_twice = [this] {
        try {
            replacement_file file(folder.path("a"));
            file.write(std::string(large, 'x'));
            file.write(std::string(large + 1, 'x'));
            file.commit();
        } catch (const file_error& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    // A second write would fail for another reason.
    EXPECT_EXIT(end_with_answer({{SYS_write, ENOSPC, 2, ~std::uint32_t{0}, large},
                                 {SYS_write, EIO, 2, ~std::uint32_t{0}, large + 1}},
                                write_twice),
                testing::ExitedWithCode(0), "a: cannot be written: No space left on device$");
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_F(ReplacementFileThatFails, LeavesTheOldFileWhenTheSystemWritesNothing) {
    EXPECT_EXIT(replace({{SYS_write, 0, 2, ~std::uint32_t{0}, large}}, large), testing::ExitedWithCode(0),
                "a: cannot be written: Input/output error>$");
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFileThatFails, LeavesTheOldFileWhenNoStreamCanBeMade) {
    EXPECT_EXIT(replace({{flags_call, ENOMEM}}), testing::ExitedWithCode(0),
                "a: cannot be written: Cannot allocate memory>");
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, ReportsThatStandardOutputCannotBeOpened) {
    rlimit descriptors{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &descriptors), 0);
    const rlimit none = {0, descriptors.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const std::string failure = failure_to_write("-");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &descriptors), 0);
    EXPECT_EQ(failure, "standard output: cannot be written: Too many open files");
}

TEST_F(ReplacementFile, ReportsASpecialFileThatCannotBeOpened) {
    const std::string path = folder.path("a");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(failure_to_write(path), path + ": cannot be written: No such device or address");
    close(descriptor);
}

TEST_F(ReplacementFileThatFails, KeepsTheOwnerWithoutACallIfItIsTheSame) {
    EXPECT_EXIT(replace({{owner_call, EPERM}}), testing::ExitedWithCode(0), "^<>");
    EXPECT_EQ(permissions_of(folder.path("a")), 01755U);
}

TEST_F(ReplacementFileThatFails, DropsTheRightsOfAnOwnerThatCannotBeKept) {
    const int next = dup(STDIN_FILENO);
    close(next);
    const auto descriptor = static_cast<std::uint32_t>(next);
    const auto replace_and_take_descriptor = [&] {
        const std::string failure = failure_to_write(folder.path("a"));
        dup2(STDIN_FILENO, next); // code that runs at the end of the process opens another descriptor
        return "<" + failure + ">";
    };
    const failing_call by_name = {status_call, EIO, 0, ~0U, descriptor};
    const failing_call by_number = {SYS_fstat, EIO, 0, ~0U, descriptor};
    const failing_call by_any = {SYS_statx, EIO, 0, ~0U, descriptor};
    EXPECT_EXIT(end_with_answer({by_name, by_number, by_any}, replace_and_take_descriptor),
                testing::ExitedWithCode(0), "^<>");
    EXPECT_EQ(permissions_of(folder.path("a")), 01755U) << "the owner can be set";
    EXPECT_EXIT(
        end_with_answer({by_name, by_number, by_any, {owner_call, EPERM}}, replace_and_take_descriptor),
        testing::ExitedWithCode(0), "^<>");
    EXPECT_EQ(folder.read("a"), "new");
    EXPECT_EQ(permissions_of(folder.path("a")), 0755U);
}

} // namespace
