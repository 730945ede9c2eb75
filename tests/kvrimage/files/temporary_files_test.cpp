#include "kvrimage/files/temporary_files.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <deque>
#include <filesystem>
#include <set>
#include <string>
#include <unistd.h>

namespace {

using namespace kvrimage;

class TemporaryFiles : public testing::Test {
protected:
    void make(temporary_file& file) {
        const int descriptor = file.make_in(folder.path(), false);
        ASSERT_GE(descriptor, 0);
        close(descriptor);
    }
    test_folder folder;
};

TEST_F(TemporaryFiles, AreRemovedInTheEnd) {
    {
        temporary_file file;
        make(file);
        EXPECT_EQ(folder.count_files(), 1);
    }
    EXPECT_EQ(folder.count_files(), 0);
}

TEST_F(TemporaryFiles, StayWhenTheyAreKept) {
    {
        temporary_file file;
        make(file);
        file.keep();
        file.keep();
        EXPECT_EQ(file.path(), "");
    }
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(TemporaryFiles, AreRemovedAllAtOnceButForKeptOnes) {
    temporary_file one;
    temporary_file other;
    temporary_file kept;
    make(one);
    make(other);
    make(kept);
    kept.keep();
    remove_temporary_files();
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(TemporaryFiles, BeyondTheListAreRemovedInTheEndOnly) {
    constexpr int many = 10;
    {
        std::deque<temporary_file> files(many);
        for (temporary_file& file : files) {
            make(file);
        }
        remove_temporary_files();
        EXPECT_EQ(folder.count_files(), 2);
    }
    EXPECT_EQ(folder.count_files(), 0);
    temporary_file next;
    make(next);
    remove_temporary_files();
    EXPECT_EQ(folder.count_files(), 0) << "the list has room again";
}

TEST_F(TemporaryFiles, BeyondTheListLeaveTheListAlone) {
    constexpr int listed = 8;
    std::deque<temporary_file> files(listed);
    for (temporary_file& file : files) {
        make(file);
    }
    {
        temporary_file beyond;
        make(beyond);
    }
    remove_temporary_files();
    EXPECT_EQ(folder.count_files(), 0);
}

TEST_F(TemporaryFiles, AreListedWithTheirWholePathOnly) {
    std::filesystem::create_directory(folder.path("a folder with a longer name"));
    {
        temporary_file earlier;
        close(earlier.make_in(folder.path("a folder with a longer name"), false));
    }
    temporary_file file;
    make(file);
    remove_temporary_files();
    EXPECT_EQ(folder.count_files(), 1) << "only the folder is left";
}

TEST_F(TemporaryFiles, HaveNamesOfAllLettersAndDigits) {
    std::set<char> found;
    for (int count = 0; count < 150; ++count) { // in 10^13 runs of this test, one does not find all
        temporary_file file;
        make(file);
        const std::string name = std::filesystem::path(file.path()).filename().string();
        ASSERT_EQ(name.size(), 16U) << name;
        ASSERT_EQ(name.substr(0, 8), ".kvrmem.");
        found.insert(name.begin() + 8, name.end());
    }
    EXPECT_EQ(std::string(found.begin(), found.end()), "0123456789abcdefghijklmnopqrstuvwxyz");
}

TEST_F(TemporaryFiles, CannotBeMadeWhereNoFolderIs) {
    temporary_file file;
    EXPECT_EQ(file.make_in(folder.path("none"), false), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(file.path(), "");
}

} // namespace
