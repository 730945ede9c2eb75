#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/readmem/readmem_triggers.h"
#include "tests/kvrimage/formats/readmem/shown_readmem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

/// The triggers in @p contents.
std::vector<readmem_trigger> readmem_triggers_in(std::string_view contents, const read_options& options = {},
                                                 const format& as = readmemh_format) {
    read_result ours = as.read(contents, options);
    ours.facts.as = &as;
    const readmem_triggers found = find_readmem_triggers(contents, options, ours);
    std::vector<readmem_trigger> present;
    for (std::size_t index = 0; index < found.size(); ++index) {
        if (!found.at(index).where.empty()) {
            present.push_back(static_cast<readmem_trigger>(index));
        }
    }
    return present;
}

TEST(ReadmemTriggers, APlainListHasNone) {
    EXPECT_THAT(readmem_triggers_in("// words\n01 23\n@A 45 /* x */ 67\r\n"), IsEmpty());
}

TEST(ReadmemTriggers, BlanksAroundASeparatorMatter) {
    EXPECT_THAT(readmem_triggers_in("01 , 02\n"),
                ElementsAre(readmem_trigger::separator, readmem_trigger::separator_alone));
    EXPECT_THAT(readmem_triggers_in("01,02\n"),
                ElementsAre(readmem_trigger::separator, readmem_trigger::separator_within));
    EXPECT_THAT(readmem_triggers_in("01, 02\n"), ElementsAre(readmem_trigger::separator));
    EXPECT_THAT(readmem_triggers_in("01 ,02\n"), ElementsAre(readmem_trigger::separator));
}

TEST(ReadmemTriggers, TheLastWordNeedsSomethingAfterIt) {
    EXPECT_THAT(readmem_triggers_in("01 23"), ElementsAre(readmem_trigger::word_at_end));
    for (const std::string_view text : {"01 23 ", "01 23 // x", "01 23/* x */", "01\n@3", "01 /* 2"}) {
        EXPECT_THAT(readmem_triggers_in(text), IsEmpty()) << text;
    }
}

TEST(ReadmemTriggers, WhatComesAfterAByteOrderMarkMatters) {
    EXPECT_THAT(readmem_triggers_in("\xEF\xBB\xBF"
                                    "12\n"),
                ElementsAre(readmem_trigger::byte_order_mark));
    for (const std::string_view text :
         {"\xEF\xBB\xBF@1 12\n", "\xEF\xBB\xBF// a\n12\n", "\xEF\xBB\xBF\n12\n"}) {
        EXPECT_THAT(readmem_triggers_in(text),
                    ElementsAre(readmem_trigger::byte_order_mark, readmem_trigger::mark_before_text))
            << text;
    }
}

TEST(ReadmemTriggers, AFormFeedIsHarmlessBeforeAWord) {
    EXPECT_THAT(readmem_triggers_in("01\n\f02\n"), IsEmpty());
    EXPECT_THAT(readmem_triggers_in("\f02\n"), IsEmpty());
    for (const std::string_view text : {"01\f02\n", "01 \f 02\n", "01\n\f@2 02\n", "@2\f02\n", "01 02\n\f"}) {
        EXPECT_THAT(readmem_triggers_in(text), ElementsAre(readmem_trigger::form_feed)) << text;
    }
}

TEST(ReadmemTriggers, SeparatorsDifferByWhatIsBesideThem) {
    EXPECT_THAT(readmem_triggers_in("01, 02\n"), ElementsAre(readmem_trigger::separator));
    EXPECT_THAT(readmem_triggers_in("01;02\n"),
                ElementsAre(readmem_trigger::separator, readmem_trigger::separator_within));
    EXPECT_THAT(readmem_triggers_in("01 , 02\n"),
                ElementsAre(readmem_trigger::separator, readmem_trigger::separator_alone));
    EXPECT_THAT(readmem_triggers_in(", 02\n"),
                ElementsAre(readmem_trigger::separator, readmem_trigger::separator_alone));
}

TEST(ReadmemTriggers, AddressesDifferByHowTheyAreWritten) {
    EXPECT_THAT(readmem_triggers_in("@ 2 33\n"), ElementsAre(readmem_trigger::spaced_address));
    EXPECT_THAT(readmem_triggers_in("@0x2 33\n"), ElementsAre(readmem_trigger::prefixed_address));
    EXPECT_THAT(readmem_triggers_in("@0_2 33\n"), ElementsAre(readmem_trigger::underscored_address));
    EXPECT_THAT(readmem_triggers_in("@x 33\n"), ElementsAre(readmem_trigger::bad_address));
    EXPECT_THAT(readmem_triggers_in("@10000000000000000 33\n"), IsEmpty()) << "no program has such a memory";
    EXPECT_THAT(readmem_triggers_in("01@4 33\n"), ElementsAre(readmem_trigger::joined_address));
    EXPECT_THAT(readmem_triggers_in("@3@4 33\n"), ElementsAre(readmem_trigger::joined_address));
}

TEST(ReadmemTriggers, AddressesThatCountBytesAreOthersThanZero) {
    EXPECT_THAT(readmem_triggers_in("@4 33\n", counting_bytes(32)),
                ElementsAre(readmem_trigger::byte_address));
    EXPECT_THAT(readmem_triggers_in("@0 33\n", counting_bytes(32)), IsEmpty());
    EXPECT_THAT(readmem_triggers_in("@4 33\n", counting_bytes(8)), IsEmpty());
}

TEST(ReadmemTriggers, DigitsThatAreNot0Or1) {
    EXPECT_THAT(readmem_triggers_in("1z 1\n"), ElementsAre(readmem_trigger::high_impedance));
    EXPECT_THAT(readmem_triggers_in("1X 1\n"), ElementsAre(readmem_trigger::dont_care));
    EXPECT_THAT(readmem_triggers_in("1g 1\n"), ElementsAre(readmem_trigger::bad_character));
    EXPECT_THAT(readmem_triggers_in("1 !\n"), ElementsAre(readmem_trigger::bad_character));
    EXPECT_THAT(readmem_triggers_in("1 / 2 1/2\n"), ElementsAre(readmem_trigger::slash));
    EXPECT_THAT(readmem_triggers_in("12\n", {}, readmemb_format),
                ElementsAre(readmem_trigger::bad_character));
    EXPECT_THAT(readmem_triggers_in("0x12\n"), IsEmpty()) << "a prefix is no don't-care digit";
}

TEST(ReadmemTriggers, CommentsThatAreNotReadAsSuch) {
    EXPECT_THAT(readmem_triggers_in("01 # 2\n"), ElementsAre(readmem_trigger::hash_comment));
    EXPECT_THAT(readmem_triggers_in("01 -- 2\n"), ElementsAre(readmem_trigger::dash_comment));
    EXPECT_THAT(readmem_triggers_in("01//2\n"), ElementsAre(readmem_trigger::joined_comment));
    EXPECT_THAT(readmem_triggers_in("01// \n"), IsEmpty());
    EXPECT_THAT(readmem_triggers_in("@1//\n2\n"), ElementsAre(readmem_trigger::comment_after_address));
    EXPECT_THAT(readmem_triggers_in("01 /*/ 02 */\n"), ElementsAre(readmem_trigger::short_comment_begin));
}

TEST(ReadmemTriggers, ABlockCommentThatBeginsInALineComment) {
    for (const std::string_view text : {"01 // /* 2\n", "01 // /* a */ /* b\n", "01 //* a */\n"}) {
        EXPECT_THAT(readmem_triggers_in(text), ElementsAre(readmem_trigger::comment_in_comment)) << text;
    }
    EXPECT_THAT(readmem_triggers_in("01 // /* a */ b /* c */\n02 // */\n"), IsEmpty());
}

TEST(ReadmemTriggers, WhatTheReaderFoundAlready) {
    read_options options = with_bits(8);
    options.depth = 2;
    EXPECT_THAT(readmem_triggers_in("123 45 67 89\n", options),
                ElementsAre(readmem_trigger::too_wide, readmem_trigger::beyond_depth));
}

TEST(ReadmemTriggers, EachPlaceOfAFindingOfTheReaderIsOne) {
    const read_options options = with_bits(8);
    const read_result ours = readmemh_format.read("123 456 07 789\n", options);
    const readmem_triggers found = find_readmem_triggers("123 456 07 789\n", options, ours);
    EXPECT_EQ(found[static_cast<std::size_t>(readmem_trigger::too_wide)].where.count(), 3U);
}

} // namespace
