#include "kvrimage/formats/csv/csv_format.h"
#include "tests/kvrimage/layout/laid_out.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using kvrimage_tests::laid_out;

std::string laid_out_csv(std::string_view contents, std::vector<choice> choices = {}) {
    read_options options;
    options.as = &csv_format;
    options.choices = std::move(choices);
    return laid_out(contents, options);
}

TEST(CsvFormatter, FieldsHaveNoBlanksAroundThem) {
    EXPECT_EQ(laid_out_csv(" address , value\n\n\n0 ,  1\n 1,\t2 \n"), "address,value\n\n0,1\n1,2\n");
    EXPECT_EQ(laid_out_csv("address ; value\r\n0; 1\n"), "address;value\r\n0;1\r\n");
    EXPECT_EQ(laid_out_csv("address\t value\n0 \t1\n"), "address\tvalue\n0\t1\n");
}

TEST(CsvFormatter, QuotationMarksStayWhereTheyAreNeeded) {
    EXPECT_EQ(
        laid_out_csv("\"address\",value,\"a note\"\n\"0\",\"1\",\"b; c\"\n1,2,\"d \"\"e\"\"\"\n2,3,\"\"\n"
                     "3,4,\" f\"\n4,5,\"g\nh\"\n5,6,\"i \"\n"),
        "address,value,a note\n0,1,\"b; c\"\n1,2,\"d \"\"e\"\"\"\n2,3,\"\"\n3,4,\" "
        "f\"\n4,5,\"g\nh\"\n5,6,\"i \"\n");
}

TEST(CsvFormatter, PrefixedNumbersHaveTheDigitsOfTheLongest) {
    EXPECT_EQ(laid_out_csv("address,value,note\n0X0,0xa,0xa\n0x1f,0x1FF,0b1\n0x20,5,x\n0x21,0b1,\n"),
              "address,value,note\n0x00,0x00A,0xa\n0x1F,0x1FF,0b1\n0x20,5,x\n0x21,0b1,\n");
    EXPECT_EQ(laid_out_csv("0b1\n0B0101\n"), "0b0001\n0b0101\n");
}

TEST(CsvFormatter, DecimalNumbersHaveNoZerosInFront) {
    EXPECT_EQ(laid_out_csv("address,value\n00,-05\n01,+7\n"), "address,value\n0,-5\n1,7\n");
}

TEST(CsvFormatter, FractionsKeepTheirForm) {
    EXPECT_EQ(laid_out_csv("address,value\n0x0, 0.50\n0xA,-1e-1\n", {{"value-radix", "fixed:2.6"}}),
              "address,value\n0x0,0.50\n0xA,-1e-1\n");
}

TEST(CsvFormatter, ValuesAreReadAsTheCallerSays) {
    EXPECT_EQ(laid_out_csv("x,y\n1f, ff\n2, 0x1\n",
                           {{"value-radix", "hex"}, {"address-column", "none"}, {"value-column", "y"}}),
              "x,y\n1f,FF\n2,0x01\n");
}

TEST(CsvFormatter, ColumnsInOrderAreValuesAll) {
    EXPECT_EQ(laid_out_csv("address,0,1\n0,0xa,0x0b\n2,0xC,0xd\n"),
              "address,0,1\n0,0x0A,0x0B\n2,0x0C,0x0D\n");
}

TEST(CsvFormatter, VeryLongNumbersKeepTheirDigits) {
    const std::string longest(600, 'f');
    EXPECT_EQ(laid_out_csv("0x" + longest + "\n0xa\n"), "0x" + std::string(600, 'F') + "\n0xA\n");
}

TEST(CsvFormatter, MarkOfUtf8Stays) {
    EXPECT_EQ(laid_out_csv("\xEF\xBB\xBF"
                           "0 ,1\n"),
              "\xEF\xBB\xBF"
              "0,1\n");
}

} // namespace
