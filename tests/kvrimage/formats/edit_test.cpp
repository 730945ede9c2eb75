#include "kvrimage/formats/edit.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/toy_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::IsEmpty;

assignment new_word(std::uint64_t address, std::uint64_t value, std::uint32_t width = 8) {
    return {{address, address}, {word::of(value, width)}};
}

/// @p contents after the edit, or the messages of the refusal.
std::string edited_contents(const std::string& contents, const std::vector<assignment>& assignments,
                            const read_options& options = {}) {
    const edit_result result = edit(contents, assignments, options);
    if (result.diagnostics.empty()) {
        return with_edits(contents, result.edits);
    }
    EXPECT_THAT(result.edits, IsEmpty());
    std::string messages;
    for (const diagnostic& each : result.diagnostics) {
        EXPECT_EQ(about(each.id).level, diagnostic_class::broken);
        messages += each.message + "\n";
    }
    return messages;
}

const read_options words_of_16 = {.width = 16, .unit = address_unit::word};
const std::string commented_mif = "-- by hand\nWIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\n"
                                  "CONTENT BEGIN\n0 : a0; % first % 1 : 0;\n[2..3] : 7;\nEND;\n";

TEST(Edit, ChangesTheWordAndNothingBesideIt) {
    EXPECT_EQ(edited_contents(commented_mif, {new_word(0, 0xB1)}),
              "-- by hand\nWIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\n"
              "CONTENT BEGIN\n0 : b1; % first % 1 : 0;\n[2..3] : 7;\nEND;\n");
}

TEST(Edit, OfTwoWordsForOneAddressTheLaterCounts) {
    EXPECT_EQ(edited_contents(":020000000001FD\n:00000001FF\n", {new_word(0, 5, 16), new_word(0, 6, 16)},
                              words_of_16),
              ":020000000006F8\n:00000001FF\n");
}

TEST(Edit, OfWordsAsTheyAreHasNoEdits) {
    const edit_result result = edit(commented_mif, std::vector{new_word(1, 0), new_word(3, 7)});
    EXPECT_THAT(result.edits, IsEmpty());
    EXPECT_THAT(result.diagnostics, IsEmpty());
    EXPECT_THAT(edit(commented_mif, {}).edits, IsEmpty());
}

TEST(Edit, ReadsTheFileInTheFormatThatIsNamed) {
    EXPECT_EQ(edited_contents("@0\n01 02\n", {new_word(1, 0x2A)}, {.as = format_of_name("rif"), .width = 8}),
              "@0\n01 2A\n");
}

TEST(Edit, OfABrokenFileGivesWhatIsBrokenAlsoWhenItIsToBeReadAllTheSame) {
    const std::string broken = ":020000000001FD\n:020001000002FC\n:020001000002FB\n:00000001FF\n";
    const std::string fault = "checksum is FC, the record adds up to FB\n";
    EXPECT_EQ(edited_contents(broken, {new_word(0, 1, 16)}, {.width = 16}), fault);
    EXPECT_EQ(edited_contents(broken, {new_word(0, 1, 16)}, {.width = 16, .keep_going = true}), fault);
}

TEST(Edit, OfAFileOfNoFormatSaysSo) {
    EXPECT_EQ(edit("Dear reader,\n", std::vector{new_word(0, 1)}).diagnostics.front().id,
              diagnostic_id::unknown_format);
}

TEST(Edit, BeyondAStatedDepthIsRefused) {
    EXPECT_EQ(edited_contents(commented_mif, {new_word(4, 1)}), "address 4 is beyond the depth 4 (0 to 3)\n");
    EXPECT_EQ(edited_contents("@0\n01 02\n", {new_word(0, 1), new_word(9, 1)},
                              {.as = format_of_name("rif"), .width = 8, .depth = 8}),
              "address 9 is beyond the depth 8 (0 to 7)\n");
}

TEST(Edit, BeyondTheLastWordOfAFileWithoutADepthMakesItDeeper) {
    EXPECT_EQ(edited_contents(":020000000001FD\n:00000001FF\n", {new_word(5, 7, 16)}, words_of_16),
              ":020000000001FD\n:020005000007F2\n:00000001FF\n");
}

TEST(Edit, WithABaseCountsFromIt) {
    EXPECT_EQ(edited_contents("WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n[10..12] : 1F;\nEND;\n",
                              {new_word(0, 2), new_word(1, 0x1F), new_word(4, 3)}, {.base = 0x10}),
              "WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n10 : 02;\n[11..12] : 1F;\n14 : 03;\nEND;\n");
    EXPECT_EQ(edited_contents("@10\n01 02\n", {new_word(0, 1), new_word(1, 0x2A), new_word(4, 3)},
                              {.as = format_of_name("rif"), .width = 8, .base = 0x10}),
              "@10\n01 2A\n@14\n03\n");
    EXPECT_EQ(edited_contents(":020010000001ED\n:00000001FF\n", {new_word(0, 2, 16), new_word(2, 3, 16)},
                              {.width = 16, .unit = address_unit::word, .base = 0x10}),
              ":020010000002EC\n:020012000003E9\n:00000001FF\n");
    EXPECT_EQ(
        edited_contents(":020011000001EC\n:00000001FF\n", {new_word(0, 2, 16), new_word(2, 3, 16)},
                        {.width = 16, .unit = address_unit::byte, .order = byte_order::big, .base = 0x11}),
        ":020011000002EB\n:020015000003E6\n:00000001FF\n");
}

TEST(Edit, WithABaseReportsAddressesThatCountFromIt) {
    EXPECT_EQ(edited_contents("WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n10 : 1F;\nEND;\n", {new_word(16, 2)},
                              {.base = 0x10}),
              "address 16 is beyond the depth 16 (0 to 15)\n");
    const assignment dont_care = {{1, 1}, {*word::parse("1XXXXXXX", radix::bin, 8).value}};
    EXPECT_EQ(
        edited_contents("WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n10 : 1F;\nEND;\n", {dont_care}, {.base = 0x10}),
        "word 1XXXXXXX at address 1 has don't-care bits, which HEX cannot show\n");
    EXPECT_EQ(edited_contents("@10\n01 02\n", {new_word(0xFFFFFFF0, 1)},
                              {.as = format_of_name("rif"), .width = 8, .base = 0x10}),
              "address FFFFFFF0 is beyond the largest, FFFFFFEF\n");
    EXPECT_EQ(edited_contents(":020010000001ED\n:00000001FF\n", {new_word(0xFFFFFFF0, 1, 16)},
                              {.width = 16, .unit = address_unit::word, .base = 0x10}),
              "address 4294967280 is beyond 4294967279, the largest of Intel HEX\n");
    EXPECT_EQ(edited_contents(":00000001FF\n", {new_word(0, 1)},
                              {.width = 8, .depth = 4, .unit = address_unit::byte, .base = 0x200000000}),
              "address 8589934592 is beyond 4294967295, the largest of Intel HEX\n");
}

TEST(Edit, OfAWordThatTheFormatCannotHoldSaysWhy) {
    const assignment dont_care = {{1, 1}, {*word::parse("XXXX", radix::hex, 16).value}};
    EXPECT_EQ(edited_contents(":020000000001FD\n:00000001FF\n", {dont_care}, words_of_16),
              "word XXXX at address 1 has a don't-care bit, which Intel HEX cannot hold\n");
}

TEST(Edit, WithAMistakeOfTheCallerThrows) {
    const auto edits = [](const assignment& given) {
        static_cast<void>(edit(commented_mif, std::vector{given}));
    };
    EXPECT_THROW(edits(new_word(0, 1, 16)), std::invalid_argument);
    EXPECT_THROW(edits({{0, 1}, {}}), std::invalid_argument);
    EXPECT_THROW(edits({{1, 0}, {word(8)}}), std::invalid_argument);
}

TEST(Edit, InAFormatThatCannotBeEditedThrows) {
    EXPECT_THROW(static_cast<void>(edit("toy 8\n0 01\n", std::vector{new_word(0, 1)}, {.as = &toy_format()})),
                 std::invalid_argument);
}

} // namespace
