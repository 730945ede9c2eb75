#include "kvrimage/formats/readmem/readmem_banner.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

bool is_readmem_banner_alone(std::string_view comment) {
    return is_readmem_banner(comment, {0, comment.size()});
}

TEST(ReadmemBanner, SaysDepthAndWidth) {
    EXPECT_EQ(readmem_banner(memory_image(8, 16)), "// 16 words of 8 bits\n");
}

TEST(ReadmemBanner, IsKnownAgain) {
    EXPECT_TRUE(is_readmem_banner_alone("// 16 words of 8 bits"));
    for (const std::string_view other :
         {"// 16 words of 8 bits!", "// words of 8 bits", "// 16 words of bits", "//16 words of 8 bits",
          "// 16 words", "# 16 words of 8 bits", ""}) {
        EXPECT_FALSE(is_readmem_banner_alone(other)) << other;
    }
    const std::string_view second = "\n// 16 words of 8 bits";
    EXPECT_FALSE(is_readmem_banner(second, {1, second.size() - 1}));
}

} // namespace
