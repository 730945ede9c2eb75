#include "kvr/memory/io/copy_padded.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

TEST(CopyPadded, WritesLessThanAWholeStepAfterTheText) {
    const std::string from(96, 'x');
    for (std::size_t length = 0; length <= 64; ++length) {
        std::string to(from.size(), '.');
        kvr::copy_padded(from.data(), length, to.data());
        const std::size_t written = to.find('.');
        EXPECT_GE(written, length);
        EXPECT_LT(written, length + kvr::copy_padding) << length;
        EXPECT_EQ(to.substr(written), std::string(to.size() - written, '.'));
    }
}

} // namespace
