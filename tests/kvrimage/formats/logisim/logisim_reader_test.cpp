#include "kvrimage/formats/logisim/logisim_format.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using kvrimage_tests::found_in;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string logisim_words(const std::string& contents, const read_options& options = {}) {
    return kvrimage_tests::words_read(logisim_format, contents, options);
}

read_options of_width(std::uint32_t width) {
    read_options options;
    options.width = width;
    return options;
}

TEST(LogisimReader, ReadsRawWordsAndRuns) {
    EXPECT_EQ(logisim_words("v2.0 raw\n4*0 ff 2*1a\n"), "00 00 00 00 FF 1A 1A");
}

TEST(LogisimReader, ReadsWordsWithAddresses) {
    EXPECT_EQ(logisim_words("v3.0 hex words addressed\n0: 1 2\n4: 3 2*4\n"), "1 2 - - 3 4 4");
}

TEST(LogisimReader, ARunAfterABadAddressHasNone) {
    EXPECT_THAT(found_in(logisim_format, "v3.0 hex words addressed\nz: x*2\n"),
                ElementsAre(HasSubstr("logisim-address 2:1+1"), HasSubstr("logisim-run 2:4+3")));
}

TEST(LogisimReader, ReadsWordsWithoutAddresses) {
    EXPECT_EQ(logisim_words("v3.0 hex words plain\n12 # one\n 3\n"), "12 03");
}

TEST(LogisimReader, ReadsBytesInTheOrderOfTheFirstLine) {
    EXPECT_EQ(logisim_words("v3.0 hex bytes plain little-endian\n12 34 5 6\n", of_width(16)), "3412 0605");
    EXPECT_EQ(logisim_words("v3.0 hex bytes plain big-endian\n12 34 5 6\n", of_width(16)), "1234 0506");
    EXPECT_EQ(logisim_words("v3.0 hex bytes addressed big-endian\n2: 12 34\n", of_width(16)), "- 1234");
    EXPECT_EQ(logisim_words("v3.0 hex bytes addressed little-endian\n2: 12 34\n", of_width(16)), "- 3412");
    EXPECT_EQ(logisim_words("v3.0 hex bytes plain big-endian\n12 34\n"), "12 34");
}

TEST(LogisimReader, TheCallerDecidesTheOrderOfBytes) {
    read_options options = of_width(16);
    options.order = byte_order::little;
    EXPECT_EQ(logisim_words("v3.0 hex bytes plain big-endian\n12 34\n", options), "3412");
}

TEST(LogisimReader, AnotherFirstLineIsBroken) {
    EXPECT_THAT(
        found_in(logisim_format, "v4 raw\n0\n"),
        ElementsAre(
            "logisim-header 1:1+6: 'v4 raw' is not a valid first line of a Logisim file / write v2.0 raw, "
            "v3.0 hex words addressed|plain, or v3.0 hex bytes addressed|plain little-endian|big-endian"));
}

TEST(LogisimReader, ARowWithoutAddressIsBroken) {
    EXPECT_THAT(found_in(logisim_format, "v3.0 hex words addressed\n0: 1\n2 3\nx: 4\n"),
                ElementsAre("logisim-address 3:1+1: '2' is not an address with a ':' / write a row as a "
                            "hexadecimal address, ':' and its words"));
}

TEST(LogisimReader, ARunWithoutCountOrWordIsBroken) {
    EXPECT_THAT(
        found_in(logisim_format, "v2.0 raw\n0*1 2\n"),
        ElementsAre(
            "logisim-run 2:1+3: '0*1' is not a valid run of words / write a decimal count of at least "
            "1, '*' and the word: 16*00"));
    EXPECT_THAT(
        found_in(logisim_format, "v3.0 hex bytes plain big-endian\n2*1 3*1\n"),
        ElementsAre(
            "logisim-run 2:1+3: '2*1' is not a valid run of words / bytes have no runs: write each of "
            "them"));
}

TEST(LogisimReader, ABytesFileHasNoWords) {
    EXPECT_THAT(found_in(logisim_format, "v3.0 hex bytes plain big-endian\n123 45\n"),
                ElementsAre("logisim-byte 2:1+3: '123' is more than a byte / write the first line as v3.0 "
                            "hex words plain if these are words"));
    EXPECT_THAT(found_in(logisim_format, "v3.0 hex bytes addressed big-endian\n0: 123\n1: 4\n"),
                ElementsAre("logisim-byte 2:4+3: '123' is more than a byte / write the first line as v3.0 "
                            "hex words addressed if these are words"));
}

TEST(LogisimReader, CharactersThatAreNoDigitsAreBroken) {
    EXPECT_THAT(found_in(logisim_format, "v2.0 raw\n4*0g 1x\n"),
                ElementsAre("bad-digit 2:3+2: 'g' in 0g is not a valid hexadecimal digit"));
    EXPECT_THAT(found_in(logisim_format, "v3.0 hex bytes plain big-endian\n0 zz\n"),
                ElementsAre("bad-digit 2:3+2: 'z' in zz is not a valid hexadecimal digit"));
}

TEST(LogisimReader, WordsThatAreTooWideAreBroken) {
    EXPECT_THAT(found_in(logisim_format, "v2.0 raw\n1 4*1f\n", of_width(4)),
                ElementsAre("too-wide 2:3+4: value 4*1f needs 5 bits, the words have 4 / needs --width 5"));
}

TEST(LogisimReader, RunsBeyondTheLargestMemoryAreBroken) {
    EXPECT_THAT(found_in(logisim_format, "v2.0 raw\n4294967297*0\n"),
                ElementsAre(testing::StartsWith("address-outside 2:1+12: address 100000000 is beyond")));
    EXPECT_THAT(found_in(logisim_format, "v2.0 raw\n1 99999999999999999999*0 1\n"),
                ElementsAre(testing::StartsWith("address-outside 2:3+22: address of this word is beyond")));
}

TEST(LogisimReader, ARunOfBillionsIsOneFill) {
    const read_result result = kvrimage_tests::read_as(logisim_format, "v2.0 raw\n4294967295*0 1\n");
    EXPECT_EQ(result.image->depth(), std::uint64_t{1} << 32U);
    EXPECT_EQ((*result.image)[0xFFFFFFFF], word::of(1, 4));
}

TEST(LogisimReader, AWordThatIsSetAgainIsSuspect) {
    EXPECT_THAT(
        found_in(logisim_format, "v3.0 hex words addressed\n0: 1 2\n1: 3\n"),
        ElementsAre(
            "word-set-again 3:4+1: address 1 is set twice, with different words / the later value is used"));
}

TEST(LogisimReader, AFileWithoutWordsSaysNoSize) {
    for (const char* contents : {"v2.0 raw\n", "v3.0 hex bytes plain big-endian\n"}) {
        EXPECT_THAT(found_in(logisim_format, contents), ElementsAre(testing::StartsWith("size-unknown")));
        read_options options = of_width(8);
        options.depth = 2;
        EXPECT_EQ(logisim_words(contents, options), "- -");
    }
}

TEST(LogisimReader, GoesOnAfterFaultsWhenItIsTo) {
    read_options options;
    options.keep_going = true;
    EXPECT_EQ(logisim_words("v2.0 raw\n1 x 0*1 2\n", options), "1 - - 2");
    EXPECT_EQ(logisim_words("v3.0 hex words addressed\n1\n2: 3\n", options), "- - 3");
    EXPECT_EQ(logisim_words("v3.0 hex bytes plain big-endian\n1 123\n", options), "01");
}

TEST(LogisimReader, SaysWhatTheFileSaysOfItself) {
    const read_result words = kvrimage_tests::read_as(logisim_format, "v2.0 raw\n# zeros\n0\n");
    EXPECT_TRUE(words.facts.has_comments);
    EXPECT_EQ(words.facts.more.front().value, "v2.0 raw");
    EXPECT_THAT(words.diagnostics, IsEmpty());
    const read_result bytes =
        kvrimage_tests::read_as(logisim_format, "v3.0 hex bytes plain big-endian\n1 2\n", of_width(16));
    EXPECT_EQ(bytes.facts.unit, address_unit::byte);
    EXPECT_EQ(bytes.facts.order, byte_order::big);
}

} // namespace
