#include "kvrimage/formats/csv/csv_format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using namespace kvrimage;

constexpr std::string_view small_csv = "address,value\n0,0x1F\n2,\"7\"\n0,3\n";

TEST(CsvFormat, HasItsNameAndExtensions) {
    EXPECT_EQ(format_of_name("csv"), &csv_format);
    EXPECT_EQ(format_of_path("table.csv"), &csv_format);
    EXPECT_EQ(format_of_path("table.TSV"), &csv_format);
}

TEST(CsvFormat, IsLikelyWhereColumnsAreNamed) {
    EXPECT_EQ(csv_format.sniff(small_csv), certainty::likely);
    EXPECT_EQ(csv_format.sniff("address,gain\n"), certainty::no);
    EXPECT_EQ(csv_format.sniff("1,2\n"), certainty::no);
    EXPECT_EQ(csv_format.sniff(""), certainty::no);
    EXPECT_EQ(parse(small_csv).facts.as, &csv_format);
}

TEST(CsvFormat, FindsTheLineThatSetsAWordLast) {
    EXPECT_EQ(csv_format.find_word(small_csv, {}, 0), (place{4, 3, 29, 1}));
    EXPECT_EQ(csv_format.find_word(small_csv, {}, 2), (place{3, 4, 24, 1}));
    EXPECT_EQ(csv_format.find_word(small_csv, {}, 1), std::nullopt);
    read_options options;
    options.base = 2;
    EXPECT_EQ(csv_format.find_word(small_csv, options, 0), (place{3, 4, 24, 1}));
    EXPECT_EQ(csv_format.find_word("address,value\nx,1\n0,2\n", {}, 0), (place{3, 3, 20, 1}));
}

TEST(CsvFormat, KeepsThePromisesForDamagedFiles) {
    kvrimage_tests::expect_promises_kept(csv_format, std::string(small_csv));
    kvrimage_tests::expect_promises_kept(csv_format, "1;-2;3\n0b1;\"4\";0x5\n");
    read_options options;
    options.choices = {{"value-radix", "fixed:2.6"}, {"saturate", ""}};
    kvrimage_tests::expect_promises_kept(csv_format, "0.5\n-1e-2\n3\n", options);
}

} // namespace
