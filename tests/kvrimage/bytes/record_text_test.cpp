#include "kvrimage/bytes/record_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace kvrimage;
using namespace std::string_view_literals;

std::string text_of_record(const record_style& style, std::uint64_t address, std::string_view data) {
    std::string text(longest_record, '#');
    const char* const end = put_record(style, address, data, text.data());
    return text.substr(0, static_cast<std::size_t>(end - text.data()));
}

TEST(RecordText, HasMarkCountAddressTypeDataAndChecksum) {
    const record_style data = {.mark = ":", .address_bytes = 2, .type = "\0"sv, .counted = 0, .sum = 0};
    EXPECT_EQ(text_of_record(data, 0x10, "\x12\x34"), ":020010001234A8\n");
    EXPECT_EQ(text_of_record(data, 0xFFF0, "0123456789abcdef"),
              ":10FFF000303132333435363738396162636465669F\n");
    const record_style linear = {.mark = ":", .address_bytes = 2, .type = "\4", .counted = 0, .sum = 0};
    EXPECT_EQ(text_of_record(linear, 0, "\x08\0"sv), ":020000040800F2\n");
}

TEST(RecordText, CountsAddressAndChecksumOfSRecords) {
    EXPECT_EQ(text_of_record({.mark = "S1", .address_bytes = 2, .type = "", .counted = 3, .sum = 0xFF},
                             0x1234, "\xAA\xBB"),
              "S1051234AABB4F\n");
    EXPECT_EQ(text_of_record({.mark = "S7", .address_bytes = 4, .type = "", .counted = 5, .sum = 0xFF},
                             0x80000000, ""),
              "S70580000000"
              "7A\n");
}

TEST(RecordText, TheLongestOnesFit) {
    const record_style style = {.mark = ":", .address_bytes = 2, .type = "\0"sv, .counted = 0, .sum = 0};
    EXPECT_EQ(text_of_record(style, 0, std::string(255, '\xFF')),
              ":FF000000" + std::string(510, 'F') + "00\n");
    const record_style longest = {.mark = "S3", .address_bytes = 4, .type = "", .counted = 5, .sum = 0xFF};
    EXPECT_EQ(text_of_record(longest, 0, std::string(250, '\0')),
              "S3FF00000000" + std::string(500, '0') + "00\n");
}

} // namespace
