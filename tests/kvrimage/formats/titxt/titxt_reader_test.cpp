#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/formats/titxt/titxt_format.h"
#include "kvrimage/formats/titxt/titxt_reader.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace kvrimage;
using namespace kvrimage_tests;

std::string report_of_titxt(const std::string& text) {
    return shown_report(read_titxt(text, {}));
}

std::string titxt_message(const std::string& text) {
    const read_result result = read_titxt(text, {});
    return result.diagnostics.at(0).message + "|" + result.diagnostics.at(0).hint;
}

TEST(TitxtReader, BytesFollowTheirAddress) {
    const std::string text = "@0010\n31 40\n00 03\n@5\nd0\nq\n";
    EXPECT_EQ(set_words_of(read_titxt(text, {})), "5=D0 16=31 17=40 18=00 19=03");
    EXPECT_EQ(report_of_titxt(text), "");
    EXPECT_EQ(set_words_of(read_titxt("@2\n31 40 00 03 q", bytes_as(16, byte_order::little))),
              "1=4031 2=0300");
}

TEST(TitxtReader, FindsNoWordAmongBytesWithoutAnAddress) {
    EXPECT_EQ(find_titxt_word("01 02\n@0\n03 04\nq\n", {}, 1), (place{3, 4, 12, 2}));
}

TEST(TitxtReader, AnAddressMustBeOne) {
    EXPECT_EQ(report_of_titxt("@1Z\n55\n@ 1\n10\nq\n"), "broken titxt-address 1:1+3 x2\n"
                                                        "broken titxt-byte 3:3+1 x1\n");
    EXPECT_EQ(titxt_message("@1Z\n55\nq\n"),
              "'@1Z' is not '@' and a hexadecimal address of up to 32 bits|write @F000");
}

TEST(TitxtReader, AByteHasTwoDigits) {
    EXPECT_EQ(report_of_titxt("@0\n0x55 1 AA\nq\n"), "broken titxt-byte 2:1+4 x2\n");
    EXPECT_EQ(titxt_message("@0\n0x55\nq\n"),
              "'0x55' is not a byte of two hexadecimal digits|separate bytes by blanks");
}

TEST(TitxtReader, BytesNeedAnAddress) {
    EXPECT_EQ(titxt_message("55 AA\nq\n"),
              "there is a byte before the first address|begin with @0 if it is to be at address 0");
    EXPECT_EQ(report_of_titxt("55 AA\n@0\n11\nq\n"), "broken titxt-no-address 1:1+2 x1\n");
}

TEST(TitxtReader, AFinalQIsNeeded) {
    EXPECT_EQ(titxt_message("@0\n55"),
              "there is no final 'q'|the last line should be q; the file may be cut off");
    for (const std::string line_end : {"\n", "\r\n"}) {
        const std::string text = "@0" + line_end + "55" + line_end;
        EXPECT_EQ(with_edits(text, read_titxt(text, {}).diagnostics.at(0).fix), text + "q" + line_end);
    }
    EXPECT_EQ(with_edits("@0\n55", read_titxt("@0\n55", {}).diagnostics.at(0).fix), "@0\n55\nq\n");
}

TEST(TitxtReader, NothingMayFollowTheQ) {
    EXPECT_EQ(report_of_titxt("@0\n55\nq\n\n@1 22\n"), "broken titxt-after-end 5:1+2 x2\n");
    EXPECT_EQ(titxt_message("@0\n55\nq\n\n@1 22\n"),
              "'@1' follows the final 'q'|delete that q, or what follows it");
}

TEST(TitxtReader, BytesThatAreSetAgainHaveThePlaceOfTheLastOnes) {
    EXPECT_EQ(report_of_titxt("@0\n55 66\n@1\n77\nq\n"), "suspect overwritten-byte 4:1+2 x1\n");
}

TEST(TitxtReader, AFileOfSomethingElseIsNone) {
    EXPECT_EQ(report_of_titxt("WIDTH=8;\n"), "broken not-titxt 0:0+0 x1\n");
    EXPECT_EQ(report_of_titxt(""), "broken not-titxt 0:0+0 x1\n");
    EXPECT_EQ(report_of_titxt("@0\nq\n"), "broken no-bytes 0:0+0 x1\n");
}

TEST(TitxtReader, GoesOnWithTheOtherBytes) {
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(set_words_of(read_titxt("@0\n55 X 66\n@1Z\n77\nq\n", options)), "0=55 2=66");
}

TEST(TitxtReader, FindsTheLineOfAWord) {
    const std::string text = "@10\n01 02\n03 04\nq\n";
    read_options options = bytes_as(16, byte_order::big);
    EXPECT_EQ(find_titxt_word(text, options, 9)->line, 3U);
    EXPECT_FALSE(find_titxt_word(text, options, 10));
}

TEST(TitxtReader, OnlyAWholeFileIsCertain) {
    EXPECT_EQ(sniff_titxt("@F000\n31 40\nq\n"), certainty::certain);
    EXPECT_EQ(sniff_titxt("@F000\n31 40\n"), certainty::possible);
    EXPECT_EQ(sniff_titxt("@F000\nq"), certainty::possible);
    EXPECT_EQ(sniff_titxt("@F000\n"), certainty::no);
    EXPECT_EQ(sniff_titxt("@F000\n314\nq\n"), certainty::no);
    EXPECT_EQ(sniff_titxt("31 40\nq\n"), certainty::no);
    EXPECT_EQ(sniff_titxt("@1\n31\n@X\nq\n"), certainty::no);
    EXPECT_EQ(sniff_titxt(""), certainty::no);
    std::string head = "@0\n";
    while (head.size() < sniffed_bytes) {
        head += "5A\n";
    }
    EXPECT_EQ(sniff_titxt(head.substr(0, sniffed_bytes)), certainty::possible);
    EXPECT_EQ(std::ranges::count(formats_of_path("a.txt"), &titxt_format), 1);
}

TEST(TitxtReader, DamagedFilesAreBrokenOrHaveAnImage) {
    EXPECT_EQ(fault_of_damaged(titxt_format, "@0010\n31 40\n00 03\n@5\nd0\nq\n"), "");
}

} // namespace
