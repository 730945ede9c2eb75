#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "tests/kvrimage/formats/hex/hex_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;
using testing::HasSubstr;

read_options of_bytes(std::uint32_t width, std::optional<byte_order> order) {
    read_options options = of_width(width);
    options.unit = address_unit::byte;
    options.order = order;
    return options;
}

struct hex_rule {
    const char* name;
    std::string text;
    std::string report;        ///< the diagnostics with words of 8 bits
    std::string repaired = {}; ///< "" if nothing is repaired
};

const std::string two_words = ":0100000001FE\n:0100010002FC\n";
const std::vector<hex_rule>& hex_rules() {
    static const std::vector<hex_rule> rules = {
        {"ARecordOfFourDigitsIsTooShort", two_words + ":0102\n" + end_record,
         "broken record-short 3:1+5 x1\n"},
        {"ARecordWithAByteTooFewIsAtItsLength", two_words + ":0400000012345678\n" + end_record,
         "broken record-length 3:2+2 x1\n"},
        {"ARecordWithAnOddDigitIsAtItsLength", two_words + ":020000001234A\n" + end_record,
         "broken record-length 3:2+2 x1\n"},
        {"ARecordWithoutDataAndChecksumIsAtItsLength", two_words + ":040000001\n" + end_record,
         "broken record-length 3:2+2 x1\n"},
        {"AnEndRecordWithoutChecksumGetsIt", two_words + ":00000001\n", "broken checksum-missing 3:10+0 x1\n",
         two_words + end_record},
        {"AnEndRecordWithOneDigitOfItsChecksumGetsTheOther", two_words + ": 00000001F \n",
         "broken checksum-missing 3:12+0 x1\n", two_words + ": 00000001FF \n"},
        {"AWrongDigitOfAChecksumIsNotCompleted", two_words + ":000000011\n",
         "broken checksum-missing 3:11+0 x1\n"},
        {"AWrongChecksumIsReplaced", ":0100000001FF\n" + end_record, "broken checksum 1:12+2 x1\n",
         ":0100000001FE\n" + end_record},
        {"AWrongChecksumWithBlanksIsReplaced", ":01 0000 00 01 F F\n" + end_record,
         "broken checksum 1:16+3 x1\n", ":01 0000 00 01 FE\n" + end_record},
        {"AnUnknownTypeIsAtTheType", two_words + ":00000006FA\n" + end_record,
         "broken record-type 3:8+2 x1\n"},
        {"ABadDigitIsAtTheCharacter", two_words + ":010002000GFF\n" + end_record,
         "broken bad-digit 3:11+1 x1\n"},
        {"ABadDigitAfterBlanksIsAtTheCharacter", two_words + " :01 0002 00 :0FF\n" + end_record,
         "broken bad-digit 3:14+1 x1\n"},
        {"ASecondRecordInTheLineGetsALine", ":0100000001FE:0100010002FC\n" + end_record,
         "broken second-record 1:14+1 x1\n", two_words + end_record},
        {"AnExtendedAddressHasTwoBytes", two_words + record("0400000400010002") + end_record,
         "broken address-record-length 3:2+2 x1\n"},
        {"AMissingEndRecordIsAdded", two_words, "broken missing-end-record 2:14+0 x1\n",
         two_words + end_record},
        {"AMissingEndRecordHasTheLineEndsOfTheOthers", ":0100000001FE\r\n:0100010002FC",
         "broken missing-end-record 2:14+0 x1\n", ":0100000001FE\r\n:0100010002FC\r\n:00000001FF\r\n"},
        {"AnEndRecordAtFaultIsNotMissing", two_words + ":00000001FE\n", "broken checksum 3:10+2 x1\n",
         two_words + end_record},
        {"AnEndRecordAtFaultBeforeARecordIsNotRepaired",
         ":0100000001FE\n:00000001FE\n:0100010002FC\n" + end_record, "broken checksum 2:10+2 x1\n"},
        {"OfTwoEndRecordsAtFaultBothAreRepaired", two_words + ":00000001FE\n :0000 000 1FD\n",
         "broken checksum 3:10+2 x1\nbroken checksum 4:13+2 x1\n",
         two_words + end_record + " :0000 000 1FF\n"},
        {"AnEndRecordAloneHasNoData", end_record, "broken no-data 1:1+11 x1\n"},
        {"AByteOrderMarkAmidTheFileIsText", ":0100000001FE\n\xEF\xBB\xBF:0100010002FC\n" + end_record,
         "broken before-record 2:1+3 x1\n"},
        {"ADataRecordWithoutDataAfterTheEndIsText", two_words + end_record + ":0000000000\n",
         "suspect after-end-record 4:1+11 x1\n"},
        {"ALineOfTextIsIgnored", "boot loader\n" + two_words + "  more \n" + end_record,
         "suspect not-a-record 1:1+11 x2\n"},
        {"ARecordWithoutColonGetsIt", ":0100000001FE\n0100010002FC\n" + end_record,
         "broken colon-missing 2:1+12 x1\n", two_words + end_record},
        {"WhatIsBeforeARecordIsInDoubt", ":0100000001FE\nx :0100010002FC\n" + end_record,
         "broken before-record 2:1+2 x1\n"},
        {"ARecordInACommentIsIgnored", two_words + "; :0100020002FB\n" + end_record,
         "suspect commented-record 3:1+15 x1\n"},
        {"AByteOrderMarkIsDeleted", "\xEF\xBB\xBF" + two_words + end_record,
         "consumer mark-before-record 1:1+3 x1\n", two_words + end_record},
        {"TextAfterTheEndRecordIsIgnored", two_words + end_record + "\nnotes\n:00000001FF\n",
         "suspect after-end-record 5:1+5 x2\n"},
        {"RecordsAfterTheEndRecordAreInDoubt", two_words + end_record + ":0100020002FB\n:01\n",
         "broken record-after-end 4:1+13 x2\n"},
        {"ARecordWithoutColonAfterTheEndRecordIsInDoubt", two_words + end_record + "0100020002FB\n",
         "broken record-after-end 4:1+12 x1\n"},
        {"DataOfTheEndRecordIsIgnored", two_words + ":0100000100FE\n", "suspect end-record-data 3:1+13 x1\n"},
        {"AStartAddressIsIgnored", two_words + ":0400000500000100F6\n" + end_record,
         "suspect start-address 3:1+19 x1\n"},
        {"ARecordBeyondItsSegmentIsInDoubt", record("020000021000") + record("02FFFF000102") + end_record,
         "broken address-wraps 2:1+15 x1\n"},
        {"AnAddressBeyondTheLargestIsBroken", record("02000004FFFF") + record("02FFFF000102") + end_record,
         "broken address-outside 2:1+15 x1\n"},
        {"AWordSetTwiceIsSuspect", two_words + ":0100010003FB\n" + end_record,
         "suspect overwritten-word 3:1+13 x1\n"},
        {"ARecordWithoutDataSetsNoWord", two_words + ":00000700F9\n" + end_record, ""},
        {"BlanksBetweenDigitsDoNotMatter", " :01 0000\t00 01 FE \n:0100010002FC\r\n" + end_record, ""},
        {"SmallLettersAreDigits", ":01000000abFE\n" + end_record, "broken checksum 1:12+2 x1\n",
         ":01000000ab54\n" + end_record},
        {"ATextWithoutRecordIsNoHexFile", "Dear reader,\n", "broken not-hex 0:0+0 x1\n"},
        {"AFileOfAnotherFormatIsOneDiagnostic", "WIDTH=8;\nDEPTH=4;\n", "broken other-format 0:0+0 x1\n"},
        {"LinesThatEndWithCrAreOneDiagnostic", ":0100000001FE\r:0100010002FC\r:00000001FF\r",
         "broken lines-of-carriage-return 1:14+1 x3\n", two_words + end_record},
        {"ALastLineThatEndsWithCrIsNoFault",
         ":0100000001FF\n" + end_record.substr(0, end_record.size() - 1) + "\r",
         "broken checksum 1:12+2 x1\n",
         ":0100000001FE\n" + end_record.substr(0, end_record.size() - 1) + "\r"},
        {"ForeignContentsAreOneDiagnostic", std::string("\x7F\0\0\1\n:x\n", 8),
         "broken foreign-content 1:1+4 x1\n"},
        {"ALoneRecordWithoutColonIsARecord", "0100000001FE\n",
         "broken colon-missing 1:1+12 x1\nbroken missing-end-record 1:13+0 x1\n",
         ":0100000001FE\n" + end_record},
        {"ARecordWithoutDataAndColonIsARecord", two_words + "00000700F9\n" + end_record,
         "broken colon-missing 3:1+10 x1\n", two_words + ":00000700F9\n" + end_record},
        {"AnEndRecordWithoutColonIsNotMissing", two_words + "00000001FF\n",
         "broken colon-missing 3:1+10 x1\n", two_words + end_record},
        {"AnEndRecordWithoutColonBeforeARecordIsNotRepaired",
         ":0100000001FE\n00000001FF\n:0100010002FC\n" + end_record, "broken colon-missing 2:1+10 x1\n"},
        {"OfTwoEndRecordsWithoutColonBothGetIt", two_words + "00000001FF\n0000 000 1FF\n",
         "broken colon-missing 3:1+10 x1\nbroken colon-missing 4:1+12 x1\n",
         two_words + end_record + ":0000 000 1FF\n"},
        {"TenHexadecimalDigitsThatAreNoRecordAreText", two_words + "DEADBEEF00\n" + end_record,
         "suspect not-a-record 3:1+10 x1\n"},
        {"ALoneRecordWithAWrongChecksumIsARecord", ":0100000001FF\n",
         "broken checksum 1:12+2 x1\nbroken missing-end-record 1:14+0 x1\n", ":0100000001FE\n" + end_record},
        {"ALoneColonIsNoRecord", ":hello\n", "broken not-hex 0:0+0 x1\n"},
        {"AMissingEndRecordIsAfterTheLastTextOfTheFile", two_words + " more \r\n \n",
         "suspect not-a-record 3:2+4 x1\nbroken missing-end-record 3:6+0 x1\n",
         two_words + " more \r\n \n" + end_record},
        {"ARecordMayEndWithItsSegment", record("020000021000") + record("01FFFF0001") + end_record, ""},
        {"TheFirstDigitOfAChecksumIsCompleted", two_words + ":00001000F\n" + end_record,
         "broken checksum-missing 3:11+0 x1\n", two_words + ":00001000F0\n" + end_record},
        {"TheSecondDigitOfAChecksumIsNotCompleted", two_words + ":000010000\n" + end_record,
         "broken checksum-missing 3:11+0 x1\n"},
        {"RecordsOnOneLineGetTheLineEndOfTheFile", ":0100000001FE:0100010002FC\r\n" + end_record,
         "broken second-record 1:14+1 x1\n", ":0100000001FE\r\n:0100010002FC\r\n" + end_record},
        {"TwoRecordsAfterAByteOrderMarkAreOnOneLine", "\xEF\xBB\xBF:0100000001FE:0100010002FC\n" + end_record,
         "consumer mark-before-record 1:1+3 x1\nbroken second-record 1:17+1 x1\n", two_words + end_record},
        {"ALineMayBeAsLongAsTheLibraryAllows",
         ":01" + std::string(586, ' ') + "00000001FE\n:0100010002FC\n" + end_record, ""},
        {"ALineMayNotBeLongerByOne",
         ":01" + std::string(587, ' ') + "00000001FE\n:0100010002FC\n" + end_record,
         "consumer record-long 1:1+600 x1\n", two_words + end_record},
        {"AnEmptyFileIsNoHexFile", "", "broken not-hex 0:0+0 x1\n"},
        {"ALineBeyondTheLimitOfTheLibraryLosesItsBlanks",
         ":01" + std::string(600, ' ') + "00000001FE\r\n:0100010002FC\n" + end_record,
         "consumer record-long 1:1+613 x1\n", ":0100000001FE\r\n:0100010002FC\n" + end_record},
    };
    return rules;
}

class HexRules : public testing::TestWithParam<hex_rule> {};

TEST_P(HexRules, Hold) {
    const hex_rule& rule = GetParam();
    const read_result result = read_hex(rule.text, of_width(8));
    EXPECT_EQ(report_of(result), rule.report);
    EXPECT_EQ(with_repairs(rule.text, result), rule.repaired.empty() ? rule.text : rule.repaired);
    for (const diagnostic& each : result.diagnostics) {
        EXPECT_EQ(each.repair.empty(), each.fix.empty()) << each.repair;
    }
    EXPECT_EQ(result.image.has_value(), rule.report.find("broken") == std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(HexReader, HexRules, testing::ValuesIn(hex_rules()),
                         [](const auto& rule) { return rule.param.name; });

TEST(HexReader, RepairedFilesAreReadWithTheRepairedRecords) {
    for (const hex_rule& rule : hex_rules()) {
        if (!rule.repaired.empty()) {
            const read_result again = read_hex(rule.repaired, of_width(8));
            EXPECT_TRUE(again.image) << rule.name << report_of(again);
            EXPECT_THAT(words_of(again), HasSubstr("0=")) << rule.name;
        }
    }
}

std::string message_of(const std::string& text, const read_options& options = of_width(8)) {
    const read_result result = read_hex(text, options);
    return result.diagnostics.empty()
               ? ""
               : result.diagnostics.front().message + "|" + result.diagnostics.front().hint;
}

TEST(HexReader, MessagesSayWhatIsWrongAndWhatToWrite) {
    const auto after = [](const std::string& line) { return two_words + line + "\n" + end_record; };
    EXPECT_EQ(message_of(after(":0102")),
              "the record has 4 digits; its length, address and type need 8, its checksum 2|");
    EXPECT_EQ(message_of(after(":0400000012345678")),
              "record length 04 means 4 bytes of data, there are 3|one byte is missing, or the checksum");
    EXPECT_EQ(message_of(after(":020000001234A")), "record length 02 means 2 bytes of data, there are 3 "
                                                   "digits, an odd number|a digit is missing or surplus");
    EXPECT_EQ(message_of(after(":01000000")),
              "record length 01 means 1 byte of data, there are 0|the checksum is missing, too");
    EXPECT_EQ(message_of(after(":010000000102FA")), "record length 01 means 1 byte of data, there are 2|");
    EXPECT_EQ(message_of(after(":020000000100")),
              "record length 02 means 2 bytes of data, there is 1|one byte is missing, or the checksum");
    EXPECT_EQ(message_of(after(":0100000012F")), "record length 01 means 1 byte of data, there is 1 digit, "
                                                 "an odd number|a digit is missing or surplus");
    EXPECT_EQ(message_of(two_words + ":00000001"), "the record has no checksum|write :00000001FF");
    EXPECT_EQ(message_of(two_words + ":00000001F"),
              "the checksum has one digit, it needs 2|write :00000001FF");
    EXPECT_EQ(message_of(after(":0100020001FF")), "checksum is FF, the record adds up to FC|");
    EXPECT_EQ(message_of(after(":00000001FE") + ":0100020001FC\n"),
              "checksum is FE, the record adds up to FF|");
    EXPECT_EQ(message_of(after(":010002000gFF")), "'g' in :010002000gFF is not a valid hexadecimal digit|");
    EXPECT_EQ(message_of(two_words + end_record + ":0100020002FB\n"),
              "a record follows the end record of line 3|delete that end record, or what follows it");
    EXPECT_EQ(message_of(two_words + ":0100010003FB\n" + end_record),
              "address 1 is set twice, first in line 2|the later value is used");
}

TEST(HexReader, MessagesQuoteTheFirstOfSeveralPlaces) {
    EXPECT_EQ(message_of(two_words + record("0400000400010002") + end_record),
              "record type 04 sets an address of 2 bytes, this one has 4 bytes|");
    EXPECT_EQ(message_of(record("020000021000") + record("02FFFF000102") + end_record),
              "the record goes beyond the end of its segment at address 131071|split it there, or use "
              "extended linear addresses (type 04)");
    EXPECT_EQ(message_of("\n" + two_words + end_record + ":0100020002FB\n"),
              "a record follows the end record of line 4|delete that end record, or what follows it");
    EXPECT_EQ(message_of("\n" + two_words + ":0100010003FB\n" + end_record),
              "address 1 is set twice, first in line 3|the later value is used");
    EXPECT_EQ(
        message_of(":0100000001FE\n:00000001FE\n:0100010002FC\n" + end_record),
        "checksum is FE, the record adds up to FF|if it is repaired, the records after it are not read");
}

TEST(HexReader, OfSeveralWordsSetTwiceTheFirstIsNamedWithTheRecordThatSetsIt) {
    read_options options = of_width(16);
    options.unit = address_unit::word;
    const std::string text = record("0400000000010002") + record("020002000003") + record("020002000004");
    EXPECT_EQ(report_of(read_hex(text + end_record, options)), "suspect overwritten-word 3:1+15 x1\n");
    EXPECT_EQ(message_of(text + end_record, options),
              "address 2 is set twice, first in line 2|the later value is used");
    const std::string pair = record("0400010000010002") + record("0400010000030004") + end_record;
    EXPECT_EQ(report_of(read_hex(pair, options)), "suspect overwritten-word 2:1+19 x1\n");
    EXPECT_EQ(message_of(pair, options), "address 1 is set twice, first in line 1|the later value is used");
}

TEST(HexReader, RepairsAreDescribed) {
    const auto repair_of = [](const std::string& text) {
        return read_hex(text, of_width(8)).diagnostics.at(0).repair;
    };
    EXPECT_EQ(repair_of("0100000001FE\n" + end_record), "':' is added before the record");
    EXPECT_EQ(repair_of("\xEF\xBB\xBF" + two_words + end_record), "the byte-order mark is deleted");
    EXPECT_EQ(repair_of(":01" + std::string(600, ' ') + "00000001FE\n" + end_record),
              "the blanks of the line are deleted");
    EXPECT_EQ(repair_of(two_words), "end record :00000001FF put after the last line");
    EXPECT_EQ(repair_of(":0100000001FE:0100010002FC\n" + end_record),
              "the second record is now on a line of its own");
    EXPECT_EQ(repair_of(two_words + ":00000001F\n"), "checksum FF is added");
    EXPECT_EQ(repair_of(":0100000001FF\n" + end_record), "checksum FF is now FE");
}

TEST(HexReader, RepairsWhatIsCertainBesideOtherFaults) {
    const std::string unknown_type = ":00000006FA\n";
    read_result result = read_hex(unknown_type, of_width(8));
    EXPECT_EQ(report_of(result), "broken record-type 1:8+2 x1\nbroken missing-end-record 1:12+0 x1\n");
    EXPECT_EQ(with_repairs(unknown_type, result), unknown_type + end_record);
    const std::string without_colons = ":0100000001FE\n00000001FF\n0100010002FC\n" + end_record;
    result = read_hex(without_colons, of_width(8));
    EXPECT_EQ(report_of(result), "broken colon-missing 2:1+10 x1\nbroken colon-missing 3:1+12 x1\n");
    EXPECT_EQ(with_repairs(without_colons, result),
              ":0100000001FE\n00000001FF\n:0100010002FC\n" + end_record);
}

TEST(HexReader, AMissingEndRecordIsInsertedAtTheEnd) {
    const read_result result = read_hex(two_words, of_width(8));
    EXPECT_EQ(result.diagnostics.at(0).fix, (std::vector<text_edit>{{two_words.size(), 0, end_record}}));
}

TEST(HexReader, AWordIsWhatTheLaterRecordHolds) {
    EXPECT_EQ(words_of(read_hex(two_words + ":0100010003FB\n" + end_record, of_width(8))), "0=01 1=03");
}

TEST(HexReader, ExtendedAddressesReplaceEachOther) {
    const read_result result = read_hex(
        ":020000021000EC\n:01000100AA54\n:02000004000AF0\n:01000000BB44\n:00000001FF\n", of_width(8));
    EXPECT_EQ(words_of(result), "65537=AA 655360=BB");
    EXPECT_EQ(result.image->depth(), 655361U);
}

TEST(HexReader, TheHighestAddressHasAWord) {
    const read_result result =
        read_hex(record("02000004FFFF") + record("01FFFF0001") + end_record, of_width(8));
    EXPECT_EQ(report_of(result), "");
    EXPECT_EQ(words_of(result), "4294967295=01");
}

TEST(HexReader, BeyondTheHighestAddressThereAreNoWords) {
    read_options options = of_width(8);
    options.keep_going = true;
    const read_result result =
        read_hex(record("02000004FFFF") + record("02FFFF001122") + end_record, options);
    EXPECT_EQ(report_of(result), "broken address-outside 2:1+15 x1\n");
    EXPECT_EQ(words_of(result), "4294967295=11");
}

TEST(HexReader, ARecordThatWrapsDoesNotSayHowWideTheWordsAre) {
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(words_of(read_hex(record("020000021000") + record("04FFFF0011223344") + end_record, options)),
              "none");
}

TEST(HexReader, TheWidthIsFoundInTheRecords) {
    const read_result result = read_hex(":0400000012345678E8\n:020002009ABCA6\n:00000001FF\n", {});
    EXPECT_EQ(report_of(result), "");
    EXPECT_EQ(words_of(result), "0=1234 1=5678 2=9ABC");
    EXPECT_EQ(result.facts.width_source, "the records");
    EXPECT_EQ(result.facts.unit, address_unit::word);
}

TEST(HexReader, TheWidthIsFoundAcrossPages) {
    const std::string text = record("02FFFE000102") + record("020000040001") + record("0100000003");
    EXPECT_EQ(words_of(read_hex(text + end_record, {})), "65534=01 65535=02 65536=03");
}

TEST(HexReader, RecordsWithoutDataDoNotHideTheWidth) {
    const std::string text =
        record("020000001234") + record("00000500") + record("020001005678") + end_record;
    EXPECT_EQ(words_of(read_hex(text, {})), "0=1234 1=5678");
    EXPECT_EQ(find_hex_word(text, {}, 1)->line, 3U);
}

TEST(HexReader, TheWidthIsFoundInRecordsThatAreReadable) {
    read_options options;
    options.keep_going = true;
    const std::string next = record("020001001234") + record("020002005678") + end_record;
    const read_result result = read_hex(":0100000012FF\n" + next, options);
    EXPECT_EQ(report_of(result), "broken checksum 1:12+2 x1\n");
    EXPECT_EQ(words_of(result), "1=1234 2=5678");
    EXPECT_EQ(words_of(read_hex(":01000000120G\n" + next, options)), "1=1234 2=5678");
}

TEST(HexReader, RecordsThatDoNotSayTheWidthAreBroken) {
    for (const std::string text :
         {":020000000102FB\n:00000001FF\n",
          ":0400000012345678E8\n:0400020012345678E6\n:0400030012345678E5\n:00000001FF\n",
          ":03000000123456 61\n:0300020012345 65F\n:00000001FF\n"}) {
        const read_result result = read_hex(text, {});
        EXPECT_EQ(report_of(result), "broken width-unknown 0:0+0 x1\n") << text;
        EXPECT_FALSE(result.image);
    }
}

TEST(HexReader, TheWidthIsNotInDoubtWhereARecordIsUnreadable) {
    EXPECT_EQ(report_of(read_hex(":0100000012FF\n:00000001FF\n", {})), "broken checksum 1:12+2 x1\n");
    EXPECT_EQ(report_of(read_hex(record("020000000102") + ":0100020012FF\n" + end_record, {})),
              "broken checksum 2:12+2 x1\n");
}

TEST(HexReader, WordsOfOddWidthsTakeWholeBytes) {
    EXPECT_EQ(words_of(read_hex(":040000000ABC0DEF3A\n:00000001FF\n", of_width(12))), "0=ABC 1=DEF");
    EXPECT_EQ(words_of(read_hex(record("040000000abc0def") + end_record, of_width(12))), "0=ABC 1=DEF");
    EXPECT_EQ(words_of(read_hex(record("020000000103") + end_record, of_width(9))), "0=103");
    EXPECT_EQ(words_of(read_hex(record("020000000103") + end_record, of_width(7))), "0=01 1=03");
}

TEST(HexReader, WordsThatAreTooWideAreOneDiagnostic) {
    const read_result result =
        read_hex(record("040000001ABC0001") + ":02 000200 F0 00 0C\n" + end_record, of_width(12));
    EXPECT_EQ(report_of(result), "broken too-wide 1:10+4 x2\n");
    EXPECT_EQ(result.diagnostics[0].more.at(0).column, 12U);
    EXPECT_EQ(result.diagnostics[0].message, "value 1ABC needs 13 bits, the words have 12");
    EXPECT_EQ(result.diagnostics[0].hint, "needs --width 16");
}

TEST(HexReader, AWidthOf255BytesAndMoreIsToldByTheRecords) {
    EXPECT_EQ(report_of(read_hex(":020000000102FB\n:00000001FF\n", of_width(4096))),
              "broken odd-bytes 1:1+15 x1\n");
}

TEST(HexReader, ARecordThatEndsInAWordIsBroken) {
    const std::string text = ":03000000010203F7\n:00000001FF\n";
    EXPECT_EQ(report_of(read_hex(text, of_width(16))), "broken odd-bytes 1:1+17 x1\n");
    EXPECT_EQ(message_of(text, of_width(16)),
              "the record holds 3 bytes, which is not a whole number of words of 2 bytes|");
}

TEST(HexReader, WordsBeyondTheDepthAreOneDiagnostic) {
    read_options options = of_width(8);
    options.depth = 2;
    const read_result result = read_hex(record("0300000001"
                                               "0203") +
                                            record("0100090001") + end_record,
                                        options);
    EXPECT_EQ(report_of(result), "broken beyond-depth 1:1+17 x2\n");
    EXPECT_EQ(result.diagnostics[0].message, "address 2 is beyond the depth 2 (0 to 1)");
    EXPECT_EQ(result.diagnostics[0].hint, "needs --depth 10 or more");
}

TEST(HexReader, TheDepthMayBeGiven) {
    read_options options = of_width(8);
    options.depth = 16;
    EXPECT_EQ(read_hex(two_words + end_record, options).image->depth(), 16U);
    const read_result empty = read_hex(end_record, options);
    ASSERT_TRUE(empty.image);
    EXPECT_EQ(empty.image->count_set(), 0U);
}

std::string bytes_file() {
    return record("080000001301500093011000") + record("080008001302200013030300") + end_record;
}

TEST(HexReader, RecordsThatCountBytesContradictAWiderWord) {
    const read_result result = read_hex(bytes_file(), of_width(32));
    EXPECT_EQ(report_of(result), "broken address-unit 0:0+0 x1\n");
    EXPECT_EQ(result.diagnostics[0].message,
              "the record addresses count bytes, but words of 32 bits need word addresses");
    EXPECT_EQ(result.diagnostics[0].hint, "add --address-unit byte --endian little (first word 00500113) or "
                                          "big (13015000); or --address-unit word if words are omitted");
}

TEST(HexReader, AnOptionResolvesThatRecordsCountBytes) {
    EXPECT_EQ(read_hex(bytes_file(), of_width(32)).diagnostics.at(0).option,
              "--address-unit byte --endian little");
    const std::string halves = record("0400000012345678") + record("0400020012345678") + end_record;
    EXPECT_EQ(read_hex(halves, of_width(32)).diagnostics.at(0).option, "");
}

TEST(HexReader, RecordsOfNarrowerWordsContradictTheWidth) {
    const read_result result = read_hex(record("0400000012345678") +
                                            record("040002001234"
                                                   "5678") +
                                            end_record,
                                        of_width(32));
    EXPECT_EQ(report_of(result), "broken address-unit 0:0+0 x1\n");
    EXPECT_EQ(message_of(record("0400000012345678") + record("0400020012345678") + end_record, of_width(32)),
              "the record addresses count words of 16 bits, but words of 32 bits need word addresses|give "
              "--width 16; or --address-unit word if words are omitted");
}

TEST(HexReader, TheCallerMaySayThatWordsAreLeftOut) {
    read_options options = of_width(32);
    options.unit = address_unit::word;
    EXPECT_EQ(words_of(read_hex(bytes_file(), options)), "0=13015000 1=93011000 8=13022000 9=13030300");
}

TEST(HexReader, BytesBecomeWordsInTheOrderThatIsGiven) {
    const read_result little = read_hex(bytes_file(), of_bytes(32, byte_order::little));
    EXPECT_EQ(report_of(little), "");
    EXPECT_EQ(words_of(little), "0=00500113 1=00100193 2=00200213 3=00030313");
    EXPECT_EQ(little.facts.unit, address_unit::byte);
    EXPECT_EQ(little.facts.order, byte_order::little);
    EXPECT_EQ(words_of(read_hex(bytes_file(), of_bytes(32, byte_order::big))),
              "0=13015000 1=93011000 2=13022000 3=13030300");
    const read_result bytes = read_hex(two_words + end_record, of_bytes(8, std::nullopt));
    EXPECT_EQ(words_of(bytes), "0=01 1=02");
    EXPECT_EQ(bytes.facts.unit, address_unit::byte);
    EXPECT_EQ(bytes.facts.order, std::nullopt);
}

TEST(HexReader, BytesOfAWordMayBeInSeveralRecords) {
    const std::string text = record("0100010034") + record("0100000012") +
                             record("02000200"
                                    "5678") +
                             end_record;
    EXPECT_EQ(words_of(read_hex(text, of_bytes(32, byte_order::big))), "0=12345678");
}

TEST(HexReader, ByteAddressesNeedAnOrderForWordsOfSeveralBytes) {
    EXPECT_EQ(report_of(read_hex(bytes_file(), of_bytes(12, byte_order::big))),
              "broken surplus-bits 1:10+2 x7\n");
    EXPECT_EQ(message_of(bytes_file(), of_bytes(32, std::nullopt)),
              "the byte order of words of 32 bits is unknown|add --endian little (first word "
              "00500113) or big "
              "(13015000)");
    read_options no_width = of_bytes(8, byte_order::big);
    no_width.width.reset();
    EXPECT_EQ(report_of(read_hex(bytes_file(), no_width)), "");
    EXPECT_EQ(read_hex(bytes_file(), no_width).image->width(), 8U);
}

TEST(HexReader, AWordOfWhichBytesAreMissingIsBroken) {
    const read_result result = read_hex(record("0300000001"
                                               "0203") +
                                            record("0500080001"
                                                   "02030405") +
                                            end_record,
                                        of_bytes(32, byte_order::big));
    EXPECT_EQ(report_of(result), "broken incomplete-word 1:10+2 x2\n");
    EXPECT_EQ(result.diagnostics[0].message, "word at address 0 has 3 of 4 bytes");
    EXPECT_EQ(result.diagnostics[0].more.at(0).line, 2U);
}

TEST(HexReader, ADepthCountsWordsWhereAddressesCountBytes) {
    read_options options = of_bytes(32, byte_order::big);
    options.depth = 3;
    EXPECT_EQ(message_of(bytes_file(), options),
              "address 3 is beyond the depth 3 (0 to 2)|needs --depth 4 or more");
}

TEST(HexReader, KeepsGoingAndSaysWhichWordsAreInDoubt) {
    read_options options = of_width(16);
    options.keep_going = true;
    const read_result result =
        read_hex(record("020000001234") + ":0400010056789ABC00\n" + ":02000400GGGG00\n" +
                     record("0300090001"
                            "0203") +
                     record("02000600FFFF") + end_record,
                 options);
    EXPECT_EQ(words_of(result), "0=1234 6=FFFF");
    EXPECT_THAT(result.unreadable,
                testing::ElementsAre(address_range{1, 2}, address_range{4, 4}, address_range{9, 10}));
}

TEST(HexReader, MarksWordsThatAreTooWideOrPartlySet) {
    read_options options = of_width(12);
    options.keep_going = true;
    EXPECT_THAT(read_hex(record("040000001ABC0001") + end_record, options).unreadable,
                testing::ElementsAre(address_range{0, 0}));
    options = of_bytes(32, byte_order::big);
    options.keep_going = true;
    EXPECT_THAT(read_hex(record("0300000001"
                                "0203") +
                             end_record,
                         options)
                    .unreadable,
                testing::ElementsAre(address_range{0, 0}));
}

TEST(HexReader, LeavesOutDiagnosticsBeyondTheLimitUnlessRepairsAreWanted) {
    std::string text;
    for (int count = 0; count < 200; ++count) {
        text += ":0100000001FF\n";
    }
    read_options options = of_width(8);
    EXPECT_EQ(read_hex(text + end_record, options).diagnostics.size(), 100U);
    EXPECT_EQ(read_hex(text + end_record, options).facts.diagnostics_left_out, 100U);
    options.wants_repairs = true;
    EXPECT_EQ(read_hex(text + end_record, options).diagnostics.size(), 200U);
}

TEST(HexReader, CommentsAreAFact) {
    EXPECT_TRUE(read_hex("; boot\n" + two_words + end_record, of_width(8)).facts.has_comments);
    EXPECT_TRUE(read_hex("; :0100020002FB\n" + two_words + end_record, of_width(8)).facts.has_comments);
    EXPECT_TRUE(read_hex(two_words + end_record + "boot\n", of_width(8)).facts.has_comments);
    EXPECT_FALSE(read_hex(two_words + end_record, of_width(8)).facts.has_comments);
}

TEST(HexReader, TheFormatIsAFact) {
    EXPECT_EQ(read_hex(two_words + end_record, of_width(8)).facts.as, &hex_format);
    EXPECT_EQ(read_hexbytes(two_words + end_record, {}).facts.as, &hexbytes_format);
}

TEST(HexReader, AMemoryOfWordsHasNoStartAddress) {
    const read_result result = read_hex(two_words + record("0400000500000100") + end_record, of_width(8));
    EXPECT_TRUE(result.facts.more.empty());
    EXPECT_EQ(result.facts.start_address, std::nullopt);
}

TEST(HexReader, FindsTheRecordThatSetsAWordLast) {
    const std::string text = two_words + " :0100010003FB\n" + end_record;
    EXPECT_EQ(find_hex_word(text, of_width(8), 1), (place{3, 2, 29, 13}));
    EXPECT_EQ(find_hex_word(text, {}, 0), (place{1, 1, 0, 13}));
    EXPECT_EQ(find_hex_word(text, of_width(8), 2), std::nullopt);
    EXPECT_EQ(find_hex_word(":020000000102FB\n:00000001FF\n", {}, 0), std::nullopt);
    EXPECT_EQ(find_hex_word(bytes_file(), of_bytes(32, byte_order::big), 2)->line, 2U);
}

TEST(HexReader, FindsWordsOfSeveralBytes) {
    const std::string text = record("0400000000010002") + record("020003000003") + end_record;
    EXPECT_EQ(find_hex_word(text, of_width(16), 1), (place{1, 1, 0, 19}));
    EXPECT_EQ(find_hex_word(text, of_width(16), 2), std::nullopt);
    EXPECT_EQ(find_hex_word(text, of_width(16), 3), (place{2, 1, 20, 15}));
}

TEST(HexReader, FindsWordsInRecordsOfAnotherPage) {
    const std::string text = two_words + record("020000040001") + record("0100000005") + end_record;
    EXPECT_EQ(find_hex_word(text, {}, 0x10000), (place{4, 1, 44, 13}));
    EXPECT_EQ(find_hex_word(text, of_width(8), 0x10000), (place{4, 1, 44, 13}));
}

TEST(HexReader, FindsWordsOfBytesAtByteAddresses) {
    read_options options = of_bytes(16, byte_order::little);
    const std::string text = record("0400000011223344") + record("020004005566") + end_record;
    EXPECT_EQ(find_hex_word(text, options, 2)->line, 2U);
    options.order.reset();
    EXPECT_EQ(find_hex_word(text, options, 2)->line, 2U);
    options.width.reset();
    EXPECT_EQ(find_hex_word(text, options, 5)->line, 2U);
}

TEST(HexReader, FindsNoWordInARecordWithAWrongChecksum) {
    const std::string text = two_words + ":0100000002FF\n" + end_record;
    EXPECT_EQ(find_hex_word(text, {}, 0), (place{1, 1, 0, 13}));
    EXPECT_EQ(find_hex_word(text, of_width(8), 0), (place{1, 1, 0, 13}));
}

TEST(HexReader, AWordThatIsTooLargeIsAtItsDigits) {
    EXPECT_EQ(report_of(read_hex(record("02000000F123") + record("020001000123") + end_record, of_width(12))),
              "broken too-wide 1:10+4 x1\n");
}

TEST(HexReader, AnEmptyFileIsNoHex) {
    EXPECT_EQ(report_of(read_hex("", of_width(8))), "broken not-hex 0:0+0 x1\n");
}

TEST(HexReader, OfAFileWithoutDataNoWordsAreMissingWhereItsSizeIsGiven) {
    read_options options = of_width(8);
    const auto no_data_without = [](const std::string& missing) {
        return "the end record comes before any data|give " + missing +
               " to read it as a memory without words";
    };
    EXPECT_EQ(report_of(read_hex(end_record, options)), "broken no-data 1:1+11 x1\n");
    EXPECT_EQ(message_of(end_record, options), no_data_without("--depth"));
    options.depth = 4;
    EXPECT_EQ(report_of(read_hex(end_record, options)), "");
    options.width.reset();
    EXPECT_EQ(report_of(read_hex(end_record, options)), "broken no-data 1:1+11 x1\n");
    EXPECT_EQ(message_of(end_record, options), no_data_without("--width"));
    EXPECT_EQ(message_of(end_record, {}), no_data_without("--width and --depth"));
}

TEST(HexReader, SniffsByTheFirstRecords) {
    EXPECT_EQ(sniff_hex(two_words), certainty::certain);
    EXPECT_EQ(sniff_hex("; text\n\n" + two_words), certainty::certain);
    EXPECT_EQ(sniff_hex(":0100000001FF\n:00000001FE\n"), certainty::likely);
    EXPECT_EQ(sniff_hex(":hello"), certainty::possible);
    EXPECT_EQ(sniff_hex("data:0100000001FE\n"), certainty::likely);
    EXPECT_EQ(sniff_hex("\xEF\xBB\xBF:0100000001FE\n"), certainty::certain);
    EXPECT_EQ(sniff_hex("data:0100000001FE\n:0100000001FF\n"), certainty::likely);
    EXPECT_EQ(sniff_hex(":0100000001FF\n" + two_words), certainty::certain);
    EXPECT_EQ(sniff_hex(":0100000001FF\n:00000001FE\n" + two_words), certainty::likely);
    EXPECT_EQ(sniff_hex("0 : 12;"), certainty::no);
    EXPECT_EQ(sniff_hex(""), certainty::no);
}

TEST(HexReader, ADepthBeyondEveryMemoryIsTheLargest) {
    read_options options = of_width(8);
    options.depth = deepest_memory + 1;
    const read_result result = read_hex(two_words + end_record, options);
    ASSERT_TRUE(result.image);
    EXPECT_EQ(result.image->depth(), deepest_memory);
}

TEST(HexReader, RecordsAfterTheEndGiveNoMemory) {
    const std::string text = end_record + two_words;
    read_options options;
    options.keep_going = true;
    EXPECT_FALSE(read_hex(text, options).image);
    options.width = 8;
    const read_result result = read_hex(text, options);
    ASSERT_TRUE(result.image); // for editing
    EXPECT_EQ(result.image->depth(), 1U);
    EXPECT_EQ(result.image->count_set(), 0U);
}

} // namespace
