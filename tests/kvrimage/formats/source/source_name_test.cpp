#include "kvrimage/formats/source/source_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr naming loose = {
    .language = "Loose", .reserved = "\n    for while\n    do", .taken = "data clk", .library = "sin"};
constexpr naming strict = {.language = "Strict",
                           .reserved = "signal",
                           .taken = "data",
                           .ignores_case = true,
                           .parts_with_words = true};

std::string name_of_file(const std::string& file_name, const naming& rules = loose) {
    return source_name({.file_name = file_name}, rules);
}

/// "code: message / hint" for @p name as a choice.
std::vector<std::string> refusals_of(const std::string& name, const naming& rules) {
    std::vector<diagnostic> found;
    refuse_source_name({.choices = {{"name", name}}}, rules, found);
    std::vector<std::string> texts;
    for (const diagnostic& each : found) {
        texts.push_back(std::string(about(each.id).code) + ": " + each.message + " / " + each.hint);
    }
    return texts;
}

TEST(SourceName, IsTheOneThatIsChosen) {
    EXPECT_EQ(source_name({.choices = {{"name", "lut"}}, .file_name = "sine.h"}, loose, "WORDS"), "lut");
}

TEST(SourceName, IsTheUsualOneWhereTheLanguageHasOne) {
    EXPECT_EQ(source_name({.file_name = "sine.h"}, loose, "WORDS"), "WORDS");
}

TEST(SourceName, IsElseThatOfTheFile) {
    EXPECT_EQ(name_of_file("sine.h"), "sine");
    EXPECT_EQ(name_of_file("out.d/Sine_16.h"), "Sine_16");
    EXPECT_EQ(name_of_file("sine"), "sine");
}

TEST(SourceName, OfAFileHasOnlyWhatANameCanHave) {
    EXPECT_EQ(name_of_file("my sine--table (2).h"), "my_sine_table_2");
    EXPECT_EQ(name_of_file("sine.v2.h"), "sine_v2");
    EXPECT_EQ(name_of_file("_sine__.h"), "sine");
    EXPECT_EQ(name_of_file("\xC3\xA4x.h"), "x");
}

TEST(SourceName, OfAFileThatWouldBeNoneOrHasAnotherMeaningHasAPrefix) {
    EXPECT_EQ(name_of_file("2nd.h"), "rom_2nd");
    EXPECT_EQ(name_of_file("for.h"), "rom_for");
    EXPECT_EQ(name_of_file("do.h"), "rom_do");
    EXPECT_EQ(name_of_file("For.h"), "For");
    EXPECT_EQ(name_of_file("DATA.h"), "rom_DATA");
    EXPECT_EQ(name_of_file("sin.h"), "rom_sin");
    EXPECT_EQ(name_of_file("Signal.vhd", strict), "rom_Signal");
}

TEST(SourceName, IsRomWhereThereIsNone) {
    EXPECT_EQ(name_of_file(""), "rom");
    EXPECT_EQ(name_of_file("-"), "rom");
}

TEST(SourceName, ThatIsPossibleIsNotRefused) {
    for (const char* name : {"a", "Z9", "a_b", "_a", "a__b_", "forest", "For", "Sin"}) {
        EXPECT_THAT(refusals_of(name, loose), IsEmpty()) << name;
    }
    EXPECT_THAT(refusals_of("a_b", strict), IsEmpty());
    std::vector<diagnostic> found;
    refuse_source_name({}, loose, found);
    EXPECT_THAT(found, IsEmpty());
}

TEST(SourceName, ThatIsNoNameIsRefused) {
    EXPECT_THAT(refusals_of("2nd", loose),
                ElementsAre("source-name: '2nd' is not a valid name in Loose / use --name rom_2nd"));
    EXPECT_THAT(refusals_of("", loose),
                ElementsAre("source-name: '' is not a valid name in Loose / use --name rom"));
    EXPECT_THAT(refusals_of("a-b", loose),
                ElementsAre("source-name: 'a-b' is not a valid name in Loose / use --name a_b"));
    for (const std::string name : {"a@b", "a[b", "a`b", "a{b", "a/b", "a:b"}) {
        EXPECT_THAT(refusals_of(name, loose),
                    ElementsAre("source-name: '" + name + "' is not a valid name in Loose / use --name a_b"));
    }
    EXPECT_THAT(refusals_of("a__b", strict),
                ElementsAre("source-name: 'a__b' is not a valid name in Strict / use --name a_b"));
    EXPECT_THAT(refusals_of("a_", strict),
                ElementsAre("source-name: 'a_' is not a valid name in Strict / use --name a"));
    EXPECT_THAT(refusals_of("_a", strict),
                ElementsAre("source-name: '_a' is not a valid name in Strict / use --name a"));
}

TEST(SourceName, WithAnotherMeaningIsRefused) {
    EXPECT_THAT(refusals_of("for", loose),
                ElementsAre("source-name-taken: 'for' has another meaning in Loose / use --name rom_for"));
    EXPECT_THAT(refusals_of("Data", loose),
                ElementsAre("source-name-taken: 'Data' has another meaning in Loose / use --name rom_Data"));
    EXPECT_THAT(refusals_of("SIGNAL", strict),
                ElementsAre("source-name-taken: 'SIGNAL' has another meaning in "
                            "Strict / use --name rom_SIGNAL"));
}

TEST(SourceName, MayNotHaveTheUnderscoresThatALanguageReserves) {
    constexpr naming reserving = {.language = "C", .reserved = "", .taken = "", .reserves_underscores = true};
    EXPECT_THAT(refusals_of("_rom", reserving), testing::SizeIs(1));
    EXPECT_THAT(refusals_of("my__rom", reserving), testing::SizeIs(1));
    EXPECT_THAT(refusals_of("my_rom_", reserving), IsEmpty());
}

} // namespace
