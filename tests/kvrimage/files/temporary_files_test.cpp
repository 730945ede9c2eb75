#include "kvrimage/files/temporary_files.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <deque>
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

TEST_F(TemporaryFiles, CannotBeMadeWhereNoFolderIs) {
    temporary_file file;
    EXPECT_EQ(file.make_in(folder.path("none"), false), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(file.path(), "");
}

} // namespace
