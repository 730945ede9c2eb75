#include "kvrimage/formats/srec/srec_parser.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using namespace kvrimage;

struct expected_fault {
    const char* line;
    srec_fault fault;
    std::uint64_t offset;
    std::uint64_t length;
};

TEST(SrecParser, FindsTheFaultOfARecordAndItsPlace) {
    constexpr expected_fault all[] = {
        {"S1040000AA51", srec_fault::none, 0, 0},      {"s1040000AA51", srec_fault::letter, 0, 1},
        {"S10400G0AA51", srec_fault::bad_digit, 6, 1}, {"S1", srec_fault::too_short, 0, 2},
        {"S10", srec_fault::too_short, 0, 3},          {"S1040000AA", srec_fault::count, 2, 2},
        {"S1040000AA5", srec_fault::count, 2, 2},      {"S1020000FD", srec_fault::count, 2, 2},
        {"S10200FD", srec_fault::fields, 2, 2},        {"S9040000AA51", srec_fault::fields, 2, 2},
        {"S4030000FC", srec_fault::type, 0, 2},        {"S1040000AA52", srec_fault::checksum, 10, 2},
    };
    for (const expected_fault& each : all) {
        // Some of these line ends allow the fast path, others do not.
        for (const char* const end : {"\n", "\r\n", "", " \n"}) {
            const std::string text = each.line + std::string(end);
            srec_parser parser(text);
            ASSERT_TRUE(parser.next()) << each.line;
            EXPECT_EQ(parser.line().what, srec_line::kind::record) << each.line;
            EXPECT_EQ(parser.line().fault, each.fault) << each.line;
            if (each.fault != srec_fault::none) {
                EXPECT_EQ(parser.line().fault_place.offset, each.offset) << each.line;
                EXPECT_EQ(parser.line().fault_place.length, each.length) << each.line;
            }
            EXPECT_FALSE(parser.next());
        }
    }
}

TEST(SrecParser, HandsOutAddressAndDataOfEachType) {
    const std::string text = "S0050000414277\nS1051234AABB4F\nS206123456AABBF8\nS30712345678AABB7F\n"
                             "S5030004F8\nS604000004F7\nS70512345678E6\nS8041234565F\nS9031234B6\n";
    const std::string addresses[] = {
        "0 AB",    "1234 \xAA\xBB", "123456 \xAA\xBB", "12345678 \xAA\xBB", "4 ", "4 ", "12345678 ",
        "123456 ", "1234 "};
    srec_parser parser(text);
    for (const std::string& each : addresses) {
        ASSERT_TRUE(parser.next());
        const srec_line& line = parser.line();
        EXPECT_EQ(line.fault, srec_fault::none) << line.type;
        std::ostringstream shown;
        shown << std::hex << line.address << " " << line.data;
        EXPECT_EQ(shown.str(), each);
    }
    EXPECT_FALSE(parser.next());
}

TEST(SrecParser, OtherLinesAreTextOrBlank) {
    srec_parser parser("\xEF\xBB\xBF  \n; S1\nStart\n S9030000FC \t\r\n");
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(parser.line().what, srec_line::kind::blank);
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(parser.line().what, srec_line::kind::text);
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(parser.line().what, srec_line::kind::text);
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(parser.line().what, srec_line::kind::record);
    EXPECT_TRUE(parser.line().is_end());
    EXPECT_EQ(parser.line().content.offset, 18U);
    EXPECT_EQ(parser.line().content.length, 10U);
}

} // namespace
