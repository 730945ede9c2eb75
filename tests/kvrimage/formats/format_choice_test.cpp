#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/format_choice.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using namespace kvrimage;

constexpr std::string_view twin_extensions[] = {"twin"};

certainty sniff_left_twin(std::string_view head) {
    return head.starts_with("left")   ? certainty::certain
           : head.starts_with("twin") ? certainty::likely
                                      : certainty::no;
}

certainty sniff_right_twin(std::string_view head) {
    return head.starts_with("right")  ? certainty::certain
           : head.starts_with("twin") ? certainty::likely
                                      : certainty::no;
}

/// Accepts contents with @p letter in them. The words differ, except for "same".
read_result read_twin(std::string_view contents, char letter) {
    read_result result;
    if (contents.find(letter) != std::string_view::npos) {
        result.image.emplace(letter == 'l' || contents.ends_with("same") ? 8 : 16, 1);
    } else {
        result.diagnostics.push_back(diagnose::no_words({}));
    }
    return result;
}

read_result read_left_twin(std::string_view contents, const read_options&) {
    return read_twin(contents, 'l');
}

read_result read_right_twin(std::string_view contents, const read_options&) {
    return read_twin(contents, 'r');
}

class FormatChoice : public testing::Test {
protected:
    FormatChoice() : left(*twins()[0]), right(*twins()[1]) {}

    static format_choice choice_of(std::string_view contents, const std::string& file_name = "a.twin") {
        return choose_format(contents, {.file_name = file_name});
    }

    const format& left;
    const format& right;

private:
    static const std::array<const format*, 2>& twins() {
        static const format left_twin = {.id = "left-twin",
                                         .title = "Left twin",
                                         .extensions = twin_extensions,
                                         .sniff = sniff_left_twin,
                                         .read = read_left_twin};
        static const format right_twin = {.id = "right-twin",
                                          .title = "Right twin",
                                          .extensions = twin_extensions,
                                          .sniff = sniff_right_twin,
                                          .read = read_right_twin};
        static const std::array<const format*, 2> all = [] {
            add_format(left_twin);
            add_format(right_twin);
            return std::array<const format*, 2>{&left_twin, &right_twin};
        }();
        return all;
    }
};

TEST_F(FormatChoice, OfOneExtensionGoesByTheContents) {
    EXPECT_EQ(choice_of("left").as, &left);
    EXPECT_EQ(choice_of("right").as, &right);
    EXPECT_EQ(choice_of("right").how_sure, certainty::certain);
    EXPECT_EQ(choice_of("neither").as, &left);
    EXPECT_EQ(choice_of("neither").how_sure, certainty::no);
}

TEST_F(FormatChoice, BetweenEquallySureOnesTakesTheOneThatCanReadTheFile) {
    EXPECT_EQ(choice_of("twin l").as, &left);
    EXPECT_EQ(choice_of("twin r").as, &right);
    EXPECT_EQ(choice_of("twin r").how_sure, certainty::likely);
    EXPECT_EQ(choice_of("twin").as, &left);
}

TEST_F(FormatChoice, BetweenTwoThatCanReadTheFileIsLeftToTheCaller) {
    const format_choice choice = choice_of("twin l r");
    EXPECT_EQ(choice.as, nullptr);
    ASSERT_EQ(choice.among.size(), 2U);
    const read_result result = parse("twin l r", {.file_name = "a.twin"});
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].id, diagnostic_id::ambiguous_format);
    EXPECT_EQ(result.diagnostics[0].message, "this may be Left twin or Right twin");
    EXPECT_EQ(result.diagnostics[0].hint, "--from left-twin or --from right-twin");
    EXPECT_EQ(parse("twin l r", {.as = &right}).facts.as, &right);
}

TEST_F(FormatChoice, ABrokenFileIsReadByNoneOfThoseThatAreEquallySure) {
    for (const char* const text :
         {"x/*\nPTH=6\nCONTENTBEGIN\n", "10 11\n/*\n:0400000012345678E8\n:00000001FF\n"}) {
        for (const char* const name : {"a.txt", "a.mem", "a.dat", "a.mif", ""}) {
            read_options options;
            options.file_name = name;
            options.keep_going = true;
            EXPECT_FALSE(parse(text, options).diagnostics.empty()) << name;
        }
    }
}

TEST_F(FormatChoice, BetweenTwoThatReadTheSameWordsTakesTheFirst) {
    EXPECT_EQ(choice_of("twin l r same").as, &left);
    EXPECT_TRUE(choice_of("twin l r same").among.empty());
}

TEST_F(FormatChoice, WithoutAKnownExtensionGoesByTheContents) {
    EXPECT_EQ(choice_of("left", "a").as, &left);
    EXPECT_EQ(choice_of("left", "").as, &left);
    EXPECT_EQ(choice_of("Dear reader,", "a.bcd").as, nullptr);
}

TEST_F(FormatChoice, NotesAFormatThatTheContentsSurelyHave) {
    EXPECT_EQ(choice_of("left", "a.mif").as, format_of_name("mif"));
    EXPECT_EQ(choice_of("left", "a.mif").surely, &left);
    EXPECT_EQ(choice_of("left").surely, nullptr);
    EXPECT_EQ(choose_format("left", {.as = &right}).surely, &left);
}

TEST_F(FormatChoice, NotesSuchAFormatWhereTheChoiceIsLeftToTheCaller) {
    const format_choice choice = choice_of("twin l r\n:00000001FF\n");
    EXPECT_EQ(choice.as, nullptr);
    EXPECT_EQ(choice.among.size(), 2U);
    EXPECT_EQ(choice.surely, format_of_name("hex"));
}

TEST_F(FormatChoice, AFileOfBytesMayHaveAnyLines) {
    const format& binary = *format_of_name("binary");
    EXPECT_TRUE(may_have_any_lines("left", {.as = &binary}));
    EXPECT_FALSE(may_have_any_lines("left", {.as = &left}));
    EXPECT_TRUE(may_have_any_lines("left", {.file_name = "a.bin"}));
    EXPECT_FALSE(may_have_any_lines("left", {.file_name = "a.twin"}));
    EXPECT_FALSE(may_have_any_lines("left", {.file_name = "a"}));
    EXPECT_FALSE(may_have_any_lines("Dear reader,", {.file_name = "a"}));
}

TEST_F(FormatChoice, AFileThatIsSurelyOfBytesMayHaveAnyLines) {
    static const format blob = {.id = "blob",
                                .title = "Blob",
                                .extensions = {},
                                .has_lines = false,
                                .sniff =
                                    [](std::string_view head) {
                                        return head.starts_with("blob") ? certainty::certain : certainty::no;
                                    },
                                .read = read_left_twin};
    add_format(blob);
    EXPECT_TRUE(may_have_any_lines("blob", {.file_name = "a"}));
}

} // namespace
