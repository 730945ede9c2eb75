#include "kvr/util/platform.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/working_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;
namespace platform = kvr::platform;

using kvr_test::content_of;
using kvr_test::temporary_directory;

TEST(PlatformDirectory, StaysWithItsDirectoryWhenALinkTakesThePath) {
    const temporary_directory here;
    fs::create_directories(here.path("tree"));
    fs::create_directories(here.path("outside"));
    static_cast<void>(here.file("tree/file", "inside"));
    const std::string kept = here.file("outside/file", "outside");
    const platform::directory tree(here.path("tree"));
    fs::rename(here.path("tree"), here.path("moved"));
    fs::create_symlink(here.path("outside"), here.path("tree"));

    ASSERT_EQ(tree.find("*.*").size(), 1U);
    EXPECT_TRUE(tree.remove_file("file"));
    EXPECT_EQ(content_of(kept), "outside");
    EXPECT_FALSE(fs::exists(here.path("moved/file")));
}

TEST(PlatformDirectory, LinkIsNoSubdirectory) {
    const temporary_directory here;
    fs::create_directories(here.path("tree"));
    fs::create_directories(here.path("outside"));
    const std::string kept = here.file("outside/file", "outside");
    fs::create_symlink(here.path("outside"), here.path("tree/sub"));

    const platform::directory tree(here.path("tree"));
    const platform::directory sub = tree.subdirectory("sub");
    EXPECT_TRUE(sub.find("*.*").empty());
    EXPECT_FALSE(sub.remove_file("file"));
    EXPECT_FALSE(tree.remove_subdirectory("sub"));
    EXPECT_EQ(content_of(kept), "outside");
}

TEST(PlatformDirectory, AttributesTellPlainDirectories) {
    const temporary_directory here;
    fs::create_directories(here.path("plain"));
    fs::create_directories(here.path("read_only"));
    fs::permissions(here.path("read_only"), fs::perms::owner_read | fs::perms::owner_exec);
    static_cast<void>(here.file("file", ""));
    fs::create_symlink(here.path("plain"), here.path("link"));
    const platform::directory directory(here.path(""));
    const auto attributes = [&directory](const std::string& name) {
        return directory.find(name).at(0).attributes;
    };
    EXPECT_EQ(attributes("plain"), 16U);
    EXPECT_EQ(attributes("read_only"), 17U);
    EXPECT_NE(attributes("file"), 16U);
    EXPECT_NE(attributes("link"), 16U);
}

TEST(PlatformDirectory, MissingOneHasNoEntriesAndRemovesNothing) {
    const temporary_directory here;
    const platform::directory missing(here.path("none"));
    EXPECT_TRUE(missing.find("*.*").empty());
    EXPECT_FALSE(missing.remove_file("file"));
    EXPECT_FALSE(missing.remove_subdirectory("directory"));
    EXPECT_TRUE(missing.subdirectory("directory").find("*.*").empty());
}

TEST(PlatformDirectory, IsFoundThroughEachTimeItIsAsked) {
    const temporary_directory here;
    static_cast<void>(here.file("a", ""));
    const platform::directory directory(here.path(""));
    EXPECT_EQ(directory.find("*").size(), 1U);
    static_cast<void>(here.file("b", ""));
    EXPECT_EQ(directory.find("*").size(), 2U);
}

TEST(Platform, ExecutableIsThisTestProgram) {
    const fs::path path = platform::executable_path();
    EXPECT_EQ(path.filename(), "kvr_tests");
    // Read as a link: the file that valgrind shows there is valgrind.
    EXPECT_TRUE(fs::equivalent(path, fs::read_symlink("/proc/self/exe")));
}

TEST(PlatformDirectory, EmptyPathIsTheWorkingDirectory) {
    const temporary_directory here;
    static_cast<void>(here.file("one", ""));
    const kvr_test::working_directory inside(here.path(""));
    const auto found = platform::directory("").find("*");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "one");
}

} // namespace
