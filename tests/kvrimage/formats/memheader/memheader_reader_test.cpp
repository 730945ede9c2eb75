#include "kvrimage/formats/memheader/memheader_format.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

std::string mem_of(const std::string& layout, const std::string& rows) {
    return "#Format=" + layout +
           "\n#Depth=4\n#Width=8\n#AddrRadix=3\n#DataRadix=" + (layout == "Bin" ? "0" : "3") + "\n#Data\n" +
           rows;
}

std::vector<std::string> mem_found(const std::string& contents, const read_options& options = {}) {
    return kvrimage_tests::found_in(memheader_format, contents, options);
}

std::string mem_words(const std::string& contents, const read_options& options = {}) {
    return kvrimage_tests::words_read(memheader_format, contents, options);
}

TEST(MemheaderReader, ReadsEachFormat) {
    EXPECT_EQ(mem_words(mem_of("Bin", "00000001\n11111111\n0\n1\n")), "01 FF 00 01");
    EXPECT_EQ(mem_words(mem_of("Hex", "00 1f\nA0\n7\n")), "00 1F A0 07");
    EXPECT_EQ(mem_words(mem_of("AddrHex", "0:1f\n2: 3 4\n")), "1F - 03 04");
}

TEST(MemheaderReader, NamesAndValuesMayHaveAnyLetterCase) {
    EXPECT_EQ(mem_words("#FORMAT=hex\n#depth=1\n#WIDTH=4\n#DATA\nA\n"), "A");
}

TEST(MemheaderReader, TheCallerMaySayDepthAndWidth) {
    read_options options;
    options.width = 12;
    options.depth = 2;
    EXPECT_EQ(mem_words("#Format=Hex\n#Data\n1\n", options), "001 -");
    EXPECT_EQ(mem_words(mem_of("Hex", "1\n"), options), "001 -");
}

TEST(MemheaderReader, AValueThatIsNotPossibleIsBroken) {
    EXPECT_THAT(
        mem_found("#Format=Oct\n#Depth=0\n#Width=1048577\n#AddrRadix=4\n#DataRadix=x\n#Data\n0\n"),
        ElementsAre(
            "memheader-setting 1:1+11: #Format=Oct is not valid / write Bin, Hex or AddrHex",
            "memheader-setting 2:1+8: #Depth=0 is not valid / write a decimal number from 1 to 4294967296",
            "memheader-setting 3:1+14: #Width=1048577 is not valid / write a decimal number from 1 to "
            "1048576",
            "memheader-setting 4:1+12: #AddrRadix=4 is not valid / write 0 (binary), 1 (octal), 2 (decimal) "
            "or 3 (hexadecimal)",
            "memheader-setting 5:1+12: #DataRadix=x is not valid / write 0 (binary), 1 (octal), 2 (decimal) "
            "or 3 (hexadecimal)"));
    EXPECT_THAT(mem_found("#Format=Hex\n#Depth=\n#Width=99999999999999999999\n#Data\n0\n"),
                ElementsAre(StartsWith("memheader-setting 2:1+7: #Depth= is"),
                            StartsWith("memheader-setting 3:1+27: #Width=99999999999999999999 is")));
}

TEST(MemheaderReader, ASecondSettingIsBroken) {
    EXPECT_THAT(mem_found("#Format=Bin\n" + mem_of("Hex", "0\n")),
                ElementsAre("memheader-again 2:1+11: there is a second #Format / remove one of the two",
                            StartsWith("memheader-radix")));
}

TEST(MemheaderReader, MissingLinesAreBroken) {
    EXPECT_THAT(
        mem_found("#Title=a\n"),
        ElementsAre("memheader-unknown 1:1+8: #Title is not a known setting / it is ignored",
                    "memheader-missing 0:0+0: there is no line #Format / write #Format=Hex if the "
                    "words are hexadecimal",
                    "memheader-missing 0:0+0: there is no line #Depth / write #Depth= and the number "
                    "of words",
                    "memheader-missing 0:0+0: there is no line #Width / write #Width= and the bits of "
                    "a word",
                    "memheader-missing 0:0+0: there is no line #Data / write it before the words"));
}

TEST(MemheaderReader, ASettingThatIsNotKnownIsSuspect) {
    EXPECT_EQ(mem_words("#Maker=none\n" + mem_of("Hex", "0 1 2 3\n")), "00 01 02 03");
}

TEST(MemheaderReader, LinesOnTheWrongSideOfDataAreBroken) {
    EXPECT_THAT(mem_found("#Format=Hex\n#Depth=2\n#Width=8\n00\n#Data\n0\n#Depth=9\n"),
                ElementsAre("memheader-stray 4:1+2: '00' does not belong before #Data / write settings "
                            "before #Data and words after it",
                            "memheader-stray 7:1+8: '#Depth=9' does not belong after #Data / write settings "
                            "before #Data and words after it"));
}

TEST(MemheaderReader, ARowWithoutAddressIsBroken) {
    EXPECT_THAT(mem_found(mem_of("AddrHex", "0:1\n2\n")),
                ElementsAre("memheader-address 8:1+1: '2' is not an address with a ':' / write a row of "
                            "#Format=AddrHex as a hexadecimal address, ':' and its word"));
}

TEST(MemheaderReader, ARadixThatTheDigitsDoNotHaveIsSuspect) {
    const std::string contents =
        "#Format=AddrHex\n#Depth=2\n#Width=8\n#AddrRadix=2\n#DataRadix=0\n#Data\n1:10\n";
    EXPECT_THAT(mem_found(contents),
                ElementsAre("memheader-radix 4:12+1: #AddrRadix=2 means decimal, but #Format=AddrHex has "
                            "hexadecimal digits / the digits are read as hexadecimal",
                            "memheader-radix 5:12+1: #DataRadix=0 means binary, but #Format=AddrHex has "
                            "hexadecimal digits / the digits are read as hexadecimal"));
    EXPECT_EQ(mem_words(contents), "- 10");
    EXPECT_THAT(mem_found("#Format=Hex\n#Depth=1\n#Width=8\n#AddrRadix=2\n#DataRadix=3\n#Data\n1\n"),
                IsEmpty());
}

TEST(MemheaderReader, AnOctalRadixIsNone) {
    EXPECT_THAT(mem_found("#Format=Bin\n#Depth=1\n#Width=1\n#DataRadix=1\n#Data\n1\n"),
                ElementsAre("memheader-radix 4:12+1: #DataRadix=1 means octal, but #Format=Bin has binary "
                            "digits / the digits are read as binary"));
}

TEST(MemheaderReader, WordsThatDoNotFitAreBroken) {
    EXPECT_THAT(
        mem_found(mem_of("Hex", "100 0 1 2 3\n")),
        ElementsAre("too-wide 7:1+3: value 100 needs 9 bits, the words have 8 / needs #Width 9",
                    "beyond-depth 7:11+1: address 4 is beyond the depth 4 (0 to 3) / needs DEPTH 5 or "
                    "more"));
    EXPECT_THAT(mem_found(mem_of("AddrHex", "FFFFFFFFFFFFFFFF:1\n")),
                ElementsAre(StartsWith("address-outside 7:18+1")));
}

TEST(MemheaderReader, CharactersThatAreNoDigitsAreBroken) {
    EXPECT_THAT(mem_found(mem_of("Bin", "0120\n")),
                ElementsAre("bad-digit 7:1+4: '2' in 0120 is not a valid binary digit"));
}

TEST(MemheaderReader, GoesOnAfterFaultsWhenItIsTo) {
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(mem_words(mem_of("Hex", "0 x 2\n"), options), "00 - 02 -");
    EXPECT_EQ(mem_words(mem_of("AddrHex", "x:1\n3:2\n"), options), "- - - 02");
}

TEST(MemheaderReader, SaysWhatTheFileSaysOfItself) {
    const read_result result = kvrimage_tests::read_as(memheader_format, mem_of("Bin", "0 1 0 1\n"));
    EXPECT_EQ(result.facts.data_radix, radix::bin);
    EXPECT_EQ(result.facts.address_radix, radix::hex);
    EXPECT_EQ(result.facts.width_source, "");
    EXPECT_THAT(result.diagnostics, IsEmpty());
}

} // namespace
