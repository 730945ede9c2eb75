// The failure that an output_file reports.

#include "kvr/memory/io/output_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>

#if defined(__GLIBC__)

namespace {

using kvr::output_file;

/// A stream whose writes and whose close fail with these error numbers; 0 means success.
struct failing_stream {
    int write_error = 0;
    int close_error = 0;
    bool close_fails = false;
};

ssize_t write_or_fail(void* cookie, const char* /*bytes*/, std::size_t size) {
    const auto& stream = *static_cast<failing_stream*>(cookie);
    errno = stream.write_error;
    return stream.write_error == 0 ? static_cast<ssize_t>(size) : 0;
}

int close_or_fail(void* cookie) {
    const auto& stream = *static_cast<failing_stream*>(cookie);
    errno = stream.close_error;
    return stream.close_fails ? EOF : 0;
}

output_file file_over(failing_stream& stream) {
    return output_file(fopencookie(&stream, "wb", {nullptr, write_or_fail, nullptr, close_or_fail}));
}

TEST(OutputFileFailure, ThereIsNoneWhenAllIsWritten) {
    failing_stream stream;
    output_file file = file_over(stream);
    file.write("text");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(file.failure(), 0);
}

TEST(OutputFileFailure, OfACloseIsReported) {
    failing_stream stream{.close_error = EDQUOT, .close_fails = true};
    output_file file = file_over(stream);
    file.write("text");
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.failure(), EDQUOT);
}

TEST(OutputFileFailure, OfACloseWithoutANumberIsAnErrorOfTheDevice) {
    failing_stream stream{.close_fails = true};
    output_file file = file_over(stream);
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.failure(), EIO);
}

TEST(OutputFileFailure, OfAWriteIsNotReplacedByThatOfTheClose) {
    failing_stream stream{.write_error = ENOSPC, .close_error = EDQUOT, .close_fails = true};
    output_file file = file_over(stream);
    file.write(std::string(2 * output_file::block_size, 'x'));
    EXPECT_EQ(file.failure(), ENOSPC);
    EXPECT_FALSE(file.close());
    EXPECT_EQ(file.failure(), ENOSPC);
}

TEST(OutputFileFailure, GoesWithTheFileThatIsMoved) {
    failing_stream stream{.write_error = ENOSPC};
    output_file file = file_over(stream);
    file.write(std::string(2 * output_file::block_size, 'x'));
    output_file other(nullptr);
    other = std::move(file);
    EXPECT_EQ(other.failure(), ENOSPC);
    EXPECT_FALSE(other.close());
}

} // namespace

#endif
