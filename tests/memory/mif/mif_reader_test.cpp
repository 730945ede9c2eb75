#include "kvr/memory/memory_file.h"
#include "kvr/memory/mif/mif_reader.h"
#include "tests/memory/io/failing_file.h"
#include "tests/memory/memory_fixture.h"

#include <deque>
#include <random>
#include <vector>

namespace {

using strings = std::vector<std::string>;

class MifReader : public kvr_test::memory_fixture {
protected:
    MifReader() : memory_fixture(FILE_TYPE_MIF) {}

    /// Reads content lines of a memory of @p depth words with hexadecimal addresses and data.
    bool read_content(const std::string& content, unsigned depth = 8) {
        return read("WIDTH=8;\nDEPTH=" + std::to_string(depth) + ";\nCONTENT BEGIN\n" + content + "END;\n");
    }
    std::deque<std::string> header_comments(int slot) {
        std::deque<std::string> comments;
        file.get_comment_deque(slot, &comments);
        return comments;
    }
    std::deque<std::string> data_comments() {
        std::deque<std::string> comments;
        file.get_data_comments(&comments);
        return comments;
    }
    void expect_failure(const std::string& text, KVR_ERROR_STATES state, int line, const strings& messages) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(read(text));
        EXPECT_EQ(file.get_error_state(), state);
        EXPECT_EQ(file.get_invalid_line_number(), line);
        EXPECT_TRUE(file.get_error_occurred());
        EXPECT_FALSE(file.get_file_not_found());
        EXPECT_EQ(errors(), messages);
    }
    /// The message for an invalid content line.
    [[nodiscard]] std::string invalid(const std::string& text) const {
        return "Invalid line found in memory file.  Invalid line -- " + text + " -- found in file " + path;
    }
};

// --- the header ---

TEST_F(MifReader, AWholeFileIsRead) {
    ASSERT_TRUE(read("WIDTH=12;\nDEPTH=4;\nADDRESS_RADIX=UNS;\nDATA_RADIX=OCT;\n\nCONTENT\nBEGIN\n"
                     "0 : 17;\n[1..2] : 7 x;\n3 : 0;\nEND;\n"));
    EXPECT_EQ(file.get_word_size(), 12U);
    EXPECT_EQ(file.get_number_of_words(), 4U);
    EXPECT_EQ(file.get_address_radix(), RADIX_UNS);
    EXPECT_EQ(file.get_memory_radix(), RADIX_OCT);
    EXPECT_EQ(words(0, 3), (strings{"17", "7", "X", "0"}));
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_EQ(file.get_invalid_line_number(), 0);
    EXPECT_EQ(errors(), strings{});
}

TEST_F(MifReader, BlanksLetterCaseAndACommentInAHeaderLineDoNotMatter) {
    ASSERT_TRUE(read("width = 8 ; -- eight bits\n\tDepth\t=\t2;\ncontent begin\n end;\n"));
    EXPECT_EQ(file.get_word_size(), 8U);
    EXPECT_EQ(file.get_number_of_words(), 2U);
    EXPECT_EQ(data_comments(), std::deque<std::string>{"-- eight bits"});
}

TEST_F(MifReader, TheLatestCommentComesFirst) {
    ASSERT_TRUE(
        read("-- first\nWIDTH=8; -- second\nDEPTH=2;\nCONTENT BEGIN\n0:1; --third -- dashes\nEND;\n"));
    EXPECT_EQ(data_comments(), (std::deque<std::string>{"--third -- dashes", "-- second", "-- first"}));
}

TEST_F(MifReader, ADepthOfZeroIsRefused) {
    expect_failure("WIDTH=8;\nDEPTH = 0;\n", ERROR_STATE_INVALID_DEPTH, 2,
                   {"Depth description in MIF file is of illegal syntax.  Invalid depth description -- "
                    "DEPTH=0; -- found in file " +
                    path});
}

TEST_F(MifReader, AWidthWithoutSemicolonIsRefused) {
    expect_failure("WIDTH=8\n", ERROR_STATE_INVALID_WIDTH, 1,
                   {"Width description in MIF file is of illegal syntax.  Invalid width description -- "
                    "WIDTH=8 -- found in file " +
                    path});
}

TEST_F(MifReader, AWidthNeedsANumberBeforeItsSemicolon) {
    for (const char* line : {"width = ;", "WIDTH;8", ";WIDTH=8", "WIDTH=-", "WIDTH=0;", "WIDTH=2147483648;",
                             "WIDTH=99999999999999999999;"}) {
        KVR_MEMORY_FILE memory;
        memory.set_file_type(FILE_TYPE_MIF);
        memory.set_file_name(path);
        kvr_test::write_content(path, std::string(line) + "\nDEPTH=4;\nCONTENT BEGIN\nEND;\n");
        EXPECT_FALSE(memory.read_file()) << line;
        EXPECT_EQ(memory.get_error_state(), ERROR_STATE_INVALID_WIDTH) << line;
        EXPECT_EQ(memory.get_invalid_line_number(), 1) << line;
    }
}

TEST_F(MifReader, TheEqualsSignOfAWidthIsNotTested) {
    ASSERT_TRUE(read("the WIDTH is 12 bits;\nDEPTH=1;\nCONTENT BEGIN\nEND;\n"));
    EXPECT_EQ(file.get_word_size(), 12U);
}

TEST_F(MifReader, TheLargestDepthIsRead) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=2147483647;\nCONTENT BEGIN\n7FFFFFFE : 5A;\nEND;\n"));
    EXPECT_EQ(file.get_number_of_words(), 2147483647U);
    EXPECT_EQ(word(2147483646U), "5A");
}

TEST_F(MifReader, ADepthBeyond31BitsIsRefused) {
    expect_failure("WIDTH=8;\nDEPTH=2147483648;\n", ERROR_STATE_INVALID_DEPTH, 2,
                   {"Depth description in MIF file is of illegal syntax.  Invalid depth description -- "
                    "DEPTH=2147483648; -- found in file " +
                    path});
}

TEST_F(MifReader, AnAddressRadixWithoutSemicolonIsRefused) {
    expect_failure("address_radix = hex\n", ERROR_STATE_INVALID_ADDRESS_RADIX, 1,
                   {"Address radix description in MIF file is of illegal syntax.  Invalid address radix "
                    "description -- ADDRESS_RADIX=HEX -- found in file " +
                    path});
}

TEST_F(MifReader, ADataRadixWithoutSemicolonIsRefused) {
    expect_failure("DATA_RADIX=;HEX\n", ERROR_STATE_INVALID_DATA_RADIX, 1,
                   {"Memory radix description in MIF file is of illegal syntax.  Invalid memory radix "
                    "description -- DATA_RADIX=;HEX -- found in file -- " +
                    path});
}

TEST_F(MifReader, EveryRadixNameIsKnown) {
    const std::vector<std::pair<std::string, KVR_MEMORY_RADIXES>> names = {
        {"BIN", RADIX_BIN}, {"DEC", RADIX_DEC}, {"UNS", RADIX_UNS}, {"HEX", RADIX_HEX}, {"OCT", RADIX_OCT}};
    for (const auto& [name, radix] : names) {
        ASSERT_TRUE(read("WIDTH=8;\nDEPTH=1;\nADDRESS_RADIX=" + name + ";\nDATA_RADIX = " + name +
                         ";\nCONTENT BEGIN\nEND;\n"));
        EXPECT_EQ(file.get_address_radix(), radix) << name;
        EXPECT_EQ(file.get_memory_radix(), radix) << name;
    }
}

TEST_F(MifReader, AnUnknownRadixNameIsNotRefusedAndBlocksAWrite) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=XYZ;\nCONTENT BEGIN\n10:5;\nEND;\n") == false);
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=XYZ;\nCONTENT BEGIN\n3:5;\nEND;\n"));
    EXPECT_EQ(file.get_address_radix(), RADIX_NONE);
    EXPECT_EQ(word(3), "5");
    EXPECT_FALSE(file.can_proceed_with_write());
}

TEST_F(MifReader, TheFirstRadixNameOfTheTableThatOccursIsTaken) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=1;\nDATA_RADIX=HEX; or BIN\nCONTENT BEGIN\nEND;\n") == false);
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_DATA_RADIX);
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=1;\nDATA_RADIX=HEXBIN;\nCONTENT BEGIN\nEND;\n"));
    EXPECT_EQ(file.get_memory_radix(), RADIX_BIN);
}

TEST_F(MifReader, OneLineCanSetBothRadixes) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=1;\nADDRESS_RADIX=DATA_RADIX=OCT;\nCONTENT BEGIN\nEND;\n"));
    EXPECT_EQ(file.get_address_radix(), RADIX_OCT);
    EXPECT_EQ(file.get_memory_radix(), RADIX_OCT);
}

TEST_F(MifReader, WithoutRadixLinesBothAreHexadecimal) {
    ASSERT_TRUE(read_content("7 : A;\n"));
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX);
    EXPECT_EQ(file.get_memory_radix(), RADIX_HEX);
}

TEST_F(MifReader, WidthAndDepthOnOneLineSetTheWidthTwiceAndLeaveTheDepthUnseen) {
    expect_failure("WIDTH=8;DEPTH=16;\nCONTENT BEGIN\nEND;\n", ERROR_STATE_NONE, 4, {});
    EXPECT_EQ(file.get_word_size(), 8U);
    EXPECT_EQ(file.get_number_of_words(), 0U);
    EXPECT_EQ(header_comments(2), (std::deque<std::string>{"CONTENT BEGIN", "END;"}));
}

TEST_F(MifReader, ADepthLineAfterSuchALineIsStillRead) {
    ASSERT_TRUE(read("WIDTH=8;DEPTH=16;\nDEPTH=4;\nCONTENT BEGIN\nEND;\n"));
    EXPECT_EQ(file.get_number_of_words(), 4U);
}

TEST_F(MifReader, OfALineWithSeveralKeywordsOnlyTheLastDecidesWhetherItIsReadOn) {
    ASSERT_TRUE(read("WIDTH=x ADDRESS_RADIX=UNS;\nDEPTH=4;\nCONTENT BEGIN\n3 : 1;\nEND;\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_WIDTH);
    EXPECT_EQ(errors(),
              strings{"Width description in MIF file is of illegal syntax.  Invalid width description -- "
                      "WIDTH=XADDRESS_RADIX=UNS; -- found in file " +
                      path});
    EXPECT_EQ(file.get_address_radix(), RADIX_UNS);
    EXPECT_EQ(word(3), "1");
}

TEST_F(MifReader, HeaderLinesThatAreNoKeywordsAreKeptByTheirPlace) {
    ASSERT_TRUE(read("  Title line -- with comment\nWIDTH=8;\nafter Width\nDEPTH=2;\nafter depth\n\n"
                     "ADDRESS_RADIX=HEX;\nafter address\nDATA_RADIX=HEX;\nafter data\nWIDTH=9;\n"
                     "CONTENT BEGIN\nEND;\nafter\n-- only a comment\n  last\n"));
    EXPECT_EQ(header_comments(0), std::deque<std::string>{"  Title line -- with comment"});
    EXPECT_EQ(header_comments(1), std::deque<std::string>{"after Width"});
    EXPECT_EQ(header_comments(2), std::deque<std::string>{"after depth"});
    EXPECT_EQ(header_comments(3), std::deque<std::string>{"after address"});
    EXPECT_EQ(header_comments(4), (std::deque<std::string>{"after data", "WIDTH=9;"}));
    EXPECT_EQ(header_comments(5), (std::deque<std::string>{"after", "  last"}));
    EXPECT_EQ(file.get_word_size(), 8U);
}

TEST_F(MifReader, LinesAfterEndGoToTheLastHeaderCommentList) {
    ASSERT_TRUE(read_content("") && read_content("END;\nmore\n"));
    EXPECT_EQ(header_comments(5), (std::deque<std::string>{"more", "END;"}));
}

TEST_F(MifReader, AContentLineBeforeTheDepthIsAHeaderComment) {
    expect_failure("WIDTH=8;\nCONTENT BEGIN\nDEPTH=2;\nEND;\n", ERROR_STATE_NONE, 5, {});
    EXPECT_EQ(header_comments(1), std::deque<std::string>{"CONTENT BEGIN"});
    EXPECT_EQ(file.get_memory_radix(), RADIX_HEX);
}

TEST_F(MifReader, ARadixLineAfterAContentLineComesTooLate) {
    ASSERT_TRUE(read("WIDTH=8;\nCONTENT first\nDATA_RADIX=BIN;\nDEPTH=2;\nCONTENT BEGIN\nEND;\n"));
    EXPECT_EQ(file.get_memory_radix(), RADIX_HEX);
    EXPECT_EQ(header_comments(1), (std::deque<std::string>{"CONTENT first", "DATA_RADIX=BIN;"}));
}

TEST_F(MifReader, AKeywordFailureOnTheContentLineIsFoundAtTheEnd) {
    EXPECT_FALSE(read("WIDTH=8;\nDEPTH=2;\nDATA_RADIX=HEX CONTENT BEGIN\n0:1;\nEND;\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_DATA_RADIX);
    EXPECT_EQ(file.get_invalid_line_number(), 6);
    EXPECT_EQ(word(0), "1");
}

TEST_F(MifReader, AWidthFailureOnTheContentLineIsFoundAtTheEnd) {
    file.set_number_of_words(1);
    EXPECT_FALSE(read("DEPTH=2;\nWIDTH=0; CONTENT BEGIN\n0:5;\nEND;\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_WIDTH);
    EXPECT_EQ(file.get_invalid_line_number(), 5);
    EXPECT_EQ(word(0), "5");
}

TEST_F(MifReader, ADepthFailureOnTheContentLineEndsTheRead) {
    file.set_number_of_words(1);
    EXPECT_FALSE(read("WIDTH=8;\nDEPTH=0; CONTENT BEGIN\n0:5;\nEND;\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_DEPTH);
    EXPECT_EQ(file.get_invalid_line_number(), 2);
    EXPECT_EQ(word(0), "0");
}

TEST_F(MifReader, AHeaderCommentForgivesAKeywordFailureOnTheContentLine) {
    EXPECT_TRUE(read("WIDTH=8;\nDEPTH=2;\nDATA_RADIX=HEX CONTENT BEGIN\n0:1;\nEND;\nafter\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_DATA_RADIX);
    EXPECT_EQ(errors().size(), 1U);
}

TEST(MifReaderComments, OneMoreThanTheLinesOfAListIsCounted) {
    kvr::mif_memory memory(nullptr);
    kvr::line_source source("WIDTH=8;\none\ntwo\nDEPTH=1;\nCONTENT BEGIN\nEND;\n",
                            kvr::mif_reader::source_limit);
    ASSERT_TRUE(kvr::mif_reader(memory).read(source));
    EXPECT_EQ(memory.header_comments[1].lines.size(), 2U);
    EXPECT_EQ(memory.header_comments[1].count, 2U);
}

// --- ends of file ---

#if defined(__GLIBC__)

TEST(MifReaderOfAFileThatFails, EndsTheReadAsIfTheFileCouldNotBeOpened) {
    const std::string header = "WIDTH=8;\nDEPTH=2;\n";
    const std::string comments(kvr::line_source::block_size, '\n'); // until the next block is read
    for (const std::string& content : {header + "DEP", header + "CONTENT BEGIN\n0 : 1;\n1 :",
                                       header + "CONTENT BEGIN\n0 : 1;\n" + comments + "1 : 2"}) {
        SCOPED_TRACE(content.substr(0, 50));
        KVR_MEMORY_FILE owner;
        kvr::mif_memory memory(&owner);
        kvr::failing_file file{.content = content, .error_at = content.size()};
        kvr::line_source source(file.open(), kvr::mif_reader::source_limit);
        EXPECT_FALSE(kvr::mif_reader(memory).read(source));
        EXPECT_TRUE(source.failed());
        EXPECT_TRUE(memory.file_not_found);
        EXPECT_EQ(memory.error_state, ERROR_STATE_NONE);
        EXPECT_FALSE(memory.error_occurred);
        EXPECT_EQ(memory.invalid_line_number, 0);
        EXPECT_EQ(kvr_test::error_messages(owner).size(), 1U);
    }
}

#endif

TEST_F(MifReader, AnEmptyFileFailsWithoutMessage) {
    expect_failure("", ERROR_STATE_NONE, 1, {});
}

TEST_F(MifReader, AFileWithoutEndFailsWithoutMessage) {
    expect_failure("WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0:1;\n", ERROR_STATE_NONE, 5, {});
    EXPECT_EQ(word(0), "1");
}

TEST_F(MifReader, ALastLineWithoutNewlineIsRead) {
    EXPECT_TRUE(read("WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0:1;\nEND;"));
    EXPECT_TRUE(read("WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0:1;\nEND"));
}

TEST_F(MifReader, CarriageReturnsBeforeNewlinesAreNotPartOfTheLine) {
    ASSERT_TRUE(
        read("title\r\nWIDTH=8;\r\nDEPTH=2;\r\nCONTENT BEGIN\r\n0 : AB; --note\r\n1 : CD;\r\nEND;\r\n"));
    EXPECT_EQ(words(0, 1), (strings{"AB", "CD"}));
    EXPECT_EQ(header_comments(0), std::deque<std::string>{"title"});
    EXPECT_EQ(data_comments(), std::deque<std::string>{"--note"});
}

// --- the content section ---

TEST_F(MifReader, BeginMayStandOnALaterLine) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=2;\nCONTENT\nanything : 5;\n\n  begin\n1:7;\nEND;\n"));
    EXPECT_EQ(words(0, 1), (strings{"0", "7"}));
}

TEST_F(MifReader, EndBeforeBeginIsAnInvalidLine) {
    expect_failure("WIDTH=8;\nDEPTH=2;\nCONTENT\nEnd;\n", ERROR_STATE_INVALID_LINE, 4, {invalid("END;")});
}

TEST_F(MifReader, ValuesOfARangeAreRepeated) {
    ASSERT_TRUE(read_content("[0..7] : 1 2;\n"));
    EXPECT_EQ(words(0, 7), (strings{"1", "2", "1", "2", "1", "2", "1", "2"}));
}

TEST_F(MifReader, SurplusValuesOfARangeAreIgnored) {
    ASSERT_TRUE(read_content("[0..1] : 1 2 3;\n"));
    EXPECT_EQ(words(0, 2), (strings{"1", "2", "0"}));
}

TEST_F(MifReader, ARangeOfOneAddressIsRefused) {
    EXPECT_FALSE(read_content("[3..3] : 1;\n"));
    EXPECT_EQ(errors(), strings{invalid("[3..3] : 1;")});
    EXPECT_EQ(file.get_invalid_line_number(), 4);
}

TEST_F(MifReader, ARangeBeyondTheDepthIsRefused) {
    EXPECT_FALSE(read_content("[0..8] : 1;\n"));
    EXPECT_EQ(errors(), strings{invalid("[0..8] : 1;")});
    EXPECT_EQ(word(0), "0");
}

TEST_F(MifReader, SeveralValuesAfterASingleAddressGoToTheNextAddresses) {
    ASSERT_TRUE(read_content("2 : A B C;\n"));
    EXPECT_EQ(words(1, 5), (strings{"0", "A", "B", "C", "0"}));
}

TEST_F(MifReader, ASingleAddressSetTwiceIsRefused) {
    EXPECT_FALSE(read_content("2 : 5;\n2 : 5;\n"));
    EXPECT_EQ(errors(), strings{invalid("2 : 5;")});
    EXPECT_EQ(file.get_invalid_line_number(), 5);
}

TEST_F(MifReader, ARepeatedAddressWithSeveralValuesIsAccepted) {
    ASSERT_TRUE(read_content("2 : 5;\n2 : 6 7;\n[1..2] : 8;\n2 : 1 2;\n3 : 9;\n"));
    EXPECT_EQ(words(1, 3), (strings{"8", "1", "9"}));
}

TEST_F(MifReader, ANewReadForgetsWhichAddressesWereSet) {
    EXPECT_TRUE(read_content("2 : 5;\n"));
    EXPECT_TRUE(read_content("2 : 6;\n"));
    EXPECT_EQ(word(2), "6");
}

TEST_F(MifReader, AValueRunningBeyondTheDepthIsRefusedAndStoresNothing) {
    EXPECT_FALSE(read_content("6 : 1 2 3;\n"));
    EXPECT_EQ(words(6, 7), (strings{"0", "0"}));
}

TEST_F(MifReader, AContentLineOverSeveralLinesCountsAsOne) {
    EXPECT_FALSE(read_content("0\n:\n1\n 2\n;\nbad;\n"));
    EXPECT_EQ(words(0, 1), (strings{"1", "2"}));
    EXPECT_EQ(file.get_invalid_line_number(), 5);
    EXPECT_EQ(errors(), strings{invalid("BAD;")});
}

TEST_F(MifReader, LinesThatAreJoinedStandSideBySide) {
    ASSERT_TRUE(read_content("0 : 1\n2;\n"));
    EXPECT_EQ(words(0, 1), (strings{"12", "0"}));
}

TEST_F(MifReader, TheInvalidLineIsQuotedWithItsContinuationLines) {
    EXPECT_FALSE(read_content("  9 -- no comment\n : a % cut\n b;\n"));
    EXPECT_EQ(errors(), strings{invalid("  9  : A  B;")});
    EXPECT_EQ(file.get_invalid_line_number(), 4);
}

TEST_F(MifReader, ADoubleDashThatJoiningMakesCutsTheValuesButNotTheirNumber) {
    ASSERT_TRUE(read_content("0 : 1 2-\n-3 4;\n"));
    EXPECT_EQ(words(0, 3), (strings{"1", "2", "1", "0"}));
}

TEST_F(MifReader, TextAfterTheFirstSemicolonBelongsToTheLine) {
    ASSERT_TRUE(read_content("0 : 1; 1 : 2;\n"));
    EXPECT_EQ(words(0, 3), (strings{"1", "1", "2", "0"}));
}

TEST_F(MifReader, AnythingOutsideTheAlphabetSeparatesValues) {
    ASSERT_TRUE(read_content("0 : 1,2\t3 / 4\x01;\n"));
    EXPECT_EQ(words(0, 3), (strings{"1", "2", "3", "4"}));
}

TEST_F(MifReader, ValuesAreStoredUpperCasedAndUnchecked) {
    ASSERT_TRUE(read("WIDTH=4;\nDEPTH=4;\nDATA_RADIX=BIN;\nCONTENT BEGIN\n0:abcdef;1:1\n3:-xu;\nEND;\n"));
    EXPECT_EQ(words(0, 3), (strings{"ABCDEF", "1", "1", "-XU"}));
}

TEST_F(MifReader, PercentCutsALineAndIsNotMatched) {
    ASSERT_TRUE(read_content("% a comment % 0 : 1;\n1 : 2; % 3\n% block begins\n2 : 3;\n 3 %\n : 4;\n"));
    EXPECT_EQ(words(0, 3), (strings{"0", "2", "3", "4"}));
}

TEST_F(MifReader, AnyTextWithEndEndsTheContent) {
    ASSERT_TRUE(read_content("0 : 1;\nsend 5;\n1 : 2;\n"));
    EXPECT_EQ(words(0, 1), (strings{"1", "0"}));
    EXPECT_EQ(header_comments(5), (std::deque<std::string>{"1 : 2;", "END;"}));
}

TEST_F(MifReader, AddressesAreReadInTheirRadix) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=20;\nADDRESS_RADIX=OCT;\nCONTENT BEGIN\n17 : A;\n10 : B;\nEND;\n"));
    EXPECT_EQ(word(15), "A");
    EXPECT_EQ(word(8), "B");
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=20;\nADDRESS_RADIX=DEC;\nCONTENT BEGIN\n17 : A;\n12AB : C;\nEND;\n"));
    EXPECT_EQ(word(17), "A");
    EXPECT_EQ(word(12), "C");
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=20;\nADDRESS_RADIX=BIN;\nCONTENT BEGIN\n101 : A;\n1102 : D;\nEND;\n"));
    EXPECT_EQ(word(5), "A");
    EXPECT_EQ(word(6), "D");
}

TEST_F(MifReader, AnAddressMayCarryAHexadecimalPrefixOrBeNegativeZero) {
    ASSERT_TRUE(read_content("0x5 : 1;\n-0 : 2;\nx : 3 4;\n"));
    EXPECT_EQ(words(0, 1), (strings{"3", "4"}));
    EXPECT_EQ(word(5), "1");
}

TEST_F(MifReader, AnAddressBeyondTheDepthOr32BitsIsRefused) {
    for (const char* address : {"8", "FFFFFFFF", "100000000", "100000001", "-1", "-FFFFFFFF",
                                "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF1"}) {
        KVR_MEMORY_FILE memory;
        memory.set_file_type(FILE_TYPE_MIF);
        memory.set_file_name(path);
        kvr_test::write_content(path, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n" + std::string(address) +
                                          " : 1;\nEND;\n");
        EXPECT_FALSE(memory.read_file()) << address;
        EXPECT_EQ(memory.get_error_state(), ERROR_STATE_INVALID_LINE) << address;
        EXPECT_EQ(kvr_test::error_messages(memory), strings{invalid(std::string(address) + " : 1;")})
            << address;
    }
}

TEST_F(MifReader, AContentLineNeedsAddressColonAndValueInThisOrder) {
    for (const char* line : {": 1;", "5;", "5 :;", "5 : ;", "z : 1;", ": 5 : ;", "5 6 7;", ";", "5 ; : ;"}) {
        KVR_MEMORY_FILE memory;
        memory.set_file_type(FILE_TYPE_MIF);
        memory.set_file_name(path);
        kvr_test::write_content(path, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n" + std::string(line) + "\nEND;\n");
        EXPECT_FALSE(memory.read_file()) << line;
        EXPECT_EQ(memory.get_invalid_line_number(), 4) << line;
    }
}

TEST_F(MifReader, OneDotOrManyMakeARange) {
    ASSERT_TRUE(read_content("[0.3] : 1;\n[4...7] : 2;\n[ 0 .. 1 ] : 3;\nx[2 . . 3]:4;\n") == false);
    ASSERT_TRUE(read_content("[0.3] : 1;\n[4...7] : 2;\n[ 0 .. 1 ] : 3;\nz[2 . . 3]:4;\n"));
    EXPECT_EQ(words(0, 7), (strings{"3", "3", "4", "4", "2", "2", "2", "2"}));
}

TEST_F(MifReader, ARangeNeedsItsPartsInOrder) {
    for (const char* line :
         {"0..7] [: 1;", "[0-7] : 1;", "[0 - 7] : 1;", "[0..7 : 1;", "[0..] : 1;", "[..7] : 1;", "[0..7] 1;",
          "[0..7] : ;", "[0..7 : ] 1;", "] [0..7] : 1;", ": [0..7] 1;", "[7..0] : 1;", "[5..5] : 1;",
          "[0..8] : 1;", "[8..9] : 1;", "[-1..5] : 1;", "[;"}) {
        KVR_MEMORY_FILE memory;
        memory.set_file_type(FILE_TYPE_MIF);
        memory.set_file_name(path);
        kvr_test::write_content(path, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n" + std::string(line) + "\nEND;\n");
        EXPECT_FALSE(memory.read_file()) << line;
        EXPECT_EQ(memory.get_invalid_line_number(), 4) << line;
        EXPECT_EQ(kvr_test::stored_words(memory, 0, 7), strings(8, "0")) << line;
    }
}

TEST_F(MifReader, WordsStoredBeforeTheInvalidLineStay) {
    EXPECT_FALSE(read_content("0 : 1;\n1 : 2;\nnonsense;\n2 : 3;\n"));
    EXPECT_EQ(words(0, 2), (strings{"1", "2", "0"}));
}

TEST_F(MifReader, ALaterReadKeepsCommentsAndWordsThatItDoesNotSet) {
    ASSERT_TRUE(read_content("0 : 1; -- one\n5 : 2;\n"));
    ASSERT_TRUE(read_content("0 : 3; -- two\n"));
    EXPECT_EQ(words(0, 5), (strings{"3", "0", "0", "0", "0", "2"}));
    EXPECT_EQ(data_comments(), (std::deque<std::string>{"-- two", "-- one"}));
}

TEST_F(MifReader, WordsNeverSetHoldTheInitializeValue) {
    file.set_memory_initialize_value("EE");
    ASSERT_TRUE(read_content("1 : 2;\n"));
    EXPECT_EQ(words(0, 2), (strings{"EE", "2", "EE"}));
}

TEST_F(MifReader, AnErrorStateOutlivesAReadThatSucceeds) {
    EXPECT_FALSE(read_content("bad;\n"));
    EXPECT_TRUE(read_content("0 : 1;\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_EQ(file.get_invalid_line_number(), 0);
}

// --- long lines ---

TEST_F(MifReader, ALineOf511CharactersIsRead) {
    const std::string comment = "--" + std::string(509, 'c');
    ASSERT_TRUE(read_content(comment + "\n0 : 1;" + std::string(505, ' ') + "\r\n1 : 2;\n"));
    EXPECT_EQ(words(0, 1), (strings{"1", "2"}));
    EXPECT_EQ(data_comments(), std::deque<std::string>{comment});
}

TEST_F(MifReader, ALongerHeaderLineIsInvalidAlsoWhenItIsAComment) {
    const std::string comment = "--" + std::string(510, 'c');
    expect_failure("WIDTH=8;\nab c" + comment + "\nDEPTH=2;\n", ERROR_STATE_INVALID_LINE, 2,
                   {invalid("ABC")});
    EXPECT_EQ(data_comments(), std::deque<std::string>{"--" + std::string(505, 'c')});
}

TEST_F(MifReader, ALongerContentLineIsInvalid) {
    const std::string line = "0 : a" + std::string(510, '1') + ";";
    EXPECT_FALSE(read_content("1 : 2;\n" + line + "\n"));
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_EQ(file.get_invalid_line_number(), 5);
    EXPECT_EQ(errors(), strings{invalid("0 : A" + std::string(506, '1'))});
    EXPECT_EQ(words(0, 1), (strings{"0", "2"}));
}

TEST_F(MifReader, ALongerContinuationLineIsInvalid) {
    EXPECT_FALSE(read_content("0 :\n" + std::string(600, '1') + ";\n"));
    EXPECT_EQ(file.get_invalid_line_number(), 4);
    EXPECT_EQ(errors(), strings{invalid("0 :" + std::string(511, '1'))});
}

TEST_F(MifReader, ALongValueOverManyLinesIsRead) {
    std::string content = "0 : ";
    for (int line = 0; line < 1000; ++line) {
        content += std::string(500, '7') + "\n";
    }
    ASSERT_TRUE(read_content(content + ";\n"));
    EXPECT_EQ(word(0), std::string(500000, '7'));
}

// --- files that cannot be read ---

TEST_F(MifReader, AFolderIsAFileThatCannotBeOpened) {
    file.set_file_name(folder.path("."));
    EXPECT_TRUE(file.can_proceed_with_read());
    EXPECT_FALSE(file.read_file());
    EXPECT_TRUE(file.get_file_not_found());
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_NONE);
    EXPECT_EQ(errors(), strings{"Memory file cannot be opened.  Memory file -- " + folder.path(".") +
                                " --  not found. "});
}

TEST_F(MifReader, AReadForgetsThatTheFileBeforeWasNotFound) {
    file.set_file_name(folder.path("."));
    EXPECT_FALSE(file.read_file());
    file.set_file_name(path);
    EXPECT_TRUE(read_content("0 : 1;\n"));
    EXPECT_FALSE(file.get_file_not_found());
}

TEST_F(MifReader, ABinaryFileFailsWithoutHarm) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string bytes;
        for (int at = 0; at < 3000; ++at) {
            bytes += static_cast<char>(random());
        }
        EXPECT_FALSE(read(bytes));
    }
}

TEST_F(MifReader, EveryTruncationOfAFileIsRefusedOrWhole) {
    const std::string text = "WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n"
                             "[0..2] : 1 2;\n3 : 4;\nEND;\n";
    const std::size_t end = text.find("END") + 3;
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_EQ(read(text.substr(0, length)), length >= end) << length;
    }
}

// --- the fast path and the exact one, and places of faults ---

/// Records the calls and continues after every fault.
class recording_observer : public kvr::mif_observer {
public:
    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        faults.push_back(fault);
        texts.emplace_back(text);
        return true;
    }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) override {
        stretches.push_back({first, last, line});
    }
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const kvr::mif_content& content) override {
        content_lines.emplace_back(std::to_string(content.pieces.front().line) + " " +
                                   std::string(content.text));
    }
    void cut_at_percent(std::string_view rest, std::uint64_t line) override {
        cuts.emplace_back(std::to_string(line) + std::string(rest));
    }

    struct stretch {
        std::uint64_t first;
        std::uint64_t last;
        std::uint64_t line;
    };
    std::vector<kvr::read_fault> faults;
    std::vector<std::string> texts;
    std::vector<stretch> stretches;
    std::vector<std::string> content_lines;
    std::vector<std::string> cuts;
};

std::string random_content_line(std::mt19937& random) {
    static const std::vector<std::string> pieces = {
        "0",  "1",  "2",  "3",   "7",    "A",  "b",  "fF", "x",    "-1", "--",  "-",  " ",
        " ",  " ",  "\t", " : ", ":",    ";",  "; ", ";",  "\r",   "%",  "[",   "..", "]",
        "g!", "0x", "U",  ",",   "\n\n", "\n", "12", "08", "1011", ";;", "EN ", ". "};
    std::string line;
    if (random() % 8 != 0) {
        line = pieces[random() % 8] + " : " + pieces[random() % 8] + (random() % 4 != 0 ? ";" : " ");
    }
    for (std::size_t count = random() % 6; count > 0; --count) {
        line.insert(random() % (line.size() + 1), pieces[random() % pieces.size()]);
    }
    return line + (random() % 10 != 0 ? "\n" : "");
}

TEST_F(MifReader, OrdinaryLinesAreReadAsTheExactRuleReadsThem) {
    std::mt19937 random(42);
    int complete = 0;
    for (int round = 0; round < 20000; ++round) {
        const char* const radix[] = {"BIN", "DEC", "HEX", "OCT"};
        std::string text =
            "WIDTH=8;\nDEPTH=12;\nADDRESS_RADIX=" + std::string(radix[random() % 4]) + ";\nCONTENT BEGIN\n";
        for (std::size_t lines = random() % 5; lines > 0; --lines) {
            text += random_content_line(random);
        }
        text += "END;\n";

        kvr::mif_memory fast(nullptr);
        kvr::mif_memory exact(nullptr);
        kvr::fill_radix_names(fast);
        kvr::fill_radix_names(exact);
        kvr::line_source fast_lines(text, kvr::mif_reader::source_limit);
        kvr::line_source exact_lines(text, kvr::mif_reader::source_limit);
        class stopping_observer : public recording_observer {
            bool fault(const kvr::read_fault&, std::string_view) override { return false; }
        } observer;
        const bool result = kvr::mif_reader(fast).read(fast_lines);
        complete += result ? 1 : 0;
        ASSERT_EQ(result, kvr::mif_reader(exact, &observer).read(exact_lines)) << text;
        ASSERT_EQ(fast.invalid_line_number, exact.invalid_line_number) << text;
        ASSERT_EQ(fast.error_state, exact.error_state) << text;
        ASSERT_EQ(fast.data_comments.size(), exact.data_comments.size()) << text;
        for (std::uint32_t address = 0; address < 12; ++address) {
            ASSERT_EQ(fast.data_words[address], exact.data_words[address]) << text << address;
        }
    }
    EXPECT_GT(complete, 1000);
    EXPECT_LT(complete, 19000);
}

TEST_F(MifReader, AnObserverSeesWhatAPercentCutsOff) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    kvr::line_source lines("% title %\nWIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 :\n 1;% one -- dashes\nEND;\n",
                           kvr::mif_reader::source_limit);
    recording_observer observer;
    EXPECT_TRUE(kvr::mif_reader(memory, &observer).read(lines));
    EXPECT_EQ(observer.cuts, (strings{"1 title %", "6 one -- dashes"}));
}

TEST_F(MifReader, AnObserverSeesEveryFaultWithItsPlace) {
    const std::string text =
        "WIDTH = x;\n DEP TH = 4 ;\nADDRESS_RADIX=HEX\n CONTENT BEGIN\n0 : 1;\n  9 : 2;\n"
        "1 :\n  2 3\n  4 5;\n[2..1] : 1;\n[0..1 : 1;\n  0 : 7;\n2 : 8;\n";
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    kvr::line_source lines(text, kvr::mif_reader::source_limit);
    recording_observer observer;
    EXPECT_FALSE(kvr::mif_reader(memory, &observer).read(lines));
    struct expectation {
        kvr::fault_code code;
        std::uint64_t line;
        std::uint32_t column;
        std::uint32_t length;
    };
    const std::vector<expectation> expected = {
        {kvr::fault_code::width_syntax, 1, 1, 8},         {kvr::fault_code::address_radix_syntax, 3, 1, 17},
        {kvr::fault_code::address_out_of_range, 6, 3, 1}, {kvr::fault_code::address_out_of_range, 7, 1, 1},
        {kvr::fault_code::range_not_ascending, 10, 2, 4}, {kvr::fault_code::range_syntax, 11, 1, 10},
        {kvr::fault_code::address_set_twice, 12, 1, 8},   {kvr::fault_code::missing_end, 14, 0, 0}};
    ASSERT_EQ(observer.faults.size(), expected.size());
    for (std::size_t at = 0; at < expected.size(); ++at) {
        EXPECT_EQ(observer.faults[at].code, expected[at].code) << at;
        EXPECT_EQ(observer.faults[at].line, expected[at].line) << at;
        EXPECT_EQ(observer.faults[at].column, expected[at].column) << at;
        EXPECT_EQ(observer.faults[at].length, expected[at].length) << at;
    }
    EXPECT_EQ(observer.texts[3], "1 :  2 3  4 5;");
    EXPECT_EQ(memory.data_words[0], "1");
    EXPECT_EQ(memory.data_words[2], "8");
    EXPECT_EQ(observer.content_lines, (strings{"5 0 : 1;", "13 2 : 8;"}));
    EXPECT_EQ(observer.stretches.back().first, 2U);
    EXPECT_EQ(observer.stretches.back().line, 13U);
}

TEST_F(MifReader, ContentAfterTheEndIsAComment) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0:1;\nEND;\nCONTENT BEGIN\n0:2;\nEND;\n"));
    EXPECT_EQ(words(0, 1), (strings{"1", "0"}));
    EXPECT_EQ(header_comments(5), (std::deque<std::string>{"CONTENT BEGIN", "0:2;", "END;"}));
}

TEST(MifReaderWithObserver, TextAfterTheEndMayBeIgnored) {
    kvr::mif_memory memory(nullptr);
    kvr::line_source lines("WIDTH=8;\nDEPTH=1;\nCONTENT BEGIN\n0:1;\nEND;\nafter\n",
                           kvr::mif_reader::source_limit);
    recording_observer observer;
    EXPECT_TRUE(kvr::mif_reader(memory, &observer).read(lines));
    EXPECT_TRUE(observer.faults.empty());
    EXPECT_EQ(memory.header_comments[5].lines, std::deque<std::string>{"after"});
}

} // namespace
