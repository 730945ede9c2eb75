#include "kvrimage/formats/csv/csv_format.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using kvrimage_tests::found_in;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

read_options csv_options(std::vector<choice> choices, std::optional<std::uint32_t> width = std::nullopt) {
    read_options options;
    options.choices = std::move(choices);
    options.width = width;
    return options;
}

std::string csv_words(const std::string& contents, const read_options& options = {}) {
    return kvrimage_tests::words_read(csv_format, contents, options);
}

std::string fixed_words(const std::string& contents, const std::string& radix_name,
                        std::vector<choice> more = {}) {
    more.push_back({"value-radix", radix_name});
    return csv_words(contents, csv_options(std::move(more)));
}

TEST(CsvReader, ValuesSayTheirRadix) {
    EXPECT_EQ(csv_words("31\n0x1f\n0b11111\n+31\n0X1F\n"), "1F 1F 1F 1F 1F");
    EXPECT_EQ(csv_words("-1\n127\n"), "FF 7F");
}

TEST(CsvReader, TheWidthIsTheSmallestThatHoldsAllValues) {
    const auto width_of = [](const std::string& contents) {
        return kvrimage_tests::read_as(csv_format, contents).image->width();
    };
    EXPECT_EQ(width_of("255\n"), 8U);
    EXPECT_EQ(width_of("255\n-1\n"), 9U);
    EXPECT_EQ(width_of("-1\n255\n-2\n"), 9U);
    EXPECT_EQ(width_of("0x0FF\n1\n"), 12U);
    EXPECT_EQ(width_of("0b0001\n"), 4U);
    EXPECT_EQ(width_of("-129\n"), 9U);
    EXPECT_EQ(width_of("0\n"), 1U);
    EXPECT_EQ(kvrimage_tests::read_as(csv_format, "1\n").facts.width_source, "the widest value");
}

TEST(CsvReader, ValuesOfAGivenWidthAreSignedOrUnsigned) {
    EXPECT_EQ(csv_words("255\n-128\n", csv_options({}, 8)), "FF 80");
    EXPECT_THAT(csv_words("1\n256\n-129\n", csv_options({}, 8)),
                StartsWith("too-wide 2:1+3: value 256 needs 9 bits, the words have 8 / needs --width 9"));
}

TEST(CsvReader, TheCallerSaysTheRadix) {
    EXPECT_EQ(csv_words("10\n0x11\n", csv_options({{"value-radix", "hex"}})), "10 11");
    EXPECT_EQ(csv_words("10\n0b11\n", csv_options({{"value-radix", "bin"}})), "2 3");
    EXPECT_EQ(csv_words("10\n+5\n", csv_options({{"value-radix", "uns"}})), "A 5");
    EXPECT_EQ(csv_words("7\n-8\n", csv_options({{"value-radix", "dec"}})), "7 8");
    EXPECT_EQ(
        kvrimage_tests::read_as(csv_format, "7\n", csv_options({{"value-radix", "dec"}})).image->width(), 4U);
    EXPECT_THAT(csv_words("255\n", csv_options({{"value-radix", "dec"}}, 8)),
                StartsWith("too-wide 1:1+3: value 255 needs 9 bits"));
}

TEST(CsvReader, FractionsAreFixedPoint) {
    EXPECT_EQ(fixed_words("0.5\n-0.25\n0.1\n", "fixed:1.15"), "4000 E000 0CCD");
    EXPECT_EQ(fixed_words("address,value\n1,2.5e0\n", "fixed:4.4"), "- 28");
    EXPECT_EQ(fixed_words("0.5\n1.5\n", "fixed:4.0", {{"round", "even"}}), "0 2");
    EXPECT_EQ(fixed_words("0.5\n1.5\n", "fixed:4.0", {{"round", "nearest"}}), "1 2");
    EXPECT_EQ(fixed_words("0.9\n-0.1\n", "fixed:4.0", {{"round", "down"}}), "0 F");
    EXPECT_EQ(fixed_words("1\n-1.5\n", "fixed:1.3", {{"saturate", ""}}), "7 8");
}

TEST(CsvReader, FractionsBeyondTheFormatAreBroken) {
    EXPECT_EQ(fixed_words("0.5\n1.5\n-3\n", "fixed:1.15"),
              "csv-range 2:1+3: value 1.5 is out of the range of fixed:1.15 / write numbers from -2^0 to "
              "just below 2^0, or use --saturate for the nearest one");
}

TEST(CsvReader, FractionsWithoutAFormatAreBroken) {
    EXPECT_THAT(
        found_in(csv_format, "1\n0.5\n1e3\n"),
        ElementsAre("csv-fraction 2:1+3: 0.5 is a fraction, but no fixed-point format is given / "
                    "add --value-radix fixed:I.F for I integer bits, with the sign, and F fraction bits"));
}

TEST(CsvReader, ChoicesThatAreNotPossibleAreBroken) {
    EXPECT_EQ(fixed_words("1\n", "oct"),
              "choice-value 0:0+0: --value-radix oct is not valid / use one of: dec uns hex bin fixed:I.F");
    EXPECT_THAT(fixed_words("1\n", "fixed:0.4"), StartsWith("choice-value"));
    EXPECT_THAT(fixed_words("1\n", "fixed:1.4", {{"round", "up"}}),
                StartsWith("choice-value 0:0+0: --round up is not valid"));
    EXPECT_THAT(csv_words("1\n", csv_options({{"value-radix", "fixed:1.7"}}, 16)),
                StartsWith("choice-value 0:0+0: --width 16 is not valid / use one of: 8"));
    EXPECT_THAT(csv_words("1\n", csv_options({{"saturate", ""}})),
                StartsWith("choice-without-effect 0:0+0: --saturate has no effect on whole numbers"));
    EXPECT_THAT(csv_words("1\n", csv_options({{"round", "even"}})), StartsWith("choice-without-effect"));
    EXPECT_EQ(csv_words("1\n", csv_options({{"value-radix", "fixed:1.1"}}, 2)),
              "csv-range 1:1+1: value 1 is out of the range of fixed:1.1 / "
              "write numbers from -2^0 to just below 2^0, or use --saturate for the nearest one");
}

TEST(CsvReader, ValuesThatAreNoNumbersAreBroken) {
    EXPECT_THAT(
        found_in(csv_format, "1\n2x\n0x\n"),
        ElementsAre(
            "csv-value 2:1+2: '2x' is not a valid number / write numbers as 31, -5, 0x1F or 0b11111"));
    EXPECT_EQ(
        fixed_words("1\n-2\n", "uns"),
        "csv-value 2:1+2: '-2' is not a valid decimal number / use --value-radix dec for signed numbers");
    EXPECT_EQ(fixed_words("1\n1G\n", "hex"), "csv-value 2:1+2: '1G' is not a valid hexadecimal number");
    EXPECT_EQ(fixed_words("1\n0,5\n", "fixed:4.4"),
              "csv-fields 2:3+1: this row has 2 fields, but the first one has 1 / write fractions with a "
              "point, and quote fields that contain a separator");
    EXPECT_EQ(fixed_words("1\n0x5\n", "fixed:4.4"),
              "csv-value 2:1+3: '0x5' is not a valid decimal number / write numbers as -1.5, .25 or 2e-3");
}

TEST(CsvReader, RowsWithoutAValueAreBroken) {
    EXPECT_THAT(
        found_in(csv_format, "address,value\n1,\n2\n3,4\n"),
        ElementsAre("csv-empty 2:3+0: there is no value in column 2 / write the value, or omit the row"));
    EXPECT_THAT(
        found_in(csv_format, "7,,1\n"),
        ElementsAre("csv-empty 1:3+0: there is no value in column 2 / write the value, or omit the row"));
}

TEST(CsvReader, RowsWithMoreFieldsThanTheFirstAreBroken) {
    EXPECT_THAT(found_in(csv_format, "address,value\n1,0,5\n2,6\n"),
                ElementsAre("csv-fields 2:5+1: this row has 3 fields, but the first one has 2 / write "
                            "fractions with a point, and quote fields that contain a separator"));
}

TEST(CsvReader, AddressesThatAreNoNumbersAreBroken) {
    EXPECT_THAT(
        found_in(csv_format, "address,value\nx,1\n-1,2\n9223372036854775808,3\n0x2,4\n0b11,5\n"),
        ElementsAre(
            "csv-address 2:1+1: 'x' is not a valid address / write addresses as 31, 0x1F or 0b11111"));
    EXPECT_EQ(csv_words("address,value\n0x2,4\n0b11,5\n"), "- - 4 5");
}

TEST(CsvReader, QuotationMarksAreChecked) {
    EXPECT_EQ(csv_words("\"1\"\n\"0x2\"\n"), "1 2");
    EXPECT_THAT(found_in(csv_format, "\"1\"2\n3\n"),
                ElementsAre("csv-after-quote 1:4+1: '2' follows the quotation mark that ends a field / quote "
                            "the whole field, or none of it"));
    EXPECT_THAT(found_in(csv_format, "1\n\"2\n3\n"),
                ElementsAre("csv-quote 2:1+2: a quoted field has no closing quotation mark / add it, or "
                            "remove the opening one"));
}

TEST(CsvReader, AFileWithoutValuesSaysNoSize) {
    EXPECT_THAT(found_in(csv_format, "address,value\n"), ElementsAre(StartsWith("size-unknown")));
    EXPECT_THAT(found_in(csv_format, ""), ElementsAre(StartsWith("size-unknown")));
    read_options options = csv_options({}, 4);
    options.depth = 2;
    EXPECT_EQ(csv_words("address,value\n", options), "- -");
}

TEST(CsvReader, AWordThatIsSetAgainIsSuspect) {
    EXPECT_THAT(found_in(csv_format, "address,value\n1,1\n1,2\n"),
                ElementsAre(StartsWith("word-set-again 3:3+1: address 1 is set twice")));
}

TEST(CsvReader, GoesOnAfterFaultsWhenItIsTo) {
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(csv_words("1\nx\n3\n", options), "1 - 3");
    EXPECT_EQ(csv_words("address,value\nx,1\n1,2\n2,\n", options), "- 2 -");
}

TEST(CsvReader, SaysTheRadixThatTheCallerHasSaid) {
    EXPECT_EQ(kvrimage_tests::read_as(csv_format, "1\n").facts.data_radix, std::nullopt);
    const read_result result =
        kvrimage_tests::read_as(csv_format, "1\n", csv_options({{"value-radix", "dec"}}));
    EXPECT_EQ(result.facts.data_radix, radix::dec);
    EXPECT_THAT(result.diagnostics, IsEmpty());
}

} // namespace
