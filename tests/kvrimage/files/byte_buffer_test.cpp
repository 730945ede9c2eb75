#include "kvrimage/files/byte_buffer.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>

namespace {

using namespace kvrimage;

TEST(ByteBuffer, WithoutMemoryIsAsItWas) {
    if (kvr_test::is_sanitized) {
        GTEST_SKIP() << "a sanitizer ends the program";
    }
    constexpr std::size_t too_many = std::numeric_limits<std::size_t>::max() / 4;
    byte_buffer buffer;
    EXPECT_THROW(buffer.reserve(too_many), std::bad_alloc);
    EXPECT_EQ(buffer.room(), 0U);
    buffer.reserve(4);
    *buffer.end() = 'x';
    buffer.used(1);
    EXPECT_THROW(buffer.reserve(too_many), std::bad_alloc);
    EXPECT_EQ(buffer.text(), "x");
}

} // namespace
