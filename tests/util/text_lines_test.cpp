#include "kvr/util/text_lines.h"
#include "tests/memory/io/failing_file.h"
#include "tests/memory/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#if !defined(_WIN32)
#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <sys/stat.h>
#include <thread>
#endif

namespace {

using kvr_test::temporary_directory;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> lines_of(const std::string& content, std::size_t limit) {
    const temporary_directory here;
    kvr::text_lines lines(here.file("file", content).c_str());
    EXPECT_TRUE(lines.is_open());
    std::vector<std::string> all;
    std::string line;
    while (lines.next(line, limit)) {
        all.push_back(line);
    }
    EXPECT_EQ(line, "");
    return all;
}

TEST(TextLines, EndAtTheirLineFeed) {
    EXPECT_THAT(lines_of("a\n\nbc\n", 10), ElementsAre("a", "", "bc"));
    EXPECT_THAT(lines_of("a\nb", 10), ElementsAre("a", "b"));
    EXPECT_THAT(lines_of("", 10), IsEmpty());
}

TEST(TextLines, LineBeyondTheLimitGoesOnAsTheNext) {
    EXPECT_THAT(lines_of("abcd\nef\n", 4), ElementsAre("abcd", "ef"));
    EXPECT_THAT(lines_of("abcde\nef\n", 4), ElementsAre("abcd", "e", "ef"));
    EXPECT_THAT(lines_of("abcd", 4), ElementsAre("abcd"));
}

TEST(TextLines, EveryOtherByteIsKept) {
    EXPECT_THAT(lines_of(std::string("\r\0\xFF\x1A\n", 5), 10), ElementsAre(std::string("\r\0\xFF\x1A", 4)));
}

#if defined(__GLIBC__)

TEST(TextLines, LineThatAFailureCutsOffIsNone) {
    kvr::failing_file file{.content = "first\nsecond\n", .error_at = 13};
    for (const std::size_t error_at : {8U, 12U}) {
        file.position = 0;
        file.error_at = error_at;
        kvr::platform::file_stream stream(file.open());
        static_cast<void>(std::setvbuf(stream.get(), nullptr, _IONBF, 0)); // a failing read returns no bytes
        kvr::text_lines lines(std::move(stream));
        std::string line;
        EXPECT_TRUE(lines.next(line, 10));
        EXPECT_EQ(line, "first");
        EXPECT_FALSE(lines.next(line, 10));
        EXPECT_EQ(line, "");
        EXPECT_TRUE(lines.failed());
    }
}

#endif

TEST(TextLines, MissingFileAndDirectoryHaveNone) {
    const temporary_directory here;
    std::string line = "old";
    for (const std::string& path : {here.path("none"), here.path("")}) {
        kvr::text_lines lines(path.c_str());
        EXPECT_FALSE(lines.is_open());
        EXPECT_FALSE(lines.next(line, 10));
        EXPECT_EQ(line, "");
    }
    EXPECT_FALSE(kvr::text_lines(nullptr).is_open());
}

#if !defined(_WIN32)

void ignore_signal(int /*number*/) {}

TEST(TextLines, AreReadOnAfterAnInterruption) {
    const temporary_directory here;
    const std::string pipe = here.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    struct sigaction interrupting = {};
    struct sigaction before = {};
    interrupting.sa_handler = ignore_signal; // without SA_RESTART
    ASSERT_EQ(sigaction(SIGUSR1, &interrupting, &before), 0);
    const pthread_t reader = pthread_self();
    std::thread writer([&pipe, reader] {
        std::ofstream stream(pipe);
        for (int time = 0; time < 20; ++time) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            pthread_kill(reader, SIGUSR1);
        }
        stream << "first\nsecond\n";
    });
    // Opening waits for the writer and may be interrupted as well.
    std::unique_ptr<kvr::text_lines> lines;
    do {
        lines = std::make_unique<kvr::text_lines>(pipe.c_str());
    } while (!lines->is_open());
    std::string line;
    EXPECT_TRUE(lines->next(line, 100));
    EXPECT_EQ(line, "first");
    EXPECT_TRUE(lines->next(line, 100));
    EXPECT_EQ(line, "second");
    EXPECT_FALSE(lines->next(line, 100));
    EXPECT_FALSE(lines->failed());
    writer.join();
    sigaction(SIGUSR1, &before, nullptr);
}

#endif

} // namespace
