#include "kvr/util/platform.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/unprivileged.h"
#include "tests/util/working_directory.h"
#include "tests/windows.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#if !defined(_WIN32)
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;
namespace platform = kvr::platform;

using kvr_test::content_of;
using kvr_test::temporary_directory;

TEST(PlatformDirectory, StaysWithItsDirectoryWhenALinkTakesThePath) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    const temporary_directory here;
    fs::create_directories(here.path("tree"));
    fs::create_directories(here.path("outside"));
    static_cast<void>(here.file("tree/file", "inside"));
    const std::string kept = here.file("outside/file", "outside");
    const platform::directory tree(here.path("tree"));
    fs::rename(here.path("tree"), here.path("moved"));
    fs::create_symlink(here.path("outside"), here.path("tree"));

    ASSERT_EQ(tree.find("*.*").entries.size(), 1U);
    EXPECT_TRUE(tree.remove_file("file"));
    EXPECT_EQ(content_of(kept), "outside");
    EXPECT_FALSE(fs::exists(here.path("moved/file")));
}

TEST(PlatformDirectory, LinkIsNoSubdirectory) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    const temporary_directory here;
    fs::create_directories(here.path("tree"));
    fs::create_directories(here.path("outside"));
    const std::string kept = here.file("outside/file", "outside");
    fs::create_symlink(here.path("outside"), here.path("tree/sub"));

    const platform::directory tree(here.path("tree"));
    const platform::directory sub = tree.subdirectory("sub");
    EXPECT_TRUE(sub.find("*.*").entries.empty());
    EXPECT_FALSE(sub.remove_file("file"));
    EXPECT_FALSE(tree.remove_subdirectory("sub"));
    EXPECT_EQ(content_of(kept), "outside");
}

TEST(PlatformDirectory, AttributesDistinguishPlainDirectories) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    const temporary_directory here;
    fs::create_directories(here.path("plain"));
    fs::create_directories(here.path("read_only"));
    fs::permissions(here.path("read_only"), fs::perms::owner_read | fs::perms::owner_exec);
    static_cast<void>(here.file("file", ""));
    fs::create_symlink(here.path("plain"), here.path("link"));
    const platform::directory directory(here.path(""));
    const auto attributes = [&directory](const std::string& name) {
        return directory.find(name).entries.at(0).attributes;
    };
    EXPECT_EQ(attributes("plain"), 16U);
    EXPECT_EQ(attributes("read_only"), 17U);
    EXPECT_NE(attributes("file"), 16U);
    EXPECT_NE(attributes("link"), 16U);
}

TEST(PlatformDirectory, MissingOneHasNoEntriesAndRemovesNothing) {
    const temporary_directory here;
    const platform::directory missing(here.path("none"));
    EXPECT_TRUE(missing.find("*.*").entries.empty());
    EXPECT_FALSE(missing.remove_file("file"));
    EXPECT_FALSE(missing.remove_subdirectory("directory"));
    EXPECT_TRUE(missing.subdirectory("directory").find("*.*").entries.empty());
}

TEST(PlatformDirectory, ListingOfAMissingOneIsComplete) {
    const temporary_directory here;
    EXPECT_TRUE(platform::directory(here.path("none")).find("*").complete);
    EXPECT_TRUE(platform::directory(here.path("")).find("*").complete);
}

#if !defined(_WIN32)

TEST(PlatformDirectory, ListingThatCannotBeginIsIncomplete) {
    const temporary_directory here;
    const platform::directory directory(here.path(""));
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0; // no more files can be opened
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const platform::directory_listing found = directory.find("*");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_FALSE(found.complete);
    EXPECT_TRUE(found.entries.empty());
}

TEST(PlatformDirectory, ListingThatBreaksOffIsIncomplete) {
    // Reading the list of a process's mapped memory requires the right to inspect the process.
    const platform::directory directory("/proc/" + std::to_string(getpid()) + "/map_files");
    const auto listing_is_complete = [&directory] { return directory.find("*").complete; };
    if (geteuid() != 0 || directory.find("*").entries.empty()) {
        GTEST_SKIP() << "there are no rights to lose here, or no such directory";
    }
    const std::optional<bool> complete = kvr_test::answer_without_privileges(listing_is_complete);
    if (!complete) {
        GTEST_SKIP() << "a process cannot give up its rights here";
    }
    EXPECT_FALSE(*complete);
}

TEST(PlatformDirectory, EntryThatCannotBeInspectedIsListedWithoutAttributes) {
    const temporary_directory here;
    fs::create_directories(here.path("tree/sub"));
    fs::permissions(here.path("tree"),
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const std::optional<bool> listed =
        kvr_test::answer_about_unsearchable(here.path("tree"), [](const std::string& path) {
            const platform::directory_listing found = platform::directory(path).find("*");
            return found.complete && found.entries.size() == 1 && found.entries[0].name == "sub" &&
                   found.entries[0].attributes == 0;
        });
    fs::permissions(here.path("tree"), fs::perms::owner_all);
    if (!listed) {
        GTEST_SKIP() << "there is no user here who may list a directory and not search it";
    }
    EXPECT_TRUE(*listed);
}

#endif

TEST(PlatformDirectory, IsFoundThroughEachTimeItIsAsked) {
    const temporary_directory here;
    static_cast<void>(here.file("a", ""));
    const platform::directory directory(here.path(""));
    EXPECT_EQ(directory.find("*").entries.size(), 1U);
    static_cast<void>(here.file("b", ""));
    EXPECT_EQ(directory.find("*").entries.size(), 2U);
}

TEST(Platform, ExecutableIsThisTestProgram) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "there is no /proc/self/exe on Windows";
    }
    const fs::path path = platform::executable_path();
    EXPECT_EQ(path.filename(), "kvr_tests");
    // Read as a link: under valgrind, the file there is valgrind.
    EXPECT_TRUE(fs::equivalent(path, fs::read_symlink("/proc/self/exe")));
}

TEST(PlatformDirectory, EmptyPathIsTheWorkingDirectory) {
    const temporary_directory here;
    static_cast<void>(here.file("one", ""));
    const kvr_test::working_directory inside(here.path(""));
    const auto found = platform::directory("").find("*").entries;
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "one");
}

} // namespace
