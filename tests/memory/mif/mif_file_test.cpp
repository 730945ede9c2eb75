#include "kvr/memory/mif/mif_file.h"
#include "tests/memory/memory_fixture.h"
#include "tests/memory/mif/mif_steps.h"

#include <deque>
#include <vector>

namespace {

using strings = std::vector<std::string>;
using queue = std::deque<std::string>;

class MifFile : public kvr_test::memory_fixture {
protected:
    MifFile() : memory_fixture(FILE_TYPE_MIF) {
        file.set_word_size(8);
        file.set_memory_radix(RADIX_HEX);
        file.set_address_radix(RADIX_HEX);
        file.set_number_of_words(16);
    }
    queue data_comments() {
        queue comments;
        file.get_data_comments(&comments);
        return comments;
    }
};

TEST_F(MifFile, AnAddressBeyondTheWordsIsReported) {
    EXPECT_EQ(file.get_data_word(16, RADIX_HEX), "");
    EXPECT_FALSE(file.set_data_word(17, "1", RADIX_HEX));
    EXPECT_FALSE(file.set_data_word_with_comments(4294967295U, "1", "comment", RADIX_HEX));
    const std::string message =
        "Invalid memory address value. Address value is bigger than the maximum number of "
        "words in the memory. The number of words in the memory is 16 and the specified "
        "address is ";
    EXPECT_EQ(errors(), (strings{message + "16", message + "17", message + "-1"}));
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_EQ(data_comments(), queue{});
}

TEST_F(MifFile, AWordIsConvertedToTheRadixAskedFor) {
    ASSERT_TRUE(file.set_data_word(3, "FF", RADIX_HEX));
    EXPECT_EQ(file.get_data_word(3, RADIX_BIN), "11111111");
    EXPECT_EQ(file.get_data_word(3, RADIX_HEX), "FF");
    EXPECT_EQ(file.get_data_word(3, RADIX_NONE), "FF");
    EXPECT_EQ(file.get_data_word(3, RADIX_UNS), "552");
    EXPECT_EQ(file.get_data_word(3, RADIX_FIXED_POINT), "");
}

TEST_F(MifFile, AValueInTheMemoryRadixIsNormalizedToTheWidth) {
    ASSERT_TRUE(file.set_data_word(0, "a", RADIX_HEX));
    ASSERT_TRUE(file.set_data_word(1, "1ff", RADIX_NONE));
    EXPECT_EQ(words(0, 1), (strings{"0A", "FF"}));
}

TEST_F(MifFile, AValueGivenWithAnotherRadixIsTakenForOneInTheMemoryRadix) {
    ASSERT_TRUE(file.set_data_word(0, "10", RADIX_BIN));
    EXPECT_EQ(word(0), "00010000");
}

TEST_F(MifFile, WithoutMemoryRadixTheFailedConversionIsStored) {
    file.set_memory_radix(RADIX_NONE);
    ASSERT_TRUE(file.set_data_word(0, "12", RADIX_NONE));
    EXPECT_EQ(word(0), "");
    ASSERT_TRUE(file.set_data_word(1, "12", RADIX_BIN));
    EXPECT_EQ(word(1), "00000000");
}

TEST_F(MifFile, ACommentFillsUpTheStoreWithEmptyOnes) {
    file.set_number_of_words(4);
    ASSERT_TRUE(file.set_data_word_with_comments(2, "5", "two", RADIX_HEX));
    EXPECT_EQ(data_comments(), (queue{"", "", "two", "", ""}));
    EXPECT_EQ(word(2), "05");
}

TEST_F(MifFile, ASecondCommentForAnAddressPushesTheOlderOneUp) {
    file.set_number_of_words(2);
    ASSERT_TRUE(file.set_data_word_with_comments(0, "1", "older", RADIX_HEX));
    ASSERT_TRUE(file.set_data_word_with_comments(0, "2", "newer", RADIX_HEX));
    EXPECT_EQ(data_comments(), (queue{"newer", "older", "", ""}));
}

TEST_F(MifFile, ACommentAtTheEndOfAShortStoreIsAppended) {
    queue comments{"a", "b"};
    ASSERT_TRUE(file.set_data_comments(&comments));
    ASSERT_TRUE(file.set_data_word_with_comments(2, "1", "c", RADIX_HEX));
    EXPECT_EQ(data_comments(), (queue{"a", "b", "c"}));
}

TEST_F(MifFile, ACommentBeyondAShortStoreFillsItUpToTheDepth) {
    file.set_number_of_words(5);
    queue comments{"a"};
    ASSERT_TRUE(file.set_data_comments(&comments));
    ASSERT_TRUE(file.set_data_word_with_comments(3, "1", "d", RADIX_HEX));
    EXPECT_EQ(data_comments(), (queue{"a", "", "", "d", "", ""}));
}

TEST_F(MifFile, AStoreLargerThanTheDepthIsNotFilledUp) {
    file.set_number_of_words(2);
    ASSERT_TRUE(file.set_data_word_with_comments(1, "1", "b", RADIX_HEX));
    file.set_number_of_words(8);
    ASSERT_TRUE(file.set_data_word_with_comments(3, "1", "d", RADIX_HEX));
    EXPECT_EQ(data_comments(), (queue{"", "b", "", "d"}));
    ASSERT_TRUE(file.set_data_word_with_comments(6, "1", "g", RADIX_HEX));
    EXPECT_EQ(data_comments(), (queue{"", "b", "", "d", "", "", "g", "", ""}));
}

TEST_F(MifFile, CommentsForBillionsOfWordsCostNothing) {
    file.set_number_of_words(4000000000U);
    EXPECT_TRUE(file.set_data_word_with_comments(3999999999U, "1", "last", RADIX_HEX));
    EXPECT_TRUE(file.set_data_word_with_comments(5, "1", "fifth", RADIX_HEX));
    EXPECT_EQ(word(3999999999U), "01");
}

TEST_F(MifFile, DataCommentsAreReplacedAndCopied) {
    queue comments{"x", "", "y"};
    EXPECT_TRUE(file.set_data_comments(&comments));
    queue copy{"old"};
    EXPECT_TRUE(file.get_data_comments(&copy));
    EXPECT_EQ(copy, comments);
    queue none;
    EXPECT_FALSE(file.set_data_comments(&none));
    EXPECT_FALSE(file.get_data_comments(&copy));
    EXPECT_EQ(copy, queue{});
}

TEST_F(MifFile, HeaderCommentListsHaveTheIndexes0To5) {
    for (int index = 0; index < 6; ++index) {
        queue comments{"line " + std::to_string(index)};
        EXPECT_TRUE(file.set_comment_deque(index, &comments));
    }
    for (int index = 0; index < 6; ++index) {
        queue comments{"old"};
        EXPECT_TRUE(file.get_comment_deque(index, &comments));
        EXPECT_EQ(comments, queue{"line " + std::to_string(index)});
    }
    for (const int index : {-1, 6, -2147483647 - 1, 2147483647}) {
        queue comments{"old"};
        EXPECT_FALSE(file.set_comment_deque(index, &comments));
        EXPECT_EQ(comments, queue{"old"});
        EXPECT_FALSE(file.get_comment_deque(index, &comments));
        EXPECT_EQ(comments, queue{});
    }
}

TEST_F(MifFile, AHeaderCommentListCanBeEmptied) {
    queue comments{"line"};
    EXPECT_TRUE(file.set_comment_deque(2, &comments));
    queue none;
    EXPECT_FALSE(file.set_comment_deque(2, &none));
    EXPECT_FALSE(file.get_comment_deque(2, &comments));
}

TEST_F(MifFile, WithoutQueueNothingIsDone) {
    queue comments{"kept"};
    ASSERT_TRUE(file.set_data_comments(&comments));
    ASSERT_TRUE(file.set_comment_deque(0, &comments));
    EXPECT_FALSE(file.set_data_comments(nullptr));
    EXPECT_FALSE(file.get_data_comments(nullptr));
    EXPECT_FALSE(file.set_comment_deque(0, nullptr));
    EXPECT_FALSE(file.get_comment_deque(0, nullptr));
    EXPECT_EQ(data_comments(), comments);
    EXPECT_TRUE(file.get_comment_deque(0, &comments));
}

// --- the handler's steps one by one ---

class MifSteps : public testing::Test {
protected:
    MifSteps() {
        file.set_number_of_words(8);
        steps.memory().address_radix = RADIX_HEX;
        steps.memory().memory_radix = RADIX_HEX;
        steps.memory().word_size = 8;
    }
    strings words() {
        strings all;
        for (std::uint32_t address = 0; address < steps.memory().data_words.size(); ++address) {
            all.emplace_back(steps.memory().data_words[address]);
        }
        return all;
    }
    KVR_MEMORY_MIF_FILE file{nullptr};
    kvr::mif_steps steps{file};
};

TEST_F(MifSteps, AHandlerWithoutOwnerDropsItsMessages) {
    EXPECT_EQ(file.get_mif_data_word(8, RADIX_HEX), "");
    EXPECT_FALSE(file.set_mif_data_word(8, "1", RADIX_HEX));
}

TEST_F(MifSteps, CommentsAreMovedAndBlanksStripped) {
    std::string line = " a b\t% c -- d";
    steps.remove_comment_from_string(line, true);
    EXPECT_EQ(line, "ab");
    std::string kept = " a b\t-- d % e";
    steps.remove_comment_from_string(kept, false);
    EXPECT_EQ(kept, " a b\t");
    EXPECT_EQ(steps.memory().data_comments[0], "-- d % e");
    EXPECT_EQ(steps.memory().data_comments[1], "-- d");
    for (const std::string comment : {"--e", "% f", "%-- g"}) {
        std::string whole_line = comment;
        steps.remove_comment_from_string(whole_line, false);
        EXPECT_EQ(whole_line, "") << comment;
    }
}

TEST_F(MifSteps, ParsersAnswerTrueOnFailure) {
    EXPECT_TRUE(steps.parse_width_depth("WIDTH=0;"));
    EXPECT_FALSE(steps.parse_width_depth("WIDTH=12;"));
    EXPECT_EQ(steps.memory().word_size, 12U);
    EXPECT_FALSE(steps.parse_width_depth("DEPTH=5;"));
    EXPECT_EQ(steps.memory().number_of_words, 5U);
    EXPECT_TRUE(steps.parse_address_data_radix("ADDRESS_RADIX=BIN"));
    EXPECT_TRUE(steps.parse_address_data_radix(";ADDRESS_RADIX=BIN"));
    EXPECT_TRUE(steps.parse_address_data_radix(";ADDRESS_RADIX=NONE"));
    EXPECT_FALSE(steps.parse_address_data_radix("ADDRESS_RADIX=BIN;"));
    EXPECT_EQ(steps.memory().address_radix, RADIX_BIN);
    EXPECT_TRUE(steps.parse_single_address("5 1"));
    EXPECT_FALSE(steps.parse_single_address("0 : 1;"));
    EXPECT_TRUE(steps.parse_multiple_addresses("[1..0] : 1;"));
    EXPECT_FALSE(steps.parse_multiple_addresses("[0..1] : 1;"));
    EXPECT_TRUE(steps.parse_address_data_line("[0..1 : 1;"));
    EXPECT_FALSE(steps.parse_address_data_line("10 : 1;"));
    EXPECT_FALSE(steps.parse_address_data_line("[11..100] : 1;"));
}

TEST_F(MifSteps, SeveralValuesForOneAddressFillTheNextOnesAndMarkNone) {
    EXPECT_FALSE(steps.fill_given_addresses(4, 4, "1 2 3"));
    EXPECT_EQ(words(), (strings{"0", "0", "0", "0", "1", "2", "3", "0"}));
    for (int address = 4; address < 7; ++address) {
        EXPECT_FALSE(steps.check_if_address_already_set(address));
    }
}

TEST_F(MifSteps, OneValueForOneAddressMarksItAndFailsTheSecondTime) {
    EXPECT_FALSE(steps.fill_given_addresses(4, 4, "1"));
    EXPECT_TRUE(steps.fill_given_addresses(4, 4, "2"));
    EXPECT_EQ(words()[4], "1");
}

TEST_F(MifSteps, ValuesAreRepeatedOverTheAddresses) {
    EXPECT_FALSE(steps.fill_given_addresses(0, 7, "1 2"));
    EXPECT_EQ(words(), (strings{"1", "2", "1", "2", "1", "2", "1", "2"}));
}

TEST_F(MifSteps, FillingFailsWithoutValuesOrBeyondTheWords) {
    EXPECT_TRUE(steps.fill_given_addresses(0, 7, " ; "));
    EXPECT_TRUE(steps.fill_given_addresses(0, 8, "1"));
    EXPECT_TRUE(steps.fill_given_addresses(6, 6, "1 2 3"));
    EXPECT_FALSE(steps.fill_given_addresses(7, 0, "1"));
    EXPECT_EQ(words(), strings(8, "0"));
}

TEST_F(MifSteps, DataTextIsSplitIntoValues) {
    queue values{"old"};
    EXPECT_EQ(steps.interpret_data_values(" 1, AB;xU -- 3", values, 0), 3U);
    EXPECT_EQ(values, (queue{"1", "AB", "xU"}));
    EXPECT_EQ(steps.interpret_data_values("1 2 % 3", values, 5), 5U);
    EXPECT_EQ(values, (queue{"1", "2", "1", "2", "1"}));
    EXPECT_EQ(steps.interpret_data_values("1 2 3", values, 7), 7U);
    EXPECT_EQ(values, (queue{"1", "2", "3", "1", "2", "3", "1"}));
    EXPECT_EQ(steps.interpret_data_values("1 2 3", values, 2), 3U);
    EXPECT_EQ(steps.interpret_data_values("zz", values, 4), 0U);
    EXPECT_EQ(values, queue{});
}

TEST_F(MifSteps, AnAddressIsMarkedOnce) {
    EXPECT_FALSE(steps.check_if_address_already_set(3));
    EXPECT_TRUE(steps.check_if_address_already_set(3));
    EXPECT_FALSE(steps.check_if_address_already_set(4));
}

TEST_F(MifSteps, ClearingHeaderCommentsKeepsDataComments) {
    steps.memory().header_comments[3] = {{"line"}, 1};
    steps.memory().data_comments.push_front("kept");
    steps.clear_comment_strings();
    EXPECT_TRUE(steps.memory().header_comments[3].lines.empty());
    EXPECT_EQ(steps.memory().header_comments[3].count, 0U);
    EXPECT_EQ(steps.memory().data_comments.size(), 1U);
}

TEST_F(MifSteps, SettingHeaderCommentsLeavesTheirCount) {
    steps.memory().header_comments[1].count = 7;
    queue comments{"line"};
    EXPECT_TRUE(file.set_comment_deque(1, &comments));
    EXPECT_EQ(steps.memory().header_comments[1].count, 7U);
}

TEST_F(MifSteps, AValueIsLegalWhenItsCharactersAndItsLengthAre) {
    EXPECT_TRUE(steps.check_if_cell_value_is_valid("-09afAFxXuU"));
    EXPECT_FALSE(steps.check_if_cell_value_is_valid("0 1"));
    EXPECT_TRUE(steps.check_string_length_against_word_size("FF"));
    EXPECT_FALSE(steps.check_string_length_against_word_size("1FF"));
    EXPECT_TRUE(steps.check_if_memory_value_is_legal("FF"));
    EXPECT_FALSE(steps.check_if_memory_value_is_legal("G"));
    EXPECT_FALSE(steps.check_if_memory_value_is_legal("100"));
}

TEST_F(MifSteps, TheLastRadixNameIsEmptyAndOfNoRadix) {
    EXPECT_EQ(steps.memory().radix_names[5].name, "");
    EXPECT_EQ(steps.memory().radix_names[5].radix, RADIX_NONE);
    EXPECT_EQ(steps.memory().radix_names[0].name, "BIN");
    EXPECT_EQ(steps.memory().radix_names[4].radix, RADIX_OCT);
}

} // namespace
