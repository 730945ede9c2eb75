#include "kvrimage/formats/mif/mif_kvr.h"
#include "kvrimage/formats/mif/mif_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::string_view kvr_settings =
    "WIDTH=8;\nDEPTH=8;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n";

/// The diagnostics for the library in @p contents, as if the reader had found nothing.
std::vector<diagnostic> found_by_kvr(const std::string& contents) {
    read_result ours = read_mif(contents, {});
    ours.diagnostics.clear();
    return check_mif_with_kvr(contents, {}, ours);
}

struct kvr_refusal {
    std::string statements;
    place where;
    std::string reason;
};

TEST(MifKvr, SaysWhereTheLibraryRefusesAFileAndWhy) {
    const std::size_t begin = kvr_settings.size();
    const kvr_refusal refusals[] = {
        {"0 : 1;\n[1..1] : 5;\nEND;\n", {7, 2, begin + 8, 4}, "the range is not ascending"},
        {"0 : 1;\n[1..\n1] : 5;\nEND;\n", {7, 2, begin + 8, 3}, "the range is not ascending"},
        {"[0] : 1;\nEND;\n", {6, 1, begin, 8}, "it finds no range"},
        {"0 : 1;\n" + std::string(600, ' ') + "1 : 2;\nEND;\n",
         {7, 512, begin + 7 + 511, 1},
         "the line is longer than 511 characters"},
    };
    for (const kvr_refusal& each : refusals) {
        const auto found = found_by_kvr(std::string(kvr_settings) + each.statements);
        ASSERT_EQ(found.size(), 1U) << each.reason;
        EXPECT_EQ(found.front().id, diagnostic_id::kvr_refuses);
        EXPECT_EQ(found.front().where, each.where)
            << found.front().where.line << ':' << found.front().where.column << '+'
            << found.front().where.length;
        EXPECT_THAT(found.front().message, testing::HasSubstr(each.reason));
    }
}

TEST(MifKvr, RepeatsNothingThatOurReadingHasFound) {
    const std::string contents = std::string(kvr_settings) + "[1..1] : 5;\nEND;\n";
    const read_result ours = read_mif(contents, {});
    ASSERT_EQ(ours.diagnostics.size(), 1U);
    EXPECT_TRUE(check_mif_with_kvr(contents, {}, ours).empty());
}

TEST(MifKvr, FindsTheSameWordsInEachRadix) {
    for (const std::string name : {"BIN", "OCT", "DEC", "UNS", "HEX"}) {
        const std::string contents = "WIDTH=8;\nDEPTH=8;\nADDRESS_RADIX=HEX;\nDATA_RADIX=" + name +
                                     ";\nCONTENT BEGIN\n0 : 1;\n7 : 101;\nEND;\n";
        EXPECT_TRUE(found_by_kvr(contents).empty()) << name;
    }
}

} // namespace
