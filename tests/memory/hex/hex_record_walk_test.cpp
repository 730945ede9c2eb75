#include "kvr/memory/hex/hex_record_walk.h"
#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/seen_fault.h"
#include "tests/memory/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {

namespace {

using step = hex_record_walk::step;
using kvr_test::seen_fault;
using testing::ElementsAre;
using testing::IsEmpty;

/// All results of a walk: records as "line@offset text", and faults.
struct walked {
    std::vector<std::string> records;
    std::vector<seen_fault> faults;
    std::vector<std::string> fault_texts;
    std::uint64_t lines = 0;
};

walked walk_through(line_source& source,
                    hex_record_walk::checksums test = hex_record_walk::checksums::tested) {
    walked result;
    hex_record_walk walk(source, 0, test);
    for (step next = walk.next(); next != step::end; next = walk.next()) {
        if (next == step::fault) {
            result.faults.emplace_back(walk.fault());
            result.fault_texts.emplace_back(walk.text());
        } else {
            result.records.push_back(std::to_string(walk.line()) + "@" +
                                     std::to_string(walk.address_offset()) + " " +
                                     std::string(walk.record().text));
        }
    }
    result.lines = walk.line();
    return result;
}

walked walk_through(std::string_view text) {
    line_source source(text, hex_record_walk::longest_line);
    return walk_through(source);
}

/// A line of @p size characters that begins with @p front and continues with blanks, or @p filler.
std::string padded(std::string front, std::size_t size, char filler = ' ') {
    front.resize(size, filler);
    return front;
}

TEST(HexRecordWalk, HandsOutRecordsUpToTheEndRecord) {
    const walked result = walk_through(":0100000012ED\n:01000100AB53\n:00000001FF\n:0100000012ED\n");
    EXPECT_THAT(result.records, ElementsAre("1@0 0100000012ED", "2@0 01000100AB53", "3@0 00000001FF"));
    EXPECT_THAT(result.faults, IsEmpty());
    EXPECT_EQ(result.lines, 3U);
}

TEST(HexRecordWalk, LinesAfterTheEndRecordAreNotRead) {
    EXPECT_THAT(walk_through(":00000001FF\n:broken\n").faults, IsEmpty());
}

TEST(HexRecordWalk, EndRecordNeedsNoNewline) {
    const walked result = walk_through(":0100000012ED\n:00000001FF");
    EXPECT_THAT(result.records, ElementsAre("1@0 0100000012ED", "2@0 00000001FF"));
    EXPECT_THAT(result.faults, IsEmpty());
}

TEST(HexRecordWalk, BlankLinesAndLinesOfTextArePassedOverAndCounted) {
    const walked result = walk_through("\n  \t\nsome text\nx:00000001FF\n:0100000012ED\n\n:00000001FF\n");
    EXPECT_THAT(result.records, ElementsAre("5@0 0100000012ED", "7@0 00000001FF"));
    EXPECT_THAT(result.faults, IsEmpty());
}

TEST(HexRecordWalk, BlanksBeforeTheColonAreRemovedFirst) {
    EXPECT_THAT(walk_through(" :00000001FF").records, ElementsAre("1@0 00000001FF"));
}

TEST(HexRecordWalk, BlanksWithinARecordAreRemoved) {
    EXPECT_THAT(walk_through("\t: 00 0000\t01 FF \r\n").records, ElementsAre("1@0 00000001FF"));
}

TEST(HexRecordWalk, CarriageReturnsAreRemovedWhereverTheyStand) {
    EXPECT_THAT(walk_through(":0100000012ED\r\n:0000\r0001FF\r\r\n").records,
                ElementsAre("1@0 0100000012ED", "2@0 00000001FF"));
}

TEST(HexRecordWalk, ExtendedSegmentAddressCountsUnitsOf16Words) {
    EXPECT_THAT(walk_through(":020000021000EC\n:0100000012ED\n:00000001FF").records,
                ElementsAre("1@65536 020000021000EC", "2@65536 0100000012ED", "3@65536 00000001FF"));
}

TEST(HexRecordWalk, ExtendedLinearAddressCountsUnitsOf65536Words) {
    EXPECT_THAT(walk_through(":02000004000AF0\n:0100000012ED\n:00000001FF").records,
                ElementsAre("1@655360 02000004000AF0", "2@655360 0100000012ED", "3@655360 00000001FF"));
}

TEST(HexRecordWalk, EachExtendedAddressReplacesTheOneBeforeIt) {
    EXPECT_THAT(walk_through(":02000004000AF0\n:020000020001FB\n:00000001FF").records,
                ElementsAre("1@655360 02000004000AF0", "2@16 020000020001FB", "3@16 00000001FF"));
}

TEST(HexRecordWalk, ExtendedAddressIsTheWholeDataFieldModulo32Bits) {
    EXPECT_THAT(walk_through(":050000040100010001F4\n:00000004FC\n:00000001FF").records,
                ElementsAre("1@4294901760 050000040100010001F4", "2@0 00000004FC", "3@0 00000001FF"));
}

TEST(HexRecordWalk, OffsetBeforeTheFirstExtendedAddressIsTheGivenOne) {
    line_source source(":0100000012ED\n:00000001FF");
    hex_record_walk walk(source, 77);
    ASSERT_EQ(walk.next(), step::record);
    EXPECT_EQ(walk.address_offset(), 77U);
}

TEST(HexRecordWalk, StartAddressesAreHandedOutAndChangeNothing) {
    EXPECT_THAT(walk_through(":0400000300003800C1\n:04000005000000CD2A\n:00000001FF").records,
                ElementsAre("1@0 0400000300003800C1", "2@0 04000005000000CD2A", "3@0 00000001FF"));
}

TEST(HexRecordWalk, MissingEndRecordAfterAFinalNewlineCountsTheEmptyLine) {
    const walked result = walk_through(":0100000012ED\n");
    EXPECT_THAT(result.faults, ElementsAre(seen_fault{fault_code::missing_end_record, 2, 0, 0}));
    EXPECT_THAT(result.fault_texts, ElementsAre(""));
}

TEST(HexRecordWalk, MissingEndRecordWithoutFinalNewlineIsAFaultOfTheLastLine) {
    const walked result = walk_through(":0100000012ED");
    EXPECT_THAT(result.faults, ElementsAre(seen_fault{fault_code::missing_end_record, 1, 0, 0}));
    EXPECT_THAT(result.fault_texts, ElementsAre(":0100000012ED"));
}

TEST(HexRecordWalk, EmptyTextMissesTheEndRecordInItsOneEmptyLine) {
    EXPECT_THAT(walk_through("").faults, ElementsAre(seen_fault{fault_code::missing_end_record, 1, 0, 0}));
}

TEST(HexRecordWalk, StaysAtTheEnd) {
    line_source source(":broken");
    hex_record_walk walk(source);
    EXPECT_EQ(walk.next(), step::fault);
    EXPECT_EQ(walk.next(), step::fault);
    EXPECT_EQ(walk.fault().code, fault_code::missing_end_record);
    EXPECT_EQ(walk.next(), step::end);
    EXPECT_EQ(walk.next(), step::end);
}

struct fault_case {
    std::string_view line;
    seen_fault fault;
    std::string_view text;
};

class HexRecordWalkRefuses : public testing::TestWithParam<fault_case> {};

TEST_P(HexRecordWalkRefuses, LineAndGoesOnAfterIt) {
    const walked result = walk_through("text\n" + std::string(GetParam().line) + "\n:00000001FF\n");
    EXPECT_THAT(result.faults, ElementsAre(GetParam().fault));
    EXPECT_THAT(result.fault_texts, ElementsAre(GetParam().text));
    EXPECT_THAT(result.records, ElementsAre("3@0 00000001FF"));
}

INSTANTIATE_TEST_SUITE_P(
    Records, HexRecordWalkRefuses,
    testing::Values(
        fault_case{":", {fault_code::record_too_short, 2, 1, 1}, ":"},
        fault_case{":0000", {fault_code::record_too_short, 2, 1, 5}, ":0000"},
        fault_case{":0400000012345678", {fault_code::record_length, 2, 2, 2}, ":0400000012345678"},
        fault_case{":0100000012EDED", {fault_code::record_length, 2, 2, 2}, ":0100000012EDED"},
        fault_case{":0400000012345678E9", {fault_code::checksum, 2, 18, 2}, ":0400000012345678E9"},
        fault_case{":0100000600F9", {fault_code::record_type, 2, 8, 2}, ":0100000600F9"}));
INSTANTIATE_TEST_SUITE_P(
    PlacesAreThoseOfTheLineWithItsBlanks, HexRecordWalkRefuses,
    testing::Values(fault_case{" \t: 00 00 ", {fault_code::record_too_short, 2, 3, 7}, ":0000"},
                    fault_case{" : 0 4 00", {fault_code::record_too_short, 2, 2, 8}, ":0400"},
                    fault_case{" :0 4 000000123456", {fault_code::record_length, 2, 3, 3}, ":04000000123456"},
                    fault_case{":01 0000 00 12 E E\r", {fault_code::checksum, 2, 16, 3}, ":0100000012EE"},
                    fault_case{": 01 0000 06 00 F9", {fault_code::record_type, 2, 11, 2}, ":0100000600F9"}));

TEST(HexRecordWalk, GoesOnAsOftenAsRequested) {
    const walked result = walk_through(":1\n:0100000012ED\n:0100000012EE\n:0100000600F9\n");
    EXPECT_THAT(result.records, ElementsAre("2@0 0100000012ED"));
    EXPECT_THAT(result.faults, ElementsAre(seen_fault{fault_code::record_too_short, 1, 1, 2},
                                           seen_fault{fault_code::checksum, 3, 12, 2},
                                           seen_fault{fault_code::record_type, 4, 8, 2},
                                           seen_fault{fault_code::missing_end_record, 5, 0, 0}));
}

TEST(HexRecordWalk, RecordAtFaultDoesNotMoveTheOffset) {
    EXPECT_THAT(walk_through(":02000004000AF1\n:0100000012ED\n:00000001FF").records,
                ElementsAre("2@0 0100000012ED", "3@0 00000001FF"));
}

TEST(HexRecordWalk, ChecksumsMayStayUntested) {
    line_source source(":0100000012EE\n:0100000600F8\n:00000001FF\n");
    const walked result = walk_through(source, hex_record_walk::checksums::untested);
    EXPECT_THAT(result.records, ElementsAre("1@0 0100000012EE", "3@0 00000001FF"));
    EXPECT_THAT(result.faults, ElementsAre(seen_fault{fault_code::record_type, 2, 8, 2}));
}

TEST(HexRecordWalk, FaultOfRecordIsThatOfTheWholeRecord) {
    line_source source(":0100000012ED\n : 00000001FF\n");
    hex_record_walk walk(source);
    ASSERT_EQ(walk.next(), step::record);
    EXPECT_EQ(seen_fault(walk.fault_of_record(fault_code::no_data)),
              (seen_fault{fault_code::no_data, 1, 1, 13}));
    ASSERT_EQ(walk.next(), step::record);
    EXPECT_EQ(seen_fault(walk.fault_of_record(fault_code::no_data)),
              (seen_fault{fault_code::no_data, 2, 2, 12}));
}

TEST(HexRecordWalk, RecordInALineOf599CharactersIsRead) {
    const walked result = walk_through(padded(":00000001FF", 599) + "\n");
    EXPECT_THAT(result.records, ElementsAre("1@0 00000001FF"));
    EXPECT_THAT(result.faults, IsEmpty());
}

TEST(HexRecordWalk, RecordInALineOf600CharactersIsTooLong) {
    const walked result = walk_through(padded(":0100000012ED", 600) + "\n:00000001FF\n");
    EXPECT_THAT(result.faults, ElementsAre(seen_fault{fault_code::record_too_long, 1, 600, 1}));
    EXPECT_THAT(result.fault_texts, ElementsAre(":0100000012ED"));
    EXPECT_THAT(result.records, ElementsAre("2@0 00000001FF"));
}

TEST(HexRecordWalk, CarriageReturnCountsForTheLengthOfALine) {
    EXPECT_THAT(walk_through(padded(":00000001FF", 598) + "\r\n").faults, IsEmpty());
    EXPECT_THAT(walk_through(padded(":00000001FF", 599) + "\r\n:00000001FF").faults,
                ElementsAre(seen_fault{fault_code::record_too_long, 1, 600, 1}));
}

TEST(HexRecordWalk, TextOfALineThatIsTooLongIsItsFirst599Characters) {
    EXPECT_THAT(walk_through(padded(": 1", 10000, '7') + "\n:00000001FF").fault_texts,
                ElementsAre(":1" + std::string(596, '7')));
}

TEST(HexRecordWalk, LongLineOfTextIsPassedOverAsOneLine) {
    const walked result =
        walk_through(padded("text", 599, '-') + ":01000000FFFF" + padded("", 5000, ':') + "\n:00000001FF");
    EXPECT_THAT(result.records, ElementsAre("2@0 00000001FF"));
    EXPECT_THAT(result.faults, IsEmpty());
}

TEST(HexRecordWalk, ColonAfterNothingBut599BlanksMakesTheLineTooLong) {
    const walked result = walk_through(padded("", 700, '\t') + ":00000001FF\n:00000001FF\n");
    EXPECT_THAT(result.faults, ElementsAre(seen_fault{fault_code::record_too_long, 1, 600, 1}));
    EXPECT_THAT(result.fault_texts, ElementsAre(""));
    EXPECT_THAT(result.records, ElementsAre("2@0 00000001FF"));
}

TEST(HexRecordWalk, TextAfter599BlanksIsSkipped) {
    const walked result =
        walk_through(padded("", 700) + "x:00000001FF\n" + padded("", 700) + "\n:00000001FF");
    EXPECT_THAT(result.records, ElementsAre("3@0 00000001FF"));
    EXPECT_THAT(result.faults, IsEmpty());
}

TEST(HexRecordWalk, LineThatIsTooLongMayBeTheLastOne) {
    EXPECT_THAT(walk_through(padded(":", 2000, '0')).faults,
                ElementsAre(seen_fault{fault_code::record_too_long, 1, 600, 1},
                            seen_fault{fault_code::missing_end_record, 1, 0, 0}));
}

TEST(HexRecordWalk, NulAndHighBytesAreCharactersLikeOthers) {
    const std::string_view text("\0:00000001FF\n\xFF\n:0\0000001FF\n:00000001FF\n", 37);
    const walked result = walk_through(text);
    EXPECT_THAT(result.records, ElementsAre("4@0 00000001FF"));
    EXPECT_THAT(result.faults, testing::SizeIs(1));
}

/// Every line of @p text with a leading blank, so that none is read in place.
std::string with_leading_blanks(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += "\t" + line + "\n";
    }
    return text;
}

std::string as_they_are(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

void expect_same_walk(const walked& plain, const walked& exact, std::uint32_t start) {
    EXPECT_EQ(plain.records, exact.records) << "start value " << start;
    EXPECT_EQ(plain.fault_texts, exact.fault_texts) << "start value " << start;
    EXPECT_EQ(plain.lines, exact.lines) << "start value " << start;
    ASSERT_EQ(plain.faults.size(), exact.faults.size()) << "start value " << start;
    for (std::size_t i = 0; i < plain.faults.size(); ++i) {
        seen_fault moved = plain.faults[i];
        moved.column += moved.column != 0 ? 1 : 0;
        EXPECT_EQ(moved, exact.faults[i]) << "start value " << start;
    }
}

TEST(HexRecordWalk, TakingLinesInPlaceGivesWhatReadingThemExactlyGives) {
    for (std::uint32_t start = 0; start < 300; ++start) {
        kvr_test::random_record_lines random(start);
        std::vector<std::string> lines;
        for (int i = 0; i < 60; ++i) {
            lines.push_back(random.below(3) == 0 ? random.broken() : random.good());
        }
        expect_same_walk(walk_through(as_they_are(lines)), walk_through(with_leading_blanks(lines)), start);
        if (HasFailure()) {
            break;
        }
    }
}

TEST(HexRecordWalk, FileOfManyBlocksIsWalkedAsItsTextIs) {
    const kvr_test::temporary_directory directory;
    kvr_test::random_record_lines random(4);
    std::string text;
    while (text.size() < 3 * line_source::block_size) {
        const std::string line = random.below(4) == 0 ? random.broken() : random.data_record();
        text += line + (random.below(2) == 0 ? "\n" : "\r\n");
    }
    text += ":00000001FF\n";
    line_source file = line_source::open(directory.file("words.hex", text), hex_record_walk::longest_line);
    ASSERT_TRUE(file.is_open());
    const walked from_file = walk_through(file);
    const walked from_text = walk_through(text);
    EXPECT_EQ(from_file.records, from_text.records);
    EXPECT_EQ(from_file.faults, from_text.faults);
    EXPECT_GT(from_file.records.size(), 10000U);
    EXPECT_GT(from_file.faults.size(), 1000U);
}

} // namespace
} // namespace kvr
