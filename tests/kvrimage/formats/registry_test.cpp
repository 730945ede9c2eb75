#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(Registry, FindsFormatsByIdAndExtension) {
    ASSERT_NE(format_of_name("MIF"), nullptr);
    EXPECT_EQ(format_of_name("MIF")->id, "mif");
    EXPECT_EQ(format_of_path("a.b/boot.Hex"), format_of_name("hex"));
    EXPECT_EQ(format_of_path("a.mif/boot"), nullptr);
    EXPECT_EQ(format_of_name("nothing"), nullptr);
}

} // namespace
