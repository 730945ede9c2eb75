#include "kvrimage/files/file_error.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/files/platform.h"
#include "tests/kvrimage/files/read_file.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tests/kvrimage/files/test_pipe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <memory>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

/// Lines of numbers, repeated.
std::string text_of_size(std::size_t size) {
    std::string text;
    for (std::size_t number = 0; number < 1000; ++number) {
        text += std::to_string(number) + '\n';
    }
    while (text.size() < size) {
        text += text;
    }
    text.resize(size);
    return text;
}

/// A pipe whose other end is written by a separate thread.
class writing_pipe {
public:
    explicit writing_pipe(std::string contents) {
        if (!make_pipe(ends)) {
            throw std::system_error(errno, std::generic_category());
        }
        writer = std::thread([this, text = std::move(contents)] {
            static_cast<void>(platform::write_all(ends[1], text)); // fails if the reader is closed
            close(ends[1]);
        });
    }
    writing_pipe(const writing_pipe&) = delete;
    writing_pipe& operator=(const writing_pipe&) = delete;
    ~writing_pipe() {
        close(ends[0]);
        writer.join();
    }
    [[nodiscard]] int descriptor() const { return ends[0]; }

private:
    std::array<int, 2> ends{};
    std::thread writer;
};

class InputFile : public testing::Test {
protected:
    const surviving_closed_pipes survival;
    test_folder folder;
};

TEST_F(InputFile, HasTheWholeContents) {
    for (const std::size_t size : {0UL, 1UL, 65535UL, 65536UL, 65537UL, 5000000UL}) {
        const std::string text = text_of_size(size);
        EXPECT_EQ(input_file(folder.write("a", text)).contents(), text) << size;
    }
}

/// Returns the unused bytes behind the contents.
std::size_t room_behind(const input_file& file) {
    return static_cast<const byte_buffer*>(file.keeper().get())->room();
}

TEST_F(InputFile, TakesRoomForTheFileAndOneByte) {
    EXPECT_EQ(room_behind(input_file(folder.write("a", text_of_size(100000)))), 1U);
    EXPECT_EQ(room_behind(input_file(folder.write("a", "x"))), 65535U);
}

TEST_F(InputFile, TakesDoubleTheRoomForAPipeThatGoesOn) {
    const writing_pipe input(text_of_size(70000));
    EXPECT_EQ(room_behind(input_file(input.descriptor(), "pipe")), 131072U - 70000);
}

TEST_F(InputFile, LeavesItsContentsToTheirKeeper) {
    std::shared_ptr<const void> keeper;
    std::string_view contents;
    {
        const input_file file(folder.write("a", "0 : 1;"));
        keeper = file.keeper();
        contents = file.contents();
    }
    EXPECT_EQ(contents, "0 : 1;");
    EXPECT_EQ(keeper.use_count(), 1);
}

TEST_F(InputFile, TakesAnyBytes) {
    const std::string text("\0\xFF\r\n\0", 5);
    EXPECT_EQ(input_file(folder.write("a", text)).contents(), text);
}

TEST_F(InputFile, HasTheNameOfItsPathInAnyLanguage) {
    const std::string name = "m\xC3\xBCller \xE5\x86\x85\xE5\xAD\x98 \xF0\x9F\x92\xBE";
    const input_file file(folder.write(name, "01\n"));
    EXPECT_EQ(file.contents(), "01\n");
    EXPECT_EQ(file.name(), folder.path(name));
}

TEST_F(InputFile, KeepsItsContentsWhenItIsMoved) {
    input_file file(folder.write("a", "0 : 1;"));
    const std::string_view before_move = file.contents();
    const input_file moved = std::move(file);
    EXPECT_EQ(moved.contents().data(), before_move.data());
    EXPECT_EQ(moved.contents(), "0 : 1;");
}

TEST_F(InputFile, ReadsADescriptorFromWhereItIs) {
    const std::string path = folder.write("a", "0123456789");
    const int descriptor = platform::open_to_read(path);
    lseek(descriptor, 4, SEEK_SET);
    const input_file file(descriptor, "some input");
    EXPECT_EQ(file.contents(), "456789");
    EXPECT_EQ(file.name(), "some input");
    EXPECT_EQ(close(descriptor), 0) << "it stays open";
}

TEST_F(InputFile, ReadsStandardInputForADash) {
    const std::string path = folder.write("a", "01\n");
    const int kept = dup(STDIN_FILENO);
    const int descriptor = platform::open_to_read(path);
    dup2(descriptor, STDIN_FILENO);
    const input_file file("-");
    dup2(kept, STDIN_FILENO);
    close(kept);
    close(descriptor);
    EXPECT_EQ(file.contents(), "01\n");
    EXPECT_EQ(file.name(), "standard input");
}

TEST_F(InputFile, ReadsAPipeUpToTheLimit) {
    const std::string text = text_of_size(most_bytes_without_end);
    const writing_pipe input(text);
    const input_file file(input.descriptor(), "pipe");
    EXPECT_TRUE(file.contents() == text);
    EXPECT_EQ(room_behind(file), 1U);
}

TEST_F(InputFile, RefusesAPipeBeyondTheLimit) {
    const writing_pipe input(text_of_size(most_bytes_without_end + 1));
    try {
        const input_file file(input.descriptor(), "pipe");
        FAIL();
    } catch (const file_error& error) {
        EXPECT_STREQ(error.what(),
                     "pipe: error: only a file may have more than 32 MiB; copy the input to a file first");
        EXPECT_EQ(error.code(), std::errc::file_too_large);
    }
}

TEST_F(InputFile, ReadsAFileBeyondTheLimit) {
    const std::string text = text_of_size(2 * most_bytes_without_end + 12345);
    EXPECT_TRUE(input_file(folder.write("a", text)).contents() == text);
}

TEST_F(InputFile, ReadsALineOfTheLimitAndRefusesALongerOne) {
    const std::string line(most_bytes_without_end, 'x');
    EXPECT_EQ(input_file(folder.write("a", "1\n" + line + "\n2\n")).contents().size(), line.size() + 5);
    std::error_code code;
    EXPECT_EQ(failure_to_read(folder.write("a", "1\n2\n" + line + "x\n"), code),
              folder.path("a") + ":3: error: the line is longer than 32 MiB");
    EXPECT_EQ(code, std::errc::file_too_large);
}

TEST_F(InputFile, ReadsLinesOfAnyLengthWhereTheCallerTakesThem) {
    const std::string path = folder.write("a", std::string(3 * most_bytes_without_end, 'x'));
    int asked = 0;
    const input_file file(path, {}, [&asked](std::string_view) { return ++asked == 1; });
    EXPECT_EQ(file.contents().size(), 3 * most_bytes_without_end);
    EXPECT_EQ(asked, 1);
    EXPECT_THROW(input_file(path, {}, [](std::string_view) { return false; }), file_error);
}

TEST_F(InputFile, SaysThatAFolderIsOne) {
    std::error_code code;
    EXPECT_EQ(failure_to_read(folder.path(), code), folder.path() + ": is a folder");
    EXPECT_EQ(code, std::errc::is_a_directory);
}

TEST_F(InputFile, SaysWhyAFileCannotBeOpened) {
    std::error_code code;
    EXPECT_EQ(failure_to_read(folder.path("none"), code),
              folder.path("none") + ": cannot be opened: No such file or directory");
    EXPECT_EQ(code, std::errc::no_such_file_or_directory);
}

TEST_F(InputFile, RefusesADescriptorThatIsNotOpen) {
    EXPECT_THAT([] { const input_file file(-1, "nothing"); },
                testing::ThrowsMessage<file_error>("nothing: cannot be opened: Bad file descriptor"));
}

TEST_F(InputFile, ReportsThatItWasOpened) {
    const std::string path = folder.write("a", "0123");
    std::uint64_t size = 0;
    std::string name;
    const input_file file(path, [&](const std::string& title, int descriptor, std::uint64_t bytes) {
        platform::file_status status;
        EXPECT_TRUE(platform::look_at(descriptor, status));
        name = title;
        size = bytes;
    });
    EXPECT_EQ(name, path);
    EXPECT_EQ(size, 4U);
}

TEST_F(InputFile, IsEditedInMemoryOnly) {
    const std::string path = folder.write("a", "0 : 1;\n2 : 3;\n");
    input_file file(path);
    file.edit(std::vector<text_edit>{{4, 1, "FFFF"}, {7, 4, ""}});
    EXPECT_EQ(file.contents(), "0 : FFFF;\n3;\n");
    EXPECT_EQ(input_file(path).contents(), "0 : 1;\n2 : 3;\n");
}

TEST_F(InputFile, GrowsBeyondItsRoomWhenItIsEdited) {
    const std::string added(1000000, 'x');
    input_file file(folder.write("a", "01"));
    file.edit(std::vector<text_edit>{{1, 0, added}});
    EXPECT_EQ(file.contents(), "0" + added + "1");
}

TEST_F(InputFile, ShrinksWhenAnEditTakesAway) {
    input_file file(folder.write("a", "0123456789"));
    file.edit(std::vector<text_edit>{{0, 3, ""}, {5, 4, "-"}});
    EXPECT_EQ(file.contents(), "34-9");
}

} // namespace
