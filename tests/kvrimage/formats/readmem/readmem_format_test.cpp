#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(ReadmemFormat, IsFoundByItsNames) {
    EXPECT_EQ(format_of_name("readmemh"), &readmemh_format);
    EXPECT_EQ(format_of_name("readmemb"), &readmemb_format);
    EXPECT_EQ(format_of_path("boot.mem"), &readmemh_format);
    EXPECT_EQ(format_of_path("boot.vmem"), &readmemh_format);
}

TEST(ReadmemFormat, OutputWithTheExtensionHexStaysIntelHex) {
    EXPECT_EQ(format_of_path("boot.hex"), format_of_name("hex"));
    EXPECT_NE(format_of_path("boot.hex"), &readmemh_format);
}

} // namespace
