#include "kvr/util/generated_files.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using kvr_test::temporary_directory;

struct wizard {
    bool found;
    std::string name;
    std::string version;
    bool operator==(const wizard&) const = default;
};

void PrintTo(const wizard& shown, std::ostream* out) {
    *out << shown.found << " name \"" << shown.name << "\" version \"" << shown.version << '"';
}

wizard wizard_of(const std::string& content) {
    const temporary_directory here;
    wizard result = {false, "old name", "old version"};
    result.found =
        is_wizard_generated_file(here.file("file.vhd", content).c_str(), result.name, result.version);
    return result;
}

bool is_deferred(const std::string& content) {
    const temporary_directory here;
    return is_wizard_deferred_generation_file(here.file("file.vhd", content).c_str());
}

const wizard no_wizard = {false, "", ""};

TEST(WizardFile, NameWithoutAVersion) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %FIFO%\n"), (wizard{true, "FIFO", ""}));
}

TEST(WizardFile, NameOfSeveralWordsWithAVersion) {
    EXPECT_EQ(wizard_of("// plexfunction wizard: %RAM: 2-PORT% V7.2%\n"),
              (wizard{true, "RAM: 2-PORT", "7.2"}));
    EXPECT_EQ(wizard_of("// plexfunction wizard: %RAM: 2-PORT% v7.2%"), (wizard{true, "RAM: 2-PORT", "7.2"}));
}

TEST(WizardFile, WizardAsSecondWordDoesNotCount) {
    EXPECT_EQ(wizard_of("// wizard: %FIFO%\n"), no_wizard);
}

TEST(WizardFile, DoubledBlankShiftsTheWords) {
    EXPECT_EQ(wizard_of("--  plexfunction wizard: %FIFO%\n"), no_wizard);
    EXPECT_EQ(wizard_of("--  wizard: %FIFO%\n"), (wizard{true, "FIFO", ""}));
}

TEST(WizardFile, CarriageReturnBeforeTheLineEndIsDropped) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %FIFO% v1%\r\nmore\r\n"), (wizard{true, "FIFO", "1"}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard:\r\n"), (wizard{true, "", ""}));
}

TEST(WizardFile, OnlyOneCarriageReturnIsDropped) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %FIFO\r\r\n"), (wizard{true, "FIFO\r", ""}));
}

TEST(WizardFile, KeywordMatchesInAnyLetterCaseAndWithItsColonOnly) {
    EXPECT_EQ(wizard_of("-- plexfunction WIZARD: %FIFO%"), (wizard{true, "FIFO", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard %FIFO%"), no_wizard);
    EXPECT_EQ(wizard_of("-- plexfunction wizard:x %FIFO%"), no_wizard);
}

TEST(WizardFile, LastWordOfTheNameIsTakenForAVersionByItsShape) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %BIG valve%"), (wizard{true, "BIG", "alve"}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %valve%"), (wizard{true, "valve", ""}));
}

TEST(WizardFile, VersionShapeCountsInTheLastWordOnly) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %A% v1% B%"), (wizard{true, "A% v1% B", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %A% v1% "), (wizard{true, "A", "1"}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %A% v1%  "), (wizard{true, "A% v1% ", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %A% v"), (wizard{true, "A% v", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %A% v%"), (wizard{true, "A", ""}));
}

TEST(WizardFile, PercentSignsAreNotNeeded) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: FIFO"), (wizard{true, "FIFO", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %%"), (wizard{true, "", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %"), (wizard{true, "", ""}));
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %%A%%"), (wizard{true, "%A%", ""}));
}

TEST(WizardFile, WordsOfTheNameKeepTheirBlanks) {
    EXPECT_EQ(wizard_of("-- plexfunction wizard: %A  B% v2%"), (wizard{true, "A  B", "2"}));
}

TEST(WizardFile, OnlyTheFirstLineCounts) {
    EXPECT_EQ(wizard_of("\n-- plexfunction wizard: %FIFO%\n"), no_wizard);
    EXPECT_EQ(wizard_of(""), no_wizard);
}

TEST(WizardFile, LineIsCutAt4095Characters) {
    const std::string head = "-- plexfunction wizard: %";
    const std::string name(4095 - head.size(), 'n');
    EXPECT_EQ(wizard_of(head + name + "cut\n"), (wizard{true, name, ""}));
    EXPECT_EQ(wizard_of(head + std::string(5000000, 'n')), (wizard{true, name, ""}));
}

TEST(WizardFile, AnyByteMayStandInTheName) {
    EXPECT_EQ(wizard_of("\xFF \x80 wizard: %\xE9\t%"), (wizard{true, "\xE9\t", ""}));
}

TEST(WizardFile, FileThatCannotBeReadIsNone) {
    const temporary_directory here;
    for (const std::string& path : {here.path("none"), here.path("")}) {
        std::string name = "old";
        std::string version = "old";
        EXPECT_FALSE(is_wizard_generated_file(path.c_str(), name, version));
        EXPECT_EQ(name, "");
        EXPECT_EQ(version, "");
        EXPECT_FALSE(is_wizard_deferred_generation_file(path.c_str()));
    }
}

TEST(WizardFile, NullPathIsNone) {
    std::string name = "old";
    std::string version = "old";
    EXPECT_FALSE(is_wizard_generated_file(nullptr, name, version));
    EXPECT_EQ(name + version, "");
    EXPECT_FALSE(is_wizard_deferred_generation_file(nullptr));
}

TEST(DeferredGeneration, IsGivenByTheSecondLine) {
    EXPECT_TRUE(is_deferred("-- plexfunction wizard: %FIFO%\n-- generation: deferred\n"));
    EXPECT_TRUE(is_deferred("-- plexfunction wizard: %FIFO%\n-- generation: deferred and more"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard: %FIFO%\n-- generation: standard\n"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard: %FIFO%\n-- x generation: deferred\n"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard: %FIFO%\n\n-- generation: deferred\n"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard: %FIFO%\n"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard: %FIFO%"));
    EXPECT_FALSE(is_deferred(""));
}

TEST(DeferredGeneration, WizardMayBeTheSecondOrTheThirdWord) {
    EXPECT_TRUE(is_deferred("// wizard: %FIFO%\n// generation: deferred\n"));
    EXPECT_TRUE(is_deferred("// x wizard: %FIFO%\n// generation: deferred\n"));
    EXPECT_FALSE(is_deferred("wizard: %FIFO%\n// generation: deferred\n"));
    EXPECT_FALSE(is_deferred("// x y wizard: %FIFO%\n// generation: deferred\n"));
}

TEST(DeferredGeneration, DoubledBlankShiftsTheWords) {
    EXPECT_FALSE(is_deferred("--  plexfunction wizard: %FIFO%\n-- generation: deferred\n"));
    EXPECT_TRUE(is_deferred("--  wizard: %FIFO%\n-- generation: deferred\n"));
    EXPECT_FALSE(is_deferred("-- wizard: %FIFO%\n--  generation: deferred\n"));
}

TEST(DeferredGeneration, CarriageReturnsBeforeTheLineEndsAreDropped) {
    EXPECT_TRUE(is_deferred("-- plexfunction wizard:\r\n-- generation: deferred\r\n"));
}

TEST(DeferredGeneration, KeywordsMatchInAnyLetterCase) {
    EXPECT_TRUE(is_deferred("-- plexfunction WIZARD: %A%\n-- Generation: DEFERRED\n"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard %A%\n-- generation: deferred\n"));
    EXPECT_FALSE(is_deferred("-- plexfunction wizard: %A%\n-- generation deferred\n"));
}

TEST(DeferredGeneration, RestOfACutFirstLineIsTheSecondLine) {
    const std::string head = "-- plexfunction wizard: ";
    const std::string filled = head + std::string(4095 - head.size(), 'n');
    EXPECT_TRUE(is_deferred(filled + "-- generation: deferred"));
    EXPECT_TRUE(is_deferred(filled + "\n-- generation: deferred")); // not cut: it fits exactly
    EXPECT_FALSE(is_deferred(filled + "x\n-- generation: deferred"));
}

TEST(ConvertedName, IsAnIdentifier) {
    const struct {
        const char* name;
        const char* converted;
    } cases[] = {
        {"a[3]", "a_3"},
        {"ram (x).v", "ram_x_v"},
        {"__q", "sub_q"},
        {"a__b", "a_b"},
        {"a-", "a_"},
        {"|xyz", "xyz"},
        {"_xyz", "sub_xyz"},
        {"9", "sub_"},
        {"A.B", "A_B"},
        {"1xyz", "sub_xyz"},
        {"", ""},
        {"|", ""},
        {"||x", "x"},
        {"|_9", "9"},
        {"])", "sub_"},
        {"a])b", "ab"},
        {"a[ (~$|:.\\_-@b", "a_b"},
        {"x+y,z", "x+y,z"},
        {"\xE9t\xE9", "sub_t\xE9"},
        {"Zz", "Zz"},
        {"@", "sub_"},
        {"[a", "sub_a"},
        {"`a", "sub_a"},
        {"{a", "sub_a"},
        {"1_a", "sub_a"},
        {"a]_)_b", "a_b"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(convert_name_to_kvr_form(each.name), each.converted) << each.name;
    }
}

TEST(ConvertedName, NulIsKeptLikeAnyCharacter) {
    EXPECT_EQ(convert_name_to_kvr_form(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(ConvertedName, LongNameIsConvertedWhole) {
    EXPECT_EQ(convert_name_to_kvr_form("a" + std::string(1000000, '-') + "b"), "a_b");
}

} // namespace
