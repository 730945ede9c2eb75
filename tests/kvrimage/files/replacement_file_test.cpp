#include "kvrimage/files/file_error.h"
#include "kvrimage/files/platform.h"
#include "tests/kvrimage/files/written_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace kvrimage;

TEST_F(ReplacementFile, ACompleteFileTakesItsPlaceWithTheCommit) {
    folder.write("a", "old");
    replacement_file file(folder.path("a"));
    file.write("new");
    file.complete();
    EXPECT_EQ(folder.read("a"), "old");
    file.complete();
    file.commit();
    EXPECT_EQ(folder.read("a"), "new");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, ACompleteFileThatIsGivenUpIsRemoved) {
    folder.write("a", "old");
    {
        replacement_file file(folder.path("a"));
        file.write("new");
        file.complete();
    }
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, MakesANewFile) {
    write_to(folder.path("a"), "new");
    EXPECT_EQ(folder.read("a"), "new");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, ReplacesAFileOnlyWhenItIsComplete) {
    folder.write("a", "old");
    {
        replacement_file file(folder.path("a"));
        file.write("ne");
        EXPECT_EQ(folder.read("a"), "old");
        EXPECT_EQ(folder.count_files(), 2);
        file.write("w");
        file.commit();
    }
    EXPECT_EQ(folder.read("a"), "new");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, HasTextsOfAnySizeInOrder) {
    const std::string large(std::size_t{1} << 16U, 'x');
    for (const std::vector<std::string>& texts : {std::vector{std::string("a"), large, std::string("b")},
                                                  std::vector{large, std::string("a"), large}}) {
        std::string expected;
        replacement_file file(folder.path("a"));
        for (const std::string& text : texts) {
            file.write(text);
            expected += text;
        }
        file.commit();
        EXPECT_TRUE(folder.read("a") == expected);
    }
}

TEST_F(ReplacementFile, HasAnyName) {
    const std::string name = "m\xC3\xBCller \xE5\x86\x85\xE5\xAD\x98 \xF0\x9F\x92\xBE";
    for (const std::string_view contents : {"old", "new"}) {
        write_to(folder.path(name), contents);
        EXPECT_EQ(folder.read(name), contents);
    }
    ASSERT_EQ(folder.count_files(), 1);
    const auto found = std::filesystem::directory_iterator(folder.path())->path().filename().u8string();
    EXPECT_EQ(std::string(found.begin(), found.end()), name);
}

TEST_F(ReplacementFile, HasTheLineEndsThatAreWritten) {
    write_to(folder.path("a"), "1\n2\r\n3\r4\x1A");
    EXPECT_EQ(folder.read("a"), "1\n2\r\n3\r4\x1A");
}

TEST_F(ReplacementFile, LeavesTheOldFileWithoutACommit) {
    folder.write("a", "old");
    { replacement_file(folder.path("a")).write("new"); }
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(ReplacementFile, KeepsTheOldContentsUnderOtherNames) {
    folder.write("a", "old");
    std::filesystem::create_hard_link(folder.path("a"), folder.path("b"));
    write_to(folder.path("a"), "new");
    EXPECT_EQ(folder.read("b"), "old");
}

TEST_F(ReplacementFile, WritesStandardOutputForADash) {
    const int kept = dup(STDOUT_FILENO);
    const int descriptor = platform::make_file(folder.path("a"), false);
    dup2(descriptor, STDOUT_FILENO);
    write_to("-", "to standard\noutput\n");
    dup2(kept, STDOUT_FILENO);
    close(kept);
    close(descriptor);
    EXPECT_EQ(folder.read("a"), "to standard\noutput\n");
}

TEST_F(ReplacementFile, RefusesAFolder) {
    EXPECT_EQ(failure_to_write(folder.path("")), folder.path("") + ": cannot be written: Is a directory");
}

TEST_F(ReplacementFile, NamesTheFolderThatIsNotThere) {
    EXPECT_EQ(failure_to_write(folder.path("no/a")), folder.path("no/a") +
                                                         ": cannot be written: no file can be made in " +
                                                         folder.path("no") + ": No such file or directory");
}

TEST_F(ReplacementFile, LeavesTheOldFileWhenTheNewOneIsGone) {
    folder.write("a", "old");
    replacement_file file(folder.path("a"));
    file.write("new");
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        if (entry.path().filename() != "a") {
            std::filesystem::remove(entry.path());
        }
    }
    EXPECT_THROW(file.commit(), file_error);
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_F(ReplacementFile, ReportsThatItWasOpened) {
    std::string name;
    const replacement_file file(folder.path("a"),
                                [&name](const std::string& title, int descriptor, std::uint64_t size) {
                                    EXPECT_GE(descriptor, 0);
                                    EXPECT_EQ(size, 0U) << "not known";
                                    name = title;
                                });
    EXPECT_EQ(name, folder.path("a"));
}

TEST_F(ReplacementFile, KeepsTheOldFileWhenTheNewOneCannotBeMovedThere) {
    folder.write("a", "old");
    replacement_file file(folder.path("a"));
    file.write("new");
    std::filesystem::remove(folder.path("a"));
    std::filesystem::create_directory(folder.path("a"));
    EXPECT_THROW(file.commit(), file_error);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("a")));
}

} // namespace
