#include "kvrimage/bytes/record_run.h"
#include "kvrimage/bytes/record_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using namespace kvrimage;
using namespace std::string_view_literals;

constexpr record_style hex_style = {.mark = ":", .address_bytes = 2, .type = "\0"sv, .counted = 0, .sum = 0};
constexpr record_style s1_style = {.mark = "S1", .address_bytes = 2, .type = "", .counted = 3, .sum = 0xFF};

/// "2 records of 4 characters: 10 AB CD": address and bytes.
std::string shown_run(const std::string& lines, const record_style& style) {
    std::string data(lines.size() / 2 + 1, '\0');
    const record_run run = parse_record_run(lines, style, data.data());
    if (run.records == 0) {
        return run.bytes == 0 && run.size == 0 ? "none" : "none, but with a size";
    }
    std::array<char, 8> text{};
    const auto in_hex = [&text](unsigned value) {
        std::snprintf(text.data(), text.size(), "%02X", value);
        return " " + std::string(text.data());
    };
    std::string shown = std::to_string(run.records) + " records of " + std::to_string(run.size) +
                        " characters:" + in_hex(static_cast<unsigned>(run.address));
    for (const char byte : data.substr(0, run.bytes)) {
        shown += in_hex(static_cast<unsigned char>(byte));
    }
    return shown;
}

TEST(RecordRun, TakesRecordsThatFollowEachOther) {
    EXPECT_EQ(shown_run(":020010001234A8\n:020012005678 1E\n", hex_style),
              "1 records of 16 characters: 10 12 34");
    EXPECT_EQ(shown_run(":020010001234A8\r\n:02001200abCD74\n", hex_style),
              "2 records of 33 characters: 10 12 34 AB CD");
    EXPECT_EQ(shown_run("S1051234AABB4F\nS1051236AABB4D\nS9030000FC\n", s1_style),
              "2 records of 30 characters: 1234 AA BB AA BB");
}

TEST(RecordRun, EndsWithTheLengthTheAddressesOrTheType) {
    const std::string first = ":020010001234A8\n";
    const std::string only = "1 records of 16 characters: 10 12 34";
    EXPECT_EQ(shown_run(first + ":010012005697\n", hex_style), only);
    EXPECT_EQ(shown_run(first + ":0200130056781D\n", hex_style), only);
    EXPECT_EQ(shown_run(first + ":020012041234A2\n", hex_style), only);
    EXPECT_EQ(shown_run(":02FFFE001234BB\n:020000001234B8\n", hex_style),
              "1 records of 16 characters: FFFE 12 34");
}

TEST(RecordRun, LeavesFaultsToTheParser) {
    for (const char* line :
         {"", ":", ":0", ":02", ":G20010001234A8\n", ":020010001234A9\n", ":02001000123GA8\n",
          ":020010001234A8", ":020010001234A8\r", ":020010001234A8 \n", ":020010001234A8\r \n",
          " :020010001234A8\n", ":00001000F0\n", ":02FFFF001234BA\n", ":020010001234G8\n", ":0200100012\n",
          "S1051234AABB4F\n"}) {
        EXPECT_EQ(shown_run(line, hex_style), "none") << line;
    }
    for (const char* line : {"S1031234B6\n", "S1021234B6\n", "s1051234AABB4F\n", "S2051234AABB4F\n"}) {
        EXPECT_EQ(shown_run(line, s1_style), "none") << line;
    }
}

TEST(RecordRun, EndsWithTheLastWholeLineOfThePartThatIsGiven) {
    const std::string lines = ":020010001234A8\r\n:0200120056781E\r\n:020014001234A4\n:02001600ABCD70\n";
    std::array<char, 64> data{};
    for (std::size_t size = 0; size <= lines.size(); ++size) {
        const std::string_view part = std::string_view(lines).substr(0, size);
        const auto whole = std::count(part.begin(), part.end(), '\n');
        EXPECT_EQ(parse_record_run(part, hex_style, data.data()).records, static_cast<std::size_t>(whole))
            << size;
    }
}

/// Replaces each character of the middle one of three records with every other character.
void expect_exact_characters(const std::string& first, const std::string& middle, const std::string& last,
                             const record_style& style) {
    const std::string lines = first + middle + last;
    std::string data(lines.size() / 2, '\0');
    ASSERT_EQ(parse_record_run(lines, style, data.data()).records, 3U) << lines;
    for (std::size_t place = 0; place < middle.size(); ++place) {
        for (int character = 0; character < 256; ++character) {
            std::string changed = lines;
            char& one = changed[first.size() + place];
            one = static_cast<char>(character);
            // The case of a letter makes no difference, except in the mark.
            const bool is_same =
                one == middle[place] ||
                (place >= style.mark.size() && middle[place] >= 'A' && one == middle[place] - 'A' + 'a');
            const record_run run = parse_record_run(changed, style, data.data());
            ASSERT_EQ(run.records, is_same ? 3U : 1U) << changed;
            ASSERT_EQ(run.size, is_same ? lines.size() : first.size()) << changed;
        }
    }
}

TEST(RecordRun, NoCharacterMayDiffer) {
    const std::array styles = {
        hex_style, s1_style,
        record_style{.mark = "S2", .address_bytes = 3, .type = "", .counted = 4, .sum = 0xFF},
        record_style{.mark = "S3", .address_bytes = 4, .type = "", .counted = 5, .sum = 0xFF}};
    for (const record_style& style : styles) {
        for (const std::size_t length : {1U, 4U, 5U, 6U, 7U, 8U, 16U, 24U, 33U}) {
            std::array<std::string, 3> records;
            for (std::size_t index = 0; index < records.size(); ++index) {
                std::string data;
                while (data.size() < length) {
                    data += static_cast<char>(0xAE + 29 * data.size() + index);
                }
                std::string text(longest_record, '\0');
                const char* const end = put_record(style, 0xABF8 + index * length, data, text.data());
                records[index] = text.substr(0, static_cast<std::size_t>(end - text.data()));
            }
            expect_exact_characters(records[0], records[1], records[2], style);
        }
    }
}

} // namespace
