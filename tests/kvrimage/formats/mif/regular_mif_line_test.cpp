#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/formats/mif/regular_mif_line.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

TEST(RegularMifLine, FindsAddressAndValues) {
    const auto line = regular_mif_line_at("x\n\t1F : 00 -12,\n", 2, 16);
    EXPECT_FALSE(line);
    const auto found = regular_mif_line_at("x\n\t1F : 00\t-12 ; -- c\nEND;", 2, 16);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->address, 0x1FU);
    EXPECT_EQ(found->address_begin, 3U);
    EXPECT_EQ(found->address_end, 5U);
    EXPECT_EQ(found->values_begin, 8U);
    EXPECT_EQ(found->values_end, 14U);
    EXPECT_EQ(found->value_count, 2U);
    EXPECT_EQ(found->next_line, 22U);
}

TEST(RegularMifLine, LeavesOtherLinesToTheParser) {
    for (const std::string text :
         {"", "\n", "END;\n", "[0..1] : 0;\n", "0 0;\n", "0 : ;\n", "0 : 1", "0 : 1;", "0 : 1\n",
          "0 : 1; 1 : 2;\n", "0 : 12-3;\n", "0 : 1G;\n", "2 : 1;\n", "0 : 1; % c %\n", "0 : 1--;\n",
          "0 : -;\n", "0 : 1; -- c", "100000000000000000000000000000000 : 1;\n"}) {
        EXPECT_FALSE(regular_mif_line_at(text, 0, 2)) << text;
    }
}

/// The first statement that the parser finds, and whether it ends with its line.
struct first_statement : mif_sink {
    void statement(const mif_statement& found) override {
        if (!first) {
            first = found;
        }
        ++count;
    }
    std::optional<mif_statement> first;
    int count = 0;
};

TEST(RegularMifLine, AgreesWithTheParserOnRandomLines) {
    std::mt19937 random(5);
    const std::vector<std::string> parts = {"0", "1F", " ", "\t", ":", " : ", ";",
                                            "-", "--", "X", "%",  "G", ",",   "."};
    const std::string opening = "WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n";
    int regular = 0;
    for (int round = 0; round < 200000; ++round) {
        std::string line = random() % 2 == 0 ? "1 : 0" : "";
        for (std::size_t count = random() % 8; count > 0; --count) {
            line += parts[random() % parts.size()];
        }
        const std::string text = opening + line + (random() % 2 == 0 ? ";\n" : "\n");
        const auto found = regular_mif_line_at(text, opening.size(), 16);
        if (!found) {
            continue;
        }
        ++regular;
        first_statement parsed;
        parse_mif(text, parsed);
        ASSERT_TRUE(parsed.first) << text;
        EXPECT_EQ(parsed.count, 1) << text;
        EXPECT_TRUE(parsed.first->sound) << text;
        EXPECT_EQ(parsed.first->whole.offset, found->address_begin) << text;
        EXPECT_EQ(parsed.first->first.end(), found->address_end) << text;
        ASSERT_EQ(parsed.first->values.size(), found->value_count) << text;
        EXPECT_EQ(parsed.first->values.front().offset, found->values_begin) << text;
        EXPECT_EQ(parsed.first->values.back().end(), found->values_end) << text;
    }
    EXPECT_GT(regular, 5000);
}

} // namespace
