#include "kvr/util/logging.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using kvr_test::content_of;
using kvr_test::temporary_directory;

TEST(Log, AppendsWhatIsFormattedAndNothingElse) {
    const temporary_directory here;
    const std::string log = here.path("log");
    kvr_logprintf(log.c_str(), "%d words", 12);
    kvr_logprintf(log.c_str(), ", %s %.2f%%\n", "filled", 0.5);
    EXPECT_EQ(content_of(log), "12 words, filled 0.50%\n");
}

TEST(Log, OverwritesOnDemand) {
    const temporary_directory here;
    const std::string log = here.file("log", "much that was there before");
    kvr_logprintf_ovrw(log.c_str(), "%c%x", 'a', 255U);
    EXPECT_EQ(content_of(log), "aff");
}

TEST(Log, EmptyTextMakesTheFile) {
    const temporary_directory here;
    const std::string empty;
    kvr_logprintf(here.path("a").c_str(), "%s", empty.c_str());
    kvr_logprintf_ovrw(here.file("b", "old").c_str(), "%s", empty.c_str());
    EXPECT_TRUE(std::filesystem::exists(here.path("a")));
    EXPECT_EQ(content_of(here.path("b")), "");
}

TEST(Log, LongTextIsWrittenWhole) {
    const temporary_directory here;
    const std::string log = here.path("log");
    const std::string text(1000000, '\xFE');
    kvr_logprintf(log.c_str(), "%s", text.c_str());
    EXPECT_EQ(content_of(log), text);
}

TEST(Log, FileThatCannotBeOpenedIsIgnored) {
    const temporary_directory here;
    kvr_logprintf(here.path("none/log").c_str(), "%d", 1);
    kvr_logprintf_ovrw(here.path("").c_str(), "%d", 1);
    EXPECT_FALSE(std::filesystem::exists(here.path("none")));
}

TEST(Log, NullPathOrFormatDoesNothing) {
    const temporary_directory here;
    const std::string log = here.file("log", "kept");
    const char* const no_text = nullptr;
    kvr_logprintf(no_text, "%d", 1);
    kvr_logprintf_ovrw(no_text, "%d", 1);
    kvr_logprintf(log.c_str(), no_text);
    kvr_logprintf_ovrw(log.c_str(), no_text);
    EXPECT_EQ(content_of(log), "kept");
}

} // namespace
