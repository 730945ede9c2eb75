#include "kvr/util/data_path.h"
#include "kvr/util/installation_paths.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/environment_variable.h"
#include "tests/util/working_directory.h"
#include "tests/windows.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

using kvr::directory_of_path;
using kvr::find_data_path;
using kvr_test::environment_variable;
using kvr_test::temporary_directory;
using kvr_test::working_directory;

const std::string functions = "../libraries/plexfunctions/";

// A separate working directory, in which installations of any name can be created, and no environment
// variables.
class InstallationPaths : public testing::Test {
protected:
    temporary_directory here;
    working_directory inside{here.path("")};
    environment_variable no_binary_directory{"VELKORA_BINDIR", std::nullopt};
    environment_variable no_root_directory{"VELKORA_ROOTDIR", std::nullopt};
};

TEST(DirectoryOfPath, EndsInItsSeparator) {
    EXPECT_EQ(directory_of_path("/opt/t/bin64/tool"), "/opt/t/bin64/");
    EXPECT_EQ(directory_of_path("D:\\t\\bin\\tool.exe"), "D:\\t\\bin\\");
    EXPECT_EQ(directory_of_path("D:\\t/bin\\tool/exe"), "D:\\t/bin\\tool/");
    EXPECT_EQ(directory_of_path("t/bin/"), "t/bin/");
}

TEST(DirectoryOfPath, FileBelowTheRootIsGivenWhole) {
    EXPECT_EQ(directory_of_path("/tool"), "/tool");
    EXPECT_EQ(directory_of_path("\\tool"), "\\tool");
    EXPECT_EQ(directory_of_path("/"), "/");
}

TEST(DirectoryOfPath, NoSeparatorIsOutOfRange) {
    EXPECT_THROW(directory_of_path("tool"), std::out_of_range);
    EXPECT_THROW(directory_of_path(""), std::out_of_range);
}

TEST(ModulePath, IsTheDirectoryOfThisTestProgram) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "there is no /proc/self/exe on Windows";
    }
    EXPECT_EQ(kvr_get_module_path(), fs::read_symlink("/proc/self/exe").parent_path().string() + "/");
}

TEST_F(InstallationPaths, ExistingBinaryDirectoryIsTheToolsDirectory) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "C: and D: are drives on Windows, and no folders of the working one";
    }
    fs::create_directories("C:/t/bin");
    const environment_variable binary("VELKORA_BINDIR", "C:/t/bin");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/bin/");
}

TEST_F(InstallationPaths, MissingBinaryDirectoryGivesWayToTheRootDirectory) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "C: and D: are drives on Windows, and no folders of the working one";
    }
    fs::create_directories("C:/t");
    const environment_variable binary("VELKORA_BINDIR", "C:/t/bin");
    const environment_variable root("VELKORA_ROOTDIR", "C:/t");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/bin64/");
}

TEST_F(InstallationPaths, BinaryDirectoryGoesBeforeTheRootDirectory) {
    fs::create_directories("C:/t/bin");
    const environment_variable binary("VELKORA_BINDIR", "C:/t/bin");
    const environment_variable root("VELKORA_ROOTDIR", "C:/t");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/bin/");
}

TEST_F(InstallationPaths, SeparatorThatIsThereIsNotDoubled) {
    fs::create_directories("C:/t/bin\\");
    const environment_variable slash("VELKORA_BINDIR", "C:/t/");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/");
    const environment_variable backslash("VELKORA_BINDIR", "C:/t/bin\\");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/bin\\");
    const environment_variable none("VELKORA_BINDIR", std::nullopt);
    const environment_variable root_slash("VELKORA_ROOTDIR", "C:/t/");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/bin64/");
    const environment_variable root_backslash("VELKORA_ROOTDIR", "C:/t/bin\\");
    EXPECT_EQ(kvr_get_velkora_module_path(), "C:/t/bin\\bin64/");
}

TEST_F(InstallationPaths, NeitherVariableGivesNothing) {
    EXPECT_EQ(kvr_get_velkora_module_path(), "");
}

TEST_F(InstallationPaths, EmptyAndMissingValuesGiveNothing) {
    const environment_variable empty("VELKORA_BINDIR", "");
    const environment_variable missing("VELKORA_ROOTDIR", "none");
    EXPECT_EQ(kvr_get_velkora_module_path(), "");
}

TEST_F(InstallationPaths, SiblingDataOfTheExecutableComesFirst) {
    fs::create_directories("t/bin64");
    fs::create_directories("t/libraries/plexfunctions");
    fs::create_directories("tool/bin");
    fs::create_directories("tool/libraries/plexfunctions");
    const environment_variable binary("VELKORA_BINDIR", "tool/bin");
    EXPECT_EQ(find_data_path("t/bin64/", functions), "t/bin64/../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, SiblingDataOfTheToolComesSecond) {
    fs::create_directories("tool/bin");
    fs::create_directories("tool/libraries/plexfunctions");
    const environment_variable binary("VELKORA_BINDIR", "tool/bin");
    EXPECT_EQ(find_data_path("t/jre/bin/", functions), "tool/bin/../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, WithoutVariablesTheWorkingDirectoryIsChecked) {
    fs::create_directories("libraries/plexfunctions");
    fs::create_directories("bin");
    const working_directory binary("bin");
    EXPECT_EQ(find_data_path("/none/bin64/", functions), functions);
}

TEST_F(InstallationPaths, NowhereGivesTheSiblingPathOfTheExecutable) {
    EXPECT_EQ(find_data_path("/opt/t/bin64/", functions), "/opt/t/bin64/../libraries/plexfunctions/");
    EXPECT_EQ(find_data_path("D:\\t\\jre\\bin\\", functions), "D:\\t\\jre\\bin\\../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, RuntimeDirectoryIsCutOffAsAThirdTry) {
    fs::create_directories("t/x");
    fs::create_directories("t/libraries/plexfunctions");
    EXPECT_EQ(find_data_path("t/x/jre/bin/", functions), "t/x/../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, RuntimeDirectoryWithBackslashesIsCutOffToo) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "C: and D: are drives on Windows, and no folders of the working one";
    }
    fs::create_directories("D:\\t\\../libraries/plexfunctions"); // "D:\t\.." is a single name on this system
    EXPECT_EQ(find_data_path("D:\\t\\jre\\bin\\", functions), "D:\\t\\../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, RuntimeDirectoryWithSlashesIsLookedForFirst) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "a backslash is no letter of a name on Windows";
    }
    fs::create_directories("a\\jre\\bin\\b");
    fs::create_directories("libraries/plexfunctions");
    EXPECT_EQ(find_data_path("a\\jre\\bin\\b/jre/bin/", functions),
              "a\\jre\\bin\\b/../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, RuntimeDirectoryIsCutOffBeforeItsFirstOccurrence) {
    fs::create_directories("t/x");
    fs::create_directories("t/libraries/plexfunctions");
    EXPECT_EQ(find_data_path("t/x/jre/binary/jre/bin/", functions), "t/x/../libraries/plexfunctions/");
}

TEST_F(InstallationPaths, EachDataDirectoryHasItsOwnRelativePath) {
    fs::create_directories("tool/bin");
    fs::create_directories("tool/libraries/plexfunctions/xml_info");
    fs::create_directories("tool/common/misc");
    const environment_variable binary("VELKORA_BINDIR", "tool/bin");
    EXPECT_EQ(kvr_get_library_module_path(), "tool/bin/../libraries/plexfunctions/xml_info/");
    EXPECT_EQ(kvr_get_plexfunctions_library_path(), "tool/bin/../libraries/plexfunctions/");
    EXPECT_EQ(kvr_get_common_misc_path(), "tool/bin/../common/misc/");
}

TEST_F(InstallationPaths, MissingDataHasTheSiblingPathOfTheRunningExecutable) {
    EXPECT_EQ(kvr_get_library_module_path(), kvr_get_module_path() + "../libraries/plexfunctions/xml_info/");
}

} // namespace
