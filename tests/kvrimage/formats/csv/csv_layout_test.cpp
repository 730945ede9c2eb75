#include "kvrimage/formats/csv/csv_format.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::StartsWith;

read_options with_choices(std::vector<choice> choices) {
    read_options options;
    options.choices = std::move(choices);
    return options;
}

std::string csv_layout_words(const std::string& contents, std::vector<choice> choices = {}) {
    return kvrimage_tests::words_read(csv_format, contents, with_choices(std::move(choices)));
}

TEST(CsvLayout, OneColumnHoldsValues) {
    EXPECT_EQ(csv_layout_words("1\n2\n3\n"), "1 2 3");
    EXPECT_EQ(csv_layout_words("gain\n1\n2\n"), "1 2");
    EXPECT_EQ(csv_layout_words("_\n1\n2\n"), "1 2");
}

TEST(CsvLayout, NamedColumnsHoldAddressesAndValues) {
    EXPECT_EQ(csv_layout_words("address,value\n0,1\n2,3\n"), "1 - 3");
    EXPECT_EQ(csv_layout_words("Value;comment;ADDR\n1;first;1\n2;second;0\n"), "2 1");
    EXPECT_EQ(csv_layout_words("time,data\n7,1\n8,2\n"), "1 2");
    EXPECT_EQ(csv_layout_words("offset\tgain\n1\t5\n"), "- 5");
}

TEST(CsvLayout, ARowOfATableHoldsSeveralValues) {
    EXPECT_EQ(csv_layout_words("7,1\n2,3\n4\n"), "7 1 2 3 4");
    EXPECT_EQ(csv_layout_words("7,1"), "7 1");
    EXPECT_EQ(csv_layout_words("address,0,1\n4,5,6\n"), "- - - - 5 6");
}

TEST(CsvLayout, TheCallerSaysTheColumns) {
    EXPECT_EQ(csv_layout_words("1,9\n0,8\n", {{"address-column", "1"}, {"value-column", "2"}}), "8 9");
    EXPECT_EQ(csv_layout_words("at,gain,x\n1,2,3\n", {{"address-column", "AT"}, {"value-column", "x"}}),
              "- 3");
    EXPECT_EQ(csv_layout_words("0,1\n1,2\n", {{"address-column", "none"}}), "0 1 1 2");
    EXPECT_EQ(csv_layout_words("0,1\n1,2\n", {{"value-column", "2"}}), "1 2");
    EXPECT_EQ(csv_layout_words("4,1,2\n0,3,4\n", {{"address-column", "1"}}), "3 4 - - 1 2");
    EXPECT_EQ(csv_layout_words("a,b\n1,2\n", {{"address-column", "none"}}), "1 2");
}

TEST(CsvLayout, AColumnThatIsNotThereIsBroken) {
    EXPECT_EQ(csv_layout_words("address,value\n0,1\n", {{"value-column", "gain"}}),
              "csv-column 0:0+0: there is no column gain / its columns are address, value");
    EXPECT_EQ(csv_layout_words("0,1\n", {{"value-column", "3"}}),
              "csv-column 0:0+0: there is no column 3 / it has 2, without names: give a number from 1 on");
    EXPECT_THAT(csv_layout_words("0,1\n", {{"address-column", "0"}}), StartsWith("csv-column"));
}

TEST(CsvLayout, ColumnsThatMayHoldEitherAreAskedFor) {
    const std::string unclear =
        "csv-columns-unclear 0:0+0: the columns of addresses and values are unknown / add --address-column 1 "
        "--value-column 2 with the right names or numbers, or --address-column none";
    EXPECT_EQ(csv_layout_words("0,1\n1,2\n"), unclear);
    EXPECT_EQ(csv_layout_words("0x10,1,2\n0x12,3,4\n"), unclear);
    EXPECT_EQ(csv_layout_words("sine,cosine\n1,2\n"), unclear);
    EXPECT_EQ(csv_layout_words("address,sine,cosine\n1,2,3\n"), unclear);
}

TEST(CsvLayout, AFieldThatBeginsWithADigitIsNoHeader) {
    EXPECT_THAT(csv_layout_words("1x\n2\n"), StartsWith("csv-value 1:1+2"));
}

TEST(CsvLayout, HexadecimalValuesAreNoHeader) {
    EXPECT_EQ(csv_layout_words("AB\nCD\n", {{"value-radix", "hex"}}), "AB CD");
}

} // namespace
