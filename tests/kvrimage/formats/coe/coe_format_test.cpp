#include "kvrimage/formats/coe/coe_format.h"
#include "kvrimage/formats/format_text.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::string_view small_coe =
    "; two words\nmemory_initialization_radix=16;\nmemory_initialization_vector=\n0A,\n1B;\n";

TEST(CoeFormat, HasItsNameAndExtension) {
    EXPECT_EQ(format_of_name("coe"), &coe_format);
    EXPECT_EQ(format_of_path("table.coe"), &coe_format);
}

TEST(CoeFormat, IsCertainByItsKeywords) {
    EXPECT_EQ(coe_format.sniff(small_coe), certainty::certain);
    EXPECT_EQ(coe_format.sniff("Memory_Initialization_Vector = "), certainty::certain);
    EXPECT_EQ(coe_format.sniff("a\nmemory_initialization_radix=16;"), certainty::likely);
    EXPECT_EQ(coe_format.sniff("; comment\n00 01\n"), certainty::no);
    EXPECT_EQ(coe_format.sniff(""), certainty::no);
}

TEST(CoeFormat, FindsTheLineOfAWord) {
    EXPECT_EQ(coe_format.find_word(small_coe, {}, 0), (place{4, 1, 74, 2}));
    EXPECT_EQ(coe_format.find_word(small_coe, {}, 1), (place{5, 1, 78, 2}));
    EXPECT_EQ(coe_format.find_word(small_coe, {}, 2), std::nullopt);
}

TEST(CoeFormat, FindsComments) {
    std::vector<std::string_view> comments;
    coe_format.find_comments(small_coe, [&](const span& where) { comments.push_back(where.in(small_coe)); });
    EXPECT_EQ(comments, std::vector<std::string_view>{"; two words"});
}

TEST(CoeFormat, IsLaidOutWithAStatementALine) {
    const formatted_text laid_out =
        format_text("; note \t\nmemory_initialization_radix = 16 ; memory_initialization_vector = 0a , 1b;",
                    {.as = &coe_format});
    EXPECT_EQ(laid_out.text,
              "; note\nmemory_initialization_radix=16;\nmemory_initialization_vector=\n0A, 1B;\n");
}

TEST(CoeFormat, KeepsThePromisesForDamagedFiles) {
    kvrimage_tests::expect_promises_kept(coe_format, std::string(small_coe));
    kvrimage_tests::expect_promises_kept(
        coe_format, "memory_initialization_radix=10;memory_initialization_vector=1,2,300 7,;");
}

} // namespace
