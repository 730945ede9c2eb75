#include "kvrimage/formats/readmem/readmem_search.h"
#include "tests/kvrimage/formats/readmem/shown_readmem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

constexpr std::string_view readmem_list = "01 02\n@4 03\n  @1 04 // 05\n";

TEST(ReadmemSearch, FindsTheLastWordOfAnAddress) {
    EXPECT_EQ(find_readmemh_word(readmem_list, {}, 0), (place{1, 1, 0, 2}));
    EXPECT_EQ(find_readmemh_word(readmem_list, {}, 1), (place{3, 6, 17, 2}));
    EXPECT_EQ(find_readmemh_word(readmem_list, {}, 4), (place{2, 4, 9, 2}));
    EXPECT_EQ(find_readmemh_word(readmem_list, {}, 2), std::nullopt);
    EXPECT_EQ(find_readmemb_word("01 10", {}, 1), (place{1, 4, 3, 2}));
}

TEST(ReadmemSearch, CountsAsTheReaderDoes) {
    read_options options = counting_bytes(32);
    options.base = 8;
    EXPECT_EQ(find_readmemh_word("@8 1 2\n", options, 1), (place{1, 6, 5, 1}));
}

std::vector<std::string> readmem_comments_of(std::string_view contents) {
    std::vector<std::string> found;
    find_readmem_comments(contents, [&](const span& where) { found.emplace_back(where.in(contents)); });
    return found;
}

TEST(ReadmemSearch, FindsCommentsOfEveryKind) {
    EXPECT_THAT(readmem_comments_of("1 // a\n/* b */ 2 # c\n3 -- d\n/* e"),
                ElementsAre("// a", "/* b */", "# c", "-- d", "/* e"));
    EXPECT_THAT(readmem_comments_of("// 2 words of 8 bits\n01 02 // two\n"), ElementsAre("// two"));
}

} // namespace
