#include "kvr/util/platform.h"
#include "kvrimage/files/open_descriptor.h"
#include "kvrimage/files/platform.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

using namespace kvrimage;

TEST(PlatformOnPosix, OpensFilesThatOtherProgramsDoNotInherit) {
    const test_folder folder;
    const open_descriptor read(platform::open_to_read(folder.write("a", "x")));
    const open_descriptor made(platform::make_file(folder.path("b"), false));
    EXPECT_EQ(fcntl(read.get(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(fcntl(made.get(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

TEST(PlatformOnPosix, OpensStandardInputAndOutputAgain) {
    const open_descriptor input(platform::open_standard_input());
    const open_descriptor output(platform::open_standard_output());
    EXPECT_GT(input.get(), platform::standard_error);
    EXPECT_GT(output.get(), platform::standard_error);
}

TEST(PlatformOnPosix, ForgetsAnEarlierStatus) {
    const test_folder folder;
    platform::file_status status;
    ASSERT_TRUE(platform::look_at(folder.write("a", "x"), status));
    EXPECT_EQ(status.kind, platform::file_kind::regular);
    ASSERT_TRUE(platform::look_at(folder.path("b"), status));
    EXPECT_EQ(status.kind, platform::file_kind::none);
    EXPECT_EQ(status.size, 0U);
}

TEST(PlatformOnPosix, WritesASingleByte) {
    const test_folder folder;
    const open_descriptor file(platform::make_file(folder.path("a"), false));
    errno = 0;
    EXPECT_TRUE(platform::write_all(file.get(), "x"));
    EXPECT_EQ(folder.read("a"), "x");
}

TEST(PlatformOnPosix, AlignsALargeBlockToALargePage) {
    const std::unique_ptr<char, decltype(&std::free)> block(platform::new_block(kvr::platform::large_page),
                                                            &std::free);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.get()) % kvr::platform::large_page, 0U);
}

} // namespace
