#include "kvr/util/file_system.h"
#include "kvr/util/platform.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/unprivileged.h"
#include "tests/util/working_directory.h"
#include "tests/windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

using kvr_test::content_of;
using kvr_test::temporary_directory;
using kvr_test::working_directory;
using testing::ElementsAre;
using testing::IsEmpty;

// Everything below a directory, without following links.
std::set<std::string> names_below(const std::string& directory) {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory)) {
        names.insert(entry.path().lexically_relative(directory).generic_string());
    }
    return names;
}

TEST(FileSystem, FileAndDirectoryExist) {
    const temporary_directory here;
    const std::string file = here.file("a", "");
    EXPECT_TRUE(kvr_file_exists(file));
    EXPECT_TRUE(kvr_file_exists(here.path("")));
    EXPECT_TRUE(kvr_check_if_file_or_dir_exists(file));
    EXPECT_TRUE(kvr_check_if_file_or_dir_exists(here.path("")));
}

TEST(FileSystem, MissingFileDoesNotExist) {
    const temporary_directory here;
    EXPECT_FALSE(kvr_file_exists(here.path("none")));
    EXPECT_FALSE(kvr_check_if_file_or_dir_exists(here.path("none")));
    EXPECT_FALSE(kvr_file_exists(""));
    EXPECT_FALSE(kvr_file_exists(std::string(1000000, 'x')));
}

TEST(FileSystem, LinkExistsAsFarAsItsTargetDoes) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    const temporary_directory here;
    fs::create_symlink(here.path("none"), here.path("dangling"));
    fs::create_symlink(here.file("file", ""), here.path("link"));
    EXPECT_FALSE(kvr_file_exists(here.path("dangling")));
    EXPECT_TRUE(kvr_file_exists(here.path("link")));
}

TEST(FileSystem, NamesMayHoldAnyByte) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "names of Windows are characters, and some are not allowed";
    }
    const temporary_directory here;
    const std::string file = here.file("\x80\xFF\t*?", "x");
    EXPECT_TRUE(kvr_file_exists(file));
    EXPECT_TRUE(kvr_file_copy(file.c_str(), here.path("\xE9").c_str()));
    EXPECT_EQ(content_of(here.path("\xE9")), "x");
    EXPECT_TRUE(kvr_remove_file(file.c_str()));
}

TEST(CurrentDirectory, IsTheWorkingDirectory) {
    const temporary_directory here;
    const working_directory inside(here.path(""));
    EXPECT_EQ(kvr_get_current_directory(), fs::current_path().string());
}

TEST(CurrentDirectory, PathOf499CharactersFitsAndOf500DoesNot) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "no working directory has a path of more than 260 characters";
    }
    const temporary_directory here;
    const working_directory inside(here.path(""));
    while (fs::current_path().string().size() < 380) {
        fs::create_directory(std::string(100, 'd'));
        fs::current_path(std::string(100, 'd'));
    }
    const std::string base = fs::current_path().string();
    const std::string fits(498 - base.size(), 'f');
    fs::create_directory(fits);
    fs::create_directory(fits + "x");
    fs::current_path(fits);
    EXPECT_EQ(kvr_get_current_directory(), base + "/" + fits);
    EXPECT_EQ(kvr_get_current_directory().size(), 499U);
    fs::current_path(base + "/" + fits + "x");
    EXPECT_EQ(kvr_get_current_directory(), "");
}

TEST(TrailingSlash, IsAppendedWhenThereIsNone) {
    std::string directory = "a";
    add_trailing_slashes_to_directory_name(directory);
    EXPECT_EQ(directory, "a/");
    directory = "a\\b";
    add_trailing_slashes_to_directory_name(directory);
    EXPECT_EQ(directory, "a\\b/");
}

TEST(TrailingSlash, EitherSeparatorIsLeftAlone) {
    std::string directory = "a/";
    add_trailing_slashes_to_directory_name(directory);
    EXPECT_EQ(directory, "a/");
    directory = "a\\";
    add_trailing_slashes_to_directory_name(directory);
    EXPECT_EQ(directory, "a\\");
}

TEST(TrailingSlash, EmptyNameIsOutOfRange) {
    std::string directory;
    EXPECT_THROW(add_trailing_slashes_to_directory_name(directory), std::out_of_range);
    EXPECT_EQ(directory, "");
}

TEST(Directories, AreMadeOnceAndRemovedOnce) {
    const temporary_directory here;
    const std::string path = here.path("d");
    EXPECT_EQ(kvr_mkdir(path.c_str()), 0);
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(kvr_mkdir(path.c_str()), -1);
    EXPECT_EQ(kvr_rmdir(path.c_str()), 0);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(kvr_rmdir(path.c_str()), -1);
}

TEST(Directories, FullOneAndFileAreNotRemoved) {
    const temporary_directory here;
    ASSERT_EQ(kvr_mkdir(here.path("d").c_str()), 0);
    const std::string file = here.file("d/f", "");
    EXPECT_EQ(kvr_rmdir(here.path("d").c_str()), -1);
    EXPECT_EQ(kvr_rmdir(file.c_str()), -1);
    EXPECT_TRUE(fs::exists(file));
}

TEST(Directories, ParentIsNotMadeAlong) {
    const temporary_directory here;
    EXPECT_EQ(kvr_mkdir(here.path("a/b").c_str()), -1);
}

TEST(RemoveFile, RemovesAFileOnce) {
    const temporary_directory here;
    const std::string file = here.file("f", "x");
    EXPECT_TRUE(kvr_remove_file(file.c_str()));
    EXPECT_FALSE(kvr_remove_file(file.c_str()));
}

TEST(RemoveFile, LeavesADirectory) {
    const temporary_directory here;
    ASSERT_EQ(kvr_mkdir(here.path("d").c_str()), 0);
    EXPECT_FALSE(kvr_remove_file(here.path("d").c_str()));
    EXPECT_TRUE(fs::is_directory(here.path("d")));
}

TEST(RemoveFile, RemovesALinkAndLeavesItsTarget) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    const temporary_directory here;
    const std::string file = here.file("f", "x");
    fs::create_symlink(file, here.path("link"));
    EXPECT_TRUE(kvr_remove_file(here.path("link").c_str()));
    EXPECT_EQ(content_of(file), "x");
}

TEST(FileSystem, NullIsAPathThatDoesNotExist) {
    const temporary_directory here;
    const std::string file = here.file("f", "x");
    EXPECT_EQ(kvr_mkdir(nullptr), -1);
    EXPECT_EQ(kvr_rmdir(nullptr), -1);
    EXPECT_FALSE(kvr_remove_file(nullptr));
    EXPECT_FALSE(kvr_remove_all_files(nullptr, true));
    EXPECT_FALSE(kvr_file_copy(nullptr, file.c_str()));
    EXPECT_FALSE(kvr_file_copy(file.c_str(), nullptr));
    EXPECT_EQ(content_of(file), "x");
}

class RemoveAllFiles : public testing::Test {
protected:
    // A directory from which files are removed, with a sibling that no call may change.
    RemoveAllFiles() {
        fs::create_directories(here.path("tree"));
        fs::create_directories(here.path("outside/deep"));
        static_cast<void>(here.file("outside/kept", "kept"));
        static_cast<void>(here.file("outside/deep/kept", "kept"));
    }

    void add(const std::string& name) {
        fs::create_directories(fs::path(here.path("tree/" + name)).parent_path());
        static_cast<void>(here.file("tree/" + name, "content"));
    }
    void add_directory(const std::string& name) { fs::create_directories(here.path("tree/" + name)); }
    void add_link(const std::string& name, const std::string& target) {
        fs::create_symlink(target, here.path("tree/" + name));
    }
    bool remove(const std::string& pattern, bool recursive = false) {
        return kvr_remove_all_files(here.path("tree/" + pattern).c_str(), recursive);
    }
    std::set<std::string> left() { return names_below(here.path("tree")); }

    ~RemoveAllFiles() override {
        EXPECT_EQ(content_of(here.path("outside/kept")), "kept");
        EXPECT_EQ(content_of(here.path("outside/deep/kept")), "kept");
    }

    temporary_directory here;
};

TEST_F(RemoveAllFiles, PatternThatMatchesNothingSucceeds) {
    add("a.txt");
    EXPECT_TRUE(remove("*.none"));
    EXPECT_TRUE(remove("nowhere/*.*"));
    EXPECT_TRUE(remove("")); // the directory without a name
    EXPECT_THAT(left(), ElementsAre("a.txt"));
}

TEST_F(RemoveAllFiles, StarDotStarMatchesEveryName) {
    add("a.txt");
    add("no_dot");
    add(".hidden");
    add("\xE9.\xFF");
    EXPECT_TRUE(remove("*.*"));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RemoveAllFiles, StarMatchesAnyText) {
    for (const char* name : {"ab", "axb", "axyb", "axybc", "ba"}) {
        add(name);
    }
    EXPECT_TRUE(remove("a*b"));
    EXPECT_THAT(left(), ElementsAre("axybc", "ba"));
}

TEST_F(RemoveAllFiles, SeveralStarsMatchWhateverWay) {
    for (const char* name : {"abcbd", "abd", "acbdx", "aabbd"}) {
        add(name);
    }
    EXPECT_TRUE(remove("a*b*d"));
    EXPECT_THAT(left(), ElementsAre("acbdx"));
}

TEST_F(RemoveAllFiles, QuestionMarkMatchesExactlyOneCharacter) {
    for (const char* name : {"a", "ab", "abc"}) {
        add(name);
    }
    EXPECT_TRUE(remove("a?"));
    EXPECT_THAT(left(), ElementsAre("a", "abc"));
}

TEST_F(RemoveAllFiles, NoOtherCharacterIsSpecial) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "names that differ in case are the same on Windows";
    }
    for (const char* name : {"[ab]", "a", "A", "a.b", "axb"}) {
        add(name);
    }
    EXPECT_TRUE(remove("[ab]"));
    EXPECT_TRUE(remove("a.b"));
    EXPECT_TRUE(remove("a"));
    EXPECT_THAT(left(), ElementsAre("A", "axb"));
}

TEST_F(RemoveAllFiles, StarDotWithATextNeedsTheDot) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "Windows takes a name without a dot for one that ends with it";
    }
    add("a");
    add("a.b");
    EXPECT_TRUE(remove("a*.*"));
    EXPECT_THAT(left(), ElementsAre("a"));
}

TEST_F(RemoveAllFiles, SubdirectoryIsAFailureUnlessRecursive) {
    add("only/below");
    EXPECT_FALSE(remove("*.*"));
    EXPECT_THAT(left(), ElementsAre("only", "only/below"));
}

TEST_F(RemoveAllFiles, EmptySubdirectoryIsAFailureUnlessRecursive) {
    add_directory("empty");
    EXPECT_FALSE(remove("empty"));
    EXPECT_THAT(left(), ElementsAre("empty"));
}

TEST_F(RemoveAllFiles, RecursiveTakesTheWholeTree) {
    add("a");
    add("b/c");
    add("b/d/e");
    add_directory("f/g");
    EXPECT_TRUE(remove("*.*", true));
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_TRUE(fs::is_directory(here.path("tree")));
}

TEST_F(RemoveAllFiles, RecursiveTakesAllBelowAMatchingDirectoryOnly) {
    add("x1/anything");
    add("y1/x1");
    EXPECT_TRUE(remove("x*", true));
    EXPECT_THAT(left(), ElementsAre("y1", "y1/x1"));
}

TEST_F(RemoveAllFiles, ReadOnlySubdirectoryIsTakenForAFile) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "a folder of Windows that is read-only keeps nobody from what is in it";
    }
    add_directory("d");
    fs::permissions(here.path("tree/d"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(remove("*.*", true));
    EXPECT_THAT(left(), ElementsAre("d"));
    fs::permissions(here.path("tree/d"), fs::perms::owner_all);
    EXPECT_TRUE(remove("*.*", true));
}

TEST_F(RemoveAllFiles, FirstFailureLeavesTheRestAlone) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "a folder of Windows that is read-only keeps nobody from what is in it";
    }
    add_directory("d");
    fs::permissions(here.path("tree/d"), fs::perms::owner_read | fs::perms::owner_exec);
    for (int i = 0; i < 50; ++i) {
        add("f" + std::to_string(i));
    }
    std::set<std::string> expected; // in the order of the directory; "d" and the entries after it
    for (const kvr::platform::directory_entry& entry :
         kvr::platform::directory(here.path("tree")).find("*.*").entries) {
        if (entry.name == "d" || !expected.empty()) {
            expected.insert(entry.name);
        }
    }
    EXPECT_FALSE(remove("*.*", true));
    EXPECT_EQ(left(), expected);
    fs::permissions(here.path("tree/d"), fs::perms::owner_all);
}

#if !defined(_WIN32)

TEST_F(RemoveAllFiles, DirectoryThatMayBeListedButNotSearchedIsAFailure) {
    add("file");
    const auto list_only = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    fs::permissions(here.path("tree"), list_only);
    const auto removed = [](const std::string& tree) {
        return kvr_remove_all_files((tree + "/*.*").c_str(), true);
    };
    const auto nothing_found = [](const std::string& tree) {
        return kvr_remove_all_files((tree + "/*.none").c_str(), true);
    };
    const std::optional<bool> all = kvr_test::answer_about_unsearchable(here.path("tree"), removed);
    const std::optional<bool> none = kvr_test::answer_about_unsearchable(here.path("tree"), nothing_found);
    fs::permissions(here.path("tree"), fs::perms::owner_all);
    if (!all || !none) {
        GTEST_SKIP() << "there is no user here who may list a directory and not search it";
    }
    EXPECT_FALSE(*all);
    EXPECT_TRUE(*none);
    EXPECT_THAT(left(), ElementsAre("file"));
}

#endif

TEST_F(RemoveAllFiles, LinksAreRemovedAndNotFollowed) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    add("sub/file");
    add_link("to_directory", here.path("outside"));
    add_link("to_file", here.path("outside/kept"));
    add_link("dangling", here.path("none"));
    add_link("sub/to_directory", "../../outside");
    add_link("sub/to_parent", "..");
    add_link("sub/to_self", ".");
    EXPECT_TRUE(remove("*.*", true));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RemoveAllFiles, LinksToDirectoriesGoWithoutTheFlagToo) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "its standard library makes no symbolic links";
    }
    add_link("to_directory", here.path("outside"));
    EXPECT_TRUE(remove("*.*"));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RemoveAllFiles, DotsAreNeverTouched) {
    add("sub/file");
    // Windows finds the folder by its own name, which is outside of it.
    EXPECT_EQ(remove("sub/..", true), !kvr_test::is_windows);
    EXPECT_EQ(remove("sub/.", true), !kvr_test::is_windows);
    EXPECT_TRUE(remove("sub/.?", true));
    EXPECT_TRUE(remove("sub/?", true));
    EXPECT_THAT(left(), ElementsAre("sub", "sub/file"));
}

TEST_F(RemoveAllFiles, DeepTreeGoes) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "paths of Windows have at most 260 characters";
    }
    std::string path = here.path("tree/d");
    for (int depth = 0; depth < 200; ++depth) {
        fs::create_directory(path);
        path += "/d";
    }
    EXPECT_TRUE(remove("*.*", true));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RemoveAllFiles, PatternWithoutADirectoryFailsAtWhatItFinds) {
    add("file.txt");
    const working_directory inside(here.path("tree"));
    EXPECT_FALSE(kvr_remove_all_files("*.txt", false));
    EXPECT_TRUE(kvr_remove_all_files("*.none", false));
    EXPECT_THAT(left(), ElementsAre("file.txt"));
}

TEST_F(RemoveAllFiles, PatternWithoutADirectoryRemovesInOneOfItsOwnName) {
    add("d/d");
    add("d/e");
    const working_directory inside(here.path("tree"));
    EXPECT_TRUE(kvr_remove_all_files("d", false));
    EXPECT_THAT(left(), ElementsAre("d", "d/e"));
}

TEST_F(RemoveAllFiles, BackslashEndsTheDirectoryPartOnlyWithoutASlash) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "a backslash is no letter of a name on Windows";
    }
    add("d\\x"); // a single name on this system
    const working_directory inside(here.path("tree"));
    EXPECT_FALSE(kvr_remove_all_files("d\\*", false));
    EXPECT_THAT(left(), ElementsAre("d\\x"));
    EXPECT_TRUE(kvr_remove_all_files("./d\\*", false));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RemoveAllFiles, NothingBeforeTheOnlySeparatorIsOutOfRange) {
    EXPECT_THROW(kvr_remove_all_files("", true), std::out_of_range);
    EXPECT_THROW(kvr_remove_all_files("/*.no_such_name", true), std::out_of_range);
    EXPECT_THROW(kvr_remove_all_files("\\*.no_such_name", true), std::out_of_range);
}

TEST_F(RemoveAllFiles, VeryLongPatternMatchesNothing) {
    add("a");
    EXPECT_TRUE(remove(std::string(100000, '*') + "x"));
    EXPECT_TRUE(kvr_remove_all_files((std::string(100000, 'd') + "/*.*").c_str(), true));
    EXPECT_THAT(left(), ElementsAre("a"));
}

TEST(FileCopy, CopiesEveryByte) {
    const temporary_directory here;
    std::string content;
    for (int i = 0; i < 10000; ++i) {
        content += static_cast<char>(i * 7);
    }
    for (const std::size_t size : {std::size_t{1}, std::size_t{4095}, std::size_t{4096}, std::size_t{4097},
                                   std::size_t{8192}, content.size()}) {
        const std::string source = here.file("source", content.substr(0, size));
        const std::string destination = here.path("destination");
        EXPECT_TRUE(kvr_file_copy(source.c_str(), destination.c_str()));
        EXPECT_EQ(content_of(destination), content.substr(0, size)) << size;
    }
}

TEST(FileCopy, EmptySourceGivesAnEmptyDestination) {
    const temporary_directory here;
    const std::string source = here.file("source", "");
    const std::string destination = here.file("destination", "old");
    EXPECT_TRUE(kvr_file_copy(source.c_str(), destination.c_str()));
    EXPECT_TRUE(fs::exists(destination));
    EXPECT_EQ(content_of(destination), "");
}

TEST(FileCopy, MissingSourceMakesNoDestination) {
    const temporary_directory here;
    EXPECT_FALSE(kvr_file_copy(here.path("none").c_str(), here.path("destination").c_str()));
    EXPECT_FALSE(fs::exists(here.path("destination")));
}

TEST(FileCopy, DirectoryIsNeitherSourceNorDestination) {
    const temporary_directory here;
    const std::string file = here.file("file", "x");
    EXPECT_FALSE(kvr_file_copy(here.path("").c_str(), here.path("destination").c_str()));
    EXPECT_FALSE(fs::exists(here.path("destination")));
    EXPECT_FALSE(kvr_file_copy(file.c_str(), here.path("").c_str()));
}

TEST(FileCopy, FullDiskIsAFailure) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "this system has no device that is always full";
    }
    const temporary_directory here;
    const std::string source = here.file("source", std::string(100000, 'x'));
    EXPECT_FALSE(kvr_file_copy(source.c_str(), "/dev/full"));
}

TEST(FileCopy, FileOntoItselfIsLeftEmpty) {
    const temporary_directory here;
    const std::string file = here.file("file", "content");
    EXPECT_TRUE(kvr_file_copy(file.c_str(), file.c_str()));
    EXPECT_EQ(content_of(file), "");
}

TEST(FileCopy, SourceThatCannotBeReadIsAFailure) {
    const temporary_directory here;
    // The memory of a process can be opened, but reading fails at unmapped addresses.
    EXPECT_FALSE(kvr_file_copy("/proc/self/mem", here.path("destination").c_str()));
}

TEST_F(RemoveAllFiles, FailureInASubdirectoryEndsTheWork) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "a folder of Windows that is read-only keeps nobody from what is in it";
    }
    add("sub/file");
    add_directory("sub/d");
    fs::permissions(here.path("tree/sub/d"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(remove("*.*", true));
    EXPECT_TRUE(fs::exists(here.path("tree/sub/d")));
    fs::permissions(here.path("tree/sub/d"), fs::perms::owner_all);
}

} // namespace
