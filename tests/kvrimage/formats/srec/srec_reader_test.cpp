#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/formats/srec/srec_format.h"
#include "kvrimage/formats/srec/srec_parser.h"
#include "kvrimage/formats/srec/srec_reader.h"
#include "kvrimage/image/hex_text.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using namespace kvrimage_tests;

const std::string header = "S0050000414277\n"; // AB
const std::string two_bytes = "S1051234AABB4F\n";
const std::string end_of_s1 = "S9030000FC\n";

read_options bytes_from(std::uint64_t base) {
    read_options options;
    options.base = base;
    return options;
}

std::string report_of_srec(const std::string& text) {
    return shown_report(read_srec(text, {}));
}

std::string first_message(const std::string& text) {
    const read_result result = read_srec(text, {});
    return result.diagnostics.at(0).message + "|" + result.diagnostics.at(0).hint;
}

/// The file after all certain repairs.
std::string repaired_srec(const std::string& text) {
    check_options options;
    options.read.as = &srec_format;
    return repair(text, options).contents;
}

TEST(SrecReader, TakesDataOfAllTypes) {
    const std::string text =
        header + two_bytes + "S206123456AABBF8\nS30700001000CCDD3F\n" + "S70500000000FA\n";
    EXPECT_EQ(set_words_of(read_srec(text, bytes_from(0x1000))),
              "0=CC 1=DD 564=AA 565=BB 1188950=AA 1188951=BB");
    EXPECT_EQ(report_of_srec(text), "");
}

TEST(SrecReader, HeaderAndStartAddressAreFacts) {
    const read_result result = read_srec(header + two_bytes + "S9031234B6\n", {});
    ASSERT_EQ(result.facts.more.size(), 2U);
    EXPECT_EQ(result.facts.more[0].name, "header");
    EXPECT_EQ(result.facts.more[0].value, "AB");
    EXPECT_EQ(result.facts.more[1].name, "start address");
    EXPECT_EQ(result.facts.more[1].value, "1234");
    EXPECT_EQ(result.facts.start_address, 0x1234U);
    EXPECT_EQ(read_srec(header + two_bytes + end_of_s1, {}).facts.start_address, std::nullopt);
    const read_result odd = read_srec("S0050000010CED\n" + header + two_bytes + end_of_s1, {});
    EXPECT_EQ(odd.facts.more.at(0).value, "0x010C (the first of 2 headers)");
    EXPECT_EQ(read_srec("S00700004142000075\n" + two_bytes + end_of_s1, {}).facts.more.at(0).value, "AB");
}

TEST(SrecReader, AHeaderThatIsNoTextIsShownInDigits) {
    EXPECT_EQ(read_srec("S00400007F7C\n" + two_bytes + end_of_s1, {}).facts.more.at(0).value, "0x7F");
}

TEST(SrecReader, CountRecordsAreCompared) {
    EXPECT_EQ(report_of_srec(two_bytes + "S5030001FB\n" + end_of_s1), "");
    EXPECT_EQ(report_of_srec(two_bytes + "S604000001FA\n" + end_of_s1), "");
    EXPECT_EQ(first_message(two_bytes + "S5030002FA\n" + end_of_s1),
              "S5 states 2 data records before it, but there are 1|records are missing, or there "
              "are too many");
    EXPECT_EQ(report_of_srec(two_bytes + "S5030002FA\n" + end_of_s1), "broken srec-record-count 2:1+10 x1\n");
}

TEST(SrecReader, AnEndForOtherDataIsSuspect) {
    EXPECT_EQ(first_message(two_bytes + "S70500000000FA\n"),
              "S7 ends a file of S3 records, but the data are in S1 records|");
    EXPECT_EQ(report_of_srec("S206000000AABB94\n" + end_of_s1), "suspect srec-other-end 2:1+10 x1\n");
    EXPECT_EQ(report_of_srec("S30700000000AABB93\n" + end_of_s1), "suspect srec-other-end 2:1+10 x1\n");
    EXPECT_EQ(report_of_srec(two_bytes + "S206000000AABB94\n" + end_of_s1), "");
}

TEST(SrecReader, NoEndIsSuspect) {
    EXPECT_EQ(report_of_srec(two_bytes), "suspect srec-no-end 0:0+0 x1\n");
    EXPECT_EQ(set_words_of(read_srec(two_bytes, {})), "4660=AA 4661=BB");
}

TEST(SrecReader, RecordsAfterTheEndAreBroken) {
    EXPECT_EQ(report_of_srec(end_of_s1 + two_bytes + two_bytes), "broken record-after-end 2:1+14 x2\n"
                                                                 "broken no-bytes 0:0+0 x1\n");
    EXPECT_EQ(report_of_srec(two_bytes + end_of_s1 + "\ntext\n"), "suspect srec-text 4:1+4 x1\n");
}

TEST(SrecReader, AWrongChecksumIsRepairedWhereThatIsCertain) {
    const std::string wrong = "S1051234AABB4E\n";
    EXPECT_EQ(report_of_srec(wrong + end_of_s1), "broken checksum 1:13+2 x1\n");
    EXPECT_EQ(first_message(wrong + end_of_s1), "checksum is 4E, the record adds up to 4F|");
    EXPECT_EQ(repaired_srec(wrong + end_of_s1), two_bytes + end_of_s1);
    EXPECT_EQ(repaired_srec(two_bytes + "S9030000FD\n\n"), two_bytes + end_of_s1 + "\n");
    const std::string in_the_middle = "S9030000FD\n" + two_bytes;
    EXPECT_EQ(repaired_srec(in_the_middle), in_the_middle);
    EXPECT_EQ(first_message(in_the_middle), "checksum is FD, the record adds up to FC|if it is repaired, the "
                                            "records after it are not read");
}

TEST(SrecReader, ASmallLetterIsRepaired) {
    EXPECT_EQ(first_message("s1051234AABB4F\n"), "a record begins with 'S', not with 's'|write S");
    EXPECT_EQ(repaired_srec("s1051234AABB4E\n" + end_of_s1), two_bytes + end_of_s1);
}

TEST(SrecReader, FaultsOfRecordsNameWhatIsWrong) {
    EXPECT_EQ(first_message("S1051234AAGB4F\n"), "'G' in S1051234AAGB4F is not a valid hexadecimal digit|");
    EXPECT_EQ(first_message("S1\n"), "the record has no digit after its type; its count needs 2|");
    EXPECT_EQ(first_message("S10\n"), "the record has 1 digit after its type; its count needs 2|");
    EXPECT_EQ(first_message("S1051234AABB\n"),
              "count 05 means 5 bytes, there are 4|one byte is missing, or the checksum");
    EXPECT_EQ(first_message("S1051234AABB4\n"),
              "count 05 means 5 bytes, there are 9 digits, an odd number|a digit is missing or surplus");
    EXPECT_EQ(first_message("S10501\n"), "count 05 means 5 bytes, there is 1|");
    EXPECT_EQ(first_message("S10200FD\n"), "count 02 does not fit S1, which has at least 3 bytes|");
    EXPECT_EQ(first_message("S9040000AA51\n"), "count 04 does not fit S9, which has 3 bytes|");
    EXPECT_EQ(first_message("S4030000FC\n"), "record type S4 is reserved|write S1, S2 or S3 if it has data");
    EXPECT_EQ(first_message("S307FFFFFFFF0102F9\n"),
              "the record goes beyond address FFFFFFFF, the largest of S-records|");
}

TEST(SrecReader, ACountThatIsNoNumberIsReportedWhateverItsLine) {
    EXPECT_EQ(first_message("S1GG" + std::string(512, 'A') + "\n").substr(0, 6), "'G' in");
}

TEST(SrecReader, ARecordMayEndAtTheLargestAddressOfItsType) {
    EXPECT_EQ(set_words_of(read_srec("S105FFFE0102FA\n" + end_of_s1, {})), "65534=01 65535=02");
}

TEST(SrecReader, ARecordBeyondItsTypeIsReadOn) {
    const read_result result = read_srec("S105FFFF0102F9\n" + end_of_s1, bytes_from(0xFFFF));
    EXPECT_EQ(set_words_of(result), "0=01 1=02");
    EXPECT_EQ(shown_report(result), "suspect srec-beyond-type 1:1+14 x1\n");
    EXPECT_EQ(result.diagnostics.at(0).message, "the record goes beyond address FFFF, the largest of S1");
    EXPECT_EQ(find_srec_word("S105FFFF0102F9\n" + end_of_s1, bytes_from(0xFFFF), 1)->offset, 10U);
}

TEST(SrecReader, ALongRecordHas250Bytes) {
    std::string digits;
    unsigned sum = 0xFF + 0x10;
    for (unsigned index = 0; index < 250; ++index) {
        constexpr std::string_view all = "0123456789abcdef";
        digits += all[index / 16];
        digits += all[index % 16];
        sum += index;
    }
    const unsigned checksum = ~sum & 0xFFU;
    constexpr std::string_view upper = "0123456789ABCDEF";
    const std::string text =
        "S3FF00000010" + digits + upper[checksum / 16] + upper[checksum % 16] + "\nS70500000000FA\n";
    const read_result result = read_srec(text, {});
    EXPECT_EQ(shown_report(result), "");
    EXPECT_EQ(result.image->count_set(), 250U);
    EXPECT_EQ((*result.image)[0x10 + 249]->to_text(radix::hex), "F9");
}

TEST(SrecReader, BytesThatAreSetAgainHaveThePlaceOfTheLastOnes) {
    EXPECT_EQ(report_of_srec(two_bytes + "S1051233AACC3F\n" + end_of_s1),
              "suspect overwritten-byte 2:11+2 x1\n");
}

TEST(SrecReader, AFileWithoutRecordsIsNone) {
    EXPECT_EQ(report_of_srec("WIDTH=8;\n"), "broken not-srec 0:0+0 x1\n");
    EXPECT_EQ(report_of_srec(""), "broken not-srec 0:0+0 x1\n");
    EXPECT_EQ(report_of_srec(end_of_s1), "broken no-bytes 0:0+0 x1\n");
    EXPECT_EQ(report_of_srec("\x7F"
                             "ELF"),
              "broken foreign-content 1:1+4 x1\n");
}

TEST(SrecReader, GoesOnWithTheOtherRecords) {
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(set_words_of(read_srec("S1051234AABB4E\nS1040000AA51\n" + end_of_s1, options)), "0=AA");
    EXPECT_EQ(set_words_of(read_srec("S1051234AABB4E\n" + end_of_s1, options)), "none");
}

TEST(SrecReader, FindsTheLineOfAWord) {
    const std::string text = header + "S1051000AABB85\n" + "S1051000CCDD41\n" + end_of_s1;
    read_options options = bytes_as(16, byte_order::big);
    options.base = 0x1000;
    EXPECT_EQ(find_srec_word(text, options, 0)->line, 3U);
    EXPECT_EQ(find_srec_word(text, options, 0)->column, 9U);
    EXPECT_FALSE(find_srec_word(text, options, 1));
}

TEST(SrecReader, FindsTheLineOfAWordAmongLinesWithoutData) {
    const std::string text =
        "; boot\n\nS1031000EC\n" + header + "S1051000AABB85\n" + "S1051000CCDD00\n" + end_of_s1;
    read_options options;
    options.base = 0x1000;
    EXPECT_EQ(find_srec_word(text, options, 1)->line, 5U);
}

TEST(SrecReader, TextIsACommentOfTheFile) {
    const std::string text = "; boot\n" + two_bytes + end_of_s1;
    EXPECT_TRUE(read_srec(text, {}).facts.has_comments);
    std::string found;
    find_srec_comments(text, [&](const span& where) { found += std::string(where.in(text)) + "|"; });
    EXPECT_EQ(found, "; boot|");
}

TEST(SrecReader, ContentsTellTheFormat) {
    EXPECT_EQ(sniff_srec("\n" + header), certainty::certain);
    EXPECT_EQ(sniff_srec("S1051234AABB4E\n"), certainty::likely);
    EXPECT_EQ(sniff_srec("s1051234AABB4F\n"), certainty::likely);
    EXPECT_EQ(sniff_srec("S12\n"), certainty::possible);
    EXPECT_EQ(sniff_srec("Some text\n" + header), certainty::no);
    EXPECT_EQ(sniff_srec("\n"), certainty::no);
    EXPECT_EQ(format_of_path("a.s19"), &srec_format);
    EXPECT_EQ(format_of_path("a.mot"), &srec_format);
}

TEST(SrecReader, TheFastPathReadsWhatTheParserReads) {
    for (const unsigned type : {1U, 2U, 3U}) {
        const auto data_record = [type](std::uint64_t address, const std::string& data) {
            std::string bytes(1, static_cast<char>(data.size() + type + 2));
            for (unsigned left = type + 1; left > 0; --left) {
                bytes += static_cast<char>(address >> (8 * (left - 1)));
            }
            bytes += data;
            bytes += static_cast<char>(srec_checksum(bytes));
            std::string digits(2 * bytes.size(), '0');
            encode_hex(bytes, digits.data());
            return "S" + std::to_string(type) + digits;
        };
        EXPECT_EQ(fault_of_fast_records(srec_format, data_record, end_of_s1), "");
    }
}

TEST(SrecReader, DamagedFilesAreBrokenOrHaveAnImage) {
    EXPECT_EQ(fault_of_damaged(srec_format, header + "; text\n" + two_bytes +
                                                "S206123456AABBF8\nS5030002FA\n" + end_of_s1),
              "");
}

} // namespace
