#include "kvrimage/formats/logisim/logisim_format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::string_view small_logisim = "v3.0 hex words addressed\n0: 1 2 # low\n8: 3*4\n8: 5\n";

TEST(LogisimFormat, HasItsNameAndNoExtension) {
    EXPECT_EQ(format_of_name("logisim"), &logisim_format);
    EXPECT_TRUE(logisim_format.extensions.empty());
}

TEST(LogisimFormat, IsCertainByItsFirstLine) {
    EXPECT_EQ(logisim_format.sniff(small_logisim), certainty::certain);
    EXPECT_EQ(logisim_format.sniff("v2.0 raw \r\n0"), certainty::certain);
    EXPECT_EQ(logisim_format.sniff("v3.0 hex halves\n"), certainty::likely);
    EXPECT_EQ(logisim_format.sniff("v2.0 raws\n"), certainty::likely);
    EXPECT_EQ(logisim_format.sniff("00 01\n"), certainty::no);
    EXPECT_EQ(parse("v2.0 raw\n1\n").facts.as, &logisim_format);
}

TEST(LogisimFormat, FindsTheLineThatSetsAWordLast) {
    EXPECT_EQ(logisim_format.find_word(small_logisim, {}, 1), (place{2, 6, 30, 1}));
    EXPECT_EQ(logisim_format.find_word(small_logisim, {}, 8), (place{4, 4, 48, 1}));
    EXPECT_EQ(logisim_format.find_word(small_logisim, {}, 10), (place{3, 4, 41, 3}));
    EXPECT_EQ(logisim_format.find_word(small_logisim, {}, 2), std::nullopt);
    read_options options;
    options.base = 8;
    EXPECT_EQ(logisim_format.find_word(small_logisim, options, 1), (place{3, 4, 41, 3}));
    EXPECT_EQ(logisim_format.find_word("no such file", {}, 0), std::nullopt);
    EXPECT_EQ(logisim_format.find_word("v3.0 hex words addressed\nx: 1\n0: 2\n", {}, 0),
              (place{3, 4, 33, 1}));
}

TEST(LogisimFormat, FindsTheFirstByteOfAWord) {
    read_options options;
    options.width = 16;
    EXPECT_EQ(logisim_format.find_word("v3.0 hex bytes plain big-endian\n1 2 3 4\n", options, 1),
              (place{2, 5, 36, 1}));
}

TEST(LogisimFormat, FindsComments) {
    std::vector<std::string_view> comments;
    logisim_format.find_comments(small_logisim,
                                 [&](const span& where) { comments.push_back(where.in(small_logisim)); });
    EXPECT_EQ(comments, std::vector<std::string_view>{"# low"});
}

TEST(LogisimFormat, KeepsThePromisesForDamagedFiles) {
    kvrimage_tests::expect_promises_kept(logisim_format, std::string(small_logisim));
    kvrimage_tests::expect_promises_kept(logisim_format, "v2.0 raw\n4*0 1f\n2 #\n");
    kvrimage_tests::expect_promises_kept(logisim_format,
                                         "v3.0 hex bytes addressed big-endian\n0: 1 2 3\n4: 4\n");
}

} // namespace
