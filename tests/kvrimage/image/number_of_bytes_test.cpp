#include "kvrimage/image/number_of_bytes.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using kvrimage::byte_order;
using kvrimage::number_of_bytes;

TEST(NumberOfBytes, HasTheFirstByteAtTheEndThatTheOrderSays) {
    EXPECT_EQ(number_of_bytes("\x12\x34\xFF", byte_order::big), 0x1234FFU);
    EXPECT_EQ(number_of_bytes("\x12\x34\xFF", byte_order::little), 0xFF3412U);
}

TEST(NumberOfBytes, TakesNoneToEight) {
    constexpr std::string_view bytes = "\x80\x01\x02\x03\x04\x05\x06\x07";
    EXPECT_EQ(number_of_bytes("", byte_order::big), 0U);
    EXPECT_EQ(number_of_bytes(bytes, byte_order::big), 0x8001020304050607U);
    EXPECT_EQ(number_of_bytes(bytes, byte_order::little), 0x0706050403020180U);
}

} // namespace
