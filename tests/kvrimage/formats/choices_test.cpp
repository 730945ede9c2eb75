#include "kvrimage/formats/choices.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvrimage;

constexpr choice_kind offered[] = {
    {"variant", "NAME", "old new", "which of the variants"},
    {"name", "NAME", "", "what it is called"},
};

format format_with_choices() {
    format made;
    made.id = "picky";
    made.title = "Picky";
    made.read_choices = offered;
    return made;
}

std::string message_for(const std::vector<choice>& given) {
    const format picky = format_with_choices();
    const auto found = improper_choice(given, picky, &format::read_choices);
    return found ? found->message : "";
}

TEST(Choices, NameAllFormatsThatHaveThem) {
    const format picky = format_with_choices();
    const auto found =
        improper_choice(std::vector<choice>{{"record-length", "4"}}, picky, &format::write_choices);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->hint, "use it with Intel HEX of bytes, S-records");
}

TEST(Choices, OfTwoForOneNameTheLastCounts) {
    const std::vector<choice> given = {{"variant", "old"}, {"name", "a"}, {"variant", "new"}};
    EXPECT_EQ(chosen(given, "variant"), "new");
    EXPECT_EQ(chosen(given, "name"), "a");
    EXPECT_EQ(chosen(given, "other"), std::nullopt);
}

TEST(Choices, AreProperWithAValueThatIsPossible) {
    EXPECT_EQ(message_for({}), "");
    EXPECT_EQ(message_for({{"variant", "old"}, {"variant", "new"}, {"name", "anything"}}), "");
}

TEST(Choices, WithAnotherValueAreBroken) {
    EXPECT_EQ(message_for({{"variant", "old"}, {"variant", "ol"}}), "--variant ol is not valid");
    EXPECT_EQ(message_for({{"variant", ""}}), "--variant  is not valid");
    EXPECT_EQ(message_for({{"variant", "old new"}}), "--variant old new is not valid");
}

TEST(Choices, ThatTheFormatDoesNotHaveAreBroken) {
    EXPECT_EQ(message_for({{"section", ".text"}}), "--section has no effect on Picky");
}

TEST(Choices, AreJudgedBeforeAFileIsReadOrWritten) {
    const format* const mif = format_of_name("mif");
    const read_result result = parse("", {.as = mif, .choices = {{"variant", "old"}}});
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].message, "--variant has no effect on MIF");
    EXPECT_EQ(result.facts.as, mif);
    const std::vector<diagnostic> found =
        can_write(memory_image(8, 4), {.as = mif, .choices = {{"variant", "old"}}});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].message, "--variant has no effect on MIF");
}

} // namespace
