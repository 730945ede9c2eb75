#include "kvr/memory/io/output_file.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <utility>

namespace {

using kvr::output_file;
using kvr_test::content_of;
using kvr_test::temporary_directory;

constexpr std::size_t whole_block = output_file::block_size;

std::string random_text(std::mt19937& random, std::size_t size) {
    std::string text(size, '\0');
    std::generate(text.begin(), text.end(), [&] { return static_cast<char>(random() & 0x7fU); });
    return text;
}

TEST(OutputFile, NothingWrittenGivesAnEmptyFile) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("file"));
    ASSERT_TRUE(file.is_open());
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(std::filesystem::exists(directory.path("file")));
    EXPECT_EQ(content_of(directory.path("file")), "");
}

TEST(OutputFile, ReplacesWhatTheFileHolds) {
    const temporary_directory directory;
    const std::string path = directory.file("file", "something longer than the new content");
    output_file file = output_file::create(path);
    file.write("new");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(path), "new");
}

TEST(OutputFile, BytesAreWrittenAsTheyAre) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("file"));
    file.write("a\nb\r\n");
    file.write(std::string(1, '\0'));
    file.write('\xff');
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(directory.path("file")), std::string("a\nb\r\n\0\xff", 7));
}

TEST(OutputFile, RoomIsFilledInPlace) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("file"));
    file.write("<");
    std::fill_n(file.room(100), 3, 'x');
    file.used(3);
    file.write(">");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(directory.path("file")), "<xxx>");
}

TEST(OutputFile, RoomIsThereAtTheEndOfTheBlock) {
    const temporary_directory directory;
    std::string expected(whole_block - 1, 'a');
    output_file file = output_file::create(directory.path("file"));
    file.write(expected);
    std::fill_n(file.room(output_file::room_limit), output_file::room_limit, 'b');
    file.used(output_file::room_limit);
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(directory.path("file")), expected + std::string(output_file::room_limit, 'b'));
}

/// The size of a write around the size of a block.
class OutputFileBlockBorder : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Sizes, OutputFileBlockBorder,
                         testing::Values(whole_block - 2, whole_block - 1, whole_block, whole_block + 1,
                                         3 * whole_block, 3 * whole_block + 1));

TEST_P(OutputFileBlockBorder, WriteBetweenSmallOnes) {
    const temporary_directory directory;
    std::mt19937 random(4);
    const std::string text = random_text(random, GetParam());
    output_file file = output_file::create(directory.path("file"));
    file.write("<");
    file.write(text);
    file.write('>');
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(directory.path("file")), "<" + text + ">");
}

TEST(OutputFile, ManyWritesOfAllSizesComeOutInOrder) {
    const temporary_directory directory;
    std::mt19937 random(5);
    std::string expected;
    output_file file = output_file::create(directory.path("file"));
    for (int round = 0; round < 400; ++round) {
        const std::size_t largest = round % 50 == 0 ? 2 * whole_block : 9000;
        const std::string text = random_text(random, random() % largest);
        if (text.size() <= output_file::room_limit) {
            std::copy(text.begin(), text.end(), file.room(text.size()));
            file.used(text.size());
        } else {
            file.write(text);
        }
        file.write('|');
        expected += text + '|';
    }
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(content_of(directory.path("file")) == expected);
}

TEST(OutputFile, DestructorWritesOutWhatIsBuffered) {
    const temporary_directory directory;
    { output_file::create(directory.path("file")).write("text"); }
    EXPECT_EQ(content_of(directory.path("file")), "text");
}

TEST(OutputFile, MovedFileIsWrittenOn) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("file"));
    file.write("one ");
    output_file moved(std::move(file));
    moved.write("two");
    EXPECT_TRUE(moved.close());
    EXPECT_EQ(content_of(directory.path("file")), "one two");
}

TEST(OutputFile, AssignmentFinishesTheFileThatIsReplaced) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("first"));
    file.write("first");
    file = output_file::create(directory.path("second"));
    EXPECT_EQ(content_of(directory.path("first")), "first");
    file.write("second");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(directory.path("second")), "second");
}

TEST(OutputFile, AssignmentTakesWhatIsNotYetWritten) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("first"));
    file.write("longer than what follows");
    output_file other = output_file::create(directory.path("second"));
    other.write("one ");
    file = std::move(other);
    file.write("two");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(content_of(directory.path("second")), "one two");
}

TEST(OutputFile, StreamIsClosedWithTheFile) {
    const temporary_directory directory;
    output_file file(std::fopen(directory.path("file").c_str(), "wb"));
    file.write("text");
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.is_open());
    EXPECT_EQ(content_of(directory.path("file")), "text");
}

TEST(OutputFile, DirectoryCannotBeWritten) {
    const temporary_directory directory;
    EXPECT_FALSE(output_file::create(directory.path(".")).is_open());
}

TEST(OutputFile, FileInAMissingDirectoryCannotBeWritten) {
    const temporary_directory directory;
    EXPECT_FALSE(output_file::create(directory.path("missing/file")).is_open());
}

TEST(OutputFile, WritingWithoutAFileDropsTheTextAndFails) {
    std::FILE* const none = nullptr;
    output_file file(none);
    file.write(std::string(2 * whole_block, 'x'));
    for (std::size_t count = 0; count < 2 * whole_block; count += 1000) {
        file.write(std::string(1000, 'x'));
    }
    EXPECT_FALSE(file.close());
}

TEST(OutputFile, ClosingTwiceFails) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("file"));
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.close());
}

#if defined(__linux__)

TEST(OutputFileOnFullDisk, SmallTextFailsWhenItIsClosed) {
    output_file file = output_file::create("/dev/full");
    ASSERT_TRUE(file.is_open());
    file.write("x");
    EXPECT_FALSE(file.close());
    EXPECT_FALSE(file.is_open());
}

TEST(OutputFileOnFullDisk, NothingWrittenIsNoFailure) {
    EXPECT_TRUE(output_file::create("/dev/full").close());
}

TEST(OutputFileOnFullDisk, FailureIsKeptUntilTheEnd) {
    output_file file = output_file::create("/dev/full");
    file.write(std::string(2 * whole_block, 'x'));
    for (std::size_t count = 0; count < 2 * whole_block; count += 1000) {
        file.write(std::string(1000, 'x'));
    }
    EXPECT_FALSE(file.close());
}

#endif

#if defined(__GLIBC__)

/// A stream that is interrupted after some bytes of a write and refuses the bytes beyond its capacity.
struct scripted_disk {
    std::size_t capacity;
    std::string content = {};
    int refused = 0;
};

ssize_t write_scripted(void* cookie, const char* bytes, std::size_t size) {
    auto& disk = *static_cast<scripted_disk*>(cookie);
    const std::size_t count = std::min({size, std::size_t{60000}, disk.capacity - disk.content.size()});
    disk.content.append(bytes, count);
    if (count < size) {
        errno = count > 0 ? EINTR : ENOSPC;
        disk.refused += count > 0 ? 0 : 1;
    }
    return static_cast<ssize_t>(count);
}

std::FILE* stream_over(scripted_disk& disk) {
    return fopencookie(&disk, "wb", {nullptr, write_scripted, nullptr, nullptr});
}

TEST(OutputFileWrites, ATextOfABlockOrMoreIsWrittenAtOnce) {
    for (const std::size_t size : {whole_block, whole_block + 1, 2 * whole_block}) {
        scripted_disk disk{.capacity = 10 * whole_block};
        output_file file(stream_over(disk));
        file.write("<");
        EXPECT_EQ(disk.content, "");
        file.write(std::string(size, 'x'));
        EXPECT_TRUE(disk.content == "<" + std::string(size, 'x')) << size;
    }
}

TEST(OutputFileWrites, InterruptedWritesAreContinued) {
    std::mt19937 random(6);
    const std::string text = random_text(random, 3 * whole_block + 17);
    scripted_disk disk{.capacity = 10 * whole_block};
    output_file file(stream_over(disk));
    file.write(text);
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(disk.content == text);
}

/// A disk that fails without an error number, in each write or only when the file is closed.
struct silent_disk {
    bool takes_writes;
    int closing = 0;
};

std::FILE* stream_over(silent_disk& disk, int reason) {
    static int reason_given = 0;
    reason_given = reason;
    const auto write = [](void* cookie, const char* /*bytes*/, std::size_t size) {
        errno = reason_given != 0 ? reason_given : errno;
        return static_cast<silent_disk*>(cookie)->takes_writes ? static_cast<ssize_t>(size) : ssize_t{0};
    };
    const auto close = [](void* cookie) {
        ++static_cast<silent_disk*>(cookie)->closing;
        errno = reason_given != 0 ? reason_given : errno;
        return -1;
    };
    return fopencookie(&disk, "wb", {nullptr, write, nullptr, close});
}

TEST(OutputFileWrites, FailureOfTheCloseIsAFailure) {
    for (const int reason : {ENOSPC, 0}) {
        silent_disk disk{.takes_writes = true};
        output_file file(stream_over(disk, reason));
        file.write("text");
        errno = EACCES; // of an earlier call
        EXPECT_FALSE(file.close());
        EXPECT_EQ(disk.closing, 1);
        EXPECT_EQ(file.failure(), reason != 0 ? reason : EIO);
    }
}

TEST(OutputFileWrites, FirstFailureIsReported) {
    for (const int reason : {ENOSPC, 0}) {
        silent_disk disk{.takes_writes = false};
        output_file file(stream_over(disk, reason));
        errno = EACCES; // of an earlier call
        file.write(std::string(2 * whole_block, 'x'));
        disk.takes_writes = true;
        EXPECT_FALSE(file.close());
        EXPECT_EQ(file.failure(), reason != 0 ? reason : EIO);
    }
}

TEST(OutputFile, AssignmentToItselfKeepsTheFile) {
    scripted_disk disk{.capacity = 100};
    output_file file(stream_over(disk));
    file.write("text");
    output_file& same = file;
    file = std::move(same);
    file.write("s");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(disk.content, "texts");
}

TEST(OutputFileWrites, NothingIsWrittenAfterAFailure) {
    scripted_disk disk{.capacity = 100000};
    output_file file(stream_over(disk));
    file.write(std::string(2 * whole_block, 'x'));
    disk.capacity = 10 * whole_block;
    file.write(std::string(2 * whole_block, 'y'));
    EXPECT_FALSE(file.close());
    EXPECT_EQ(disk.refused, 1);
    EXPECT_TRUE(disk.content == std::string(100000, 'x'));
}

#endif

} // namespace
