#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tests/kvrimage/formats/toy_format.h"
#include "tools/kvrmem/commands/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kvrimage::format;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

/// The answer of the tool.
struct answer {
    int code;
    std::string output;
    std::string errors;
};

answer run(std::vector<std::string> words) {
    words.insert(words.begin(), "kvrmem");
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = kvrmem::run_program(static_cast<int>(words.size()), arguments.data());
    return {code, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

/// Adds the toy format under another name and without the features that @p remove removes.
template <class Remove>
void add_part_of_toy(std::string_view id, Remove&& remove) {
    static format made = toy_format(); // one per type of @p remove
    made.id = id;
    made.title = id;
    made.extensions = {&made.id, 1};
    made.sniff = nullptr;
    remove(made);
    kvrimage::add_format(made);
}

/// Adds all formats of this program before the first command of the tool.
class AddedFormat : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static_cast<void>(toy_format());
        add_part_of_toy("readable", [](format& made) {
            made.find_word = nullptr;
            made.write = nullptr;
        });
        add_part_of_toy("writable", [](format& made) {
            made.read = nullptr;
            made.can_write = nullptr;
            made.written_size = nullptr;
        });
    }

    test_folder folder;
    const std::string toy = folder.write("a.toy", "toy 8\n0 0A\n3 2B\n");
};

TEST_F(AddedFormat, StandsInHelpAndManualPage) {
    EXPECT_THAT(run({"--help"}).output,
                AllOf(HasSubstr("Toy"), HasSubstr("readable"), HasSubstr("writable")));
    EXPECT_THAT(run({"formats"}).output, ContainsRegex("\ntoy +Toy +\\.toy "));
    EXPECT_THAT(run({"--generate", "man"}).output,
                AllOf(HasSubstr("Toy"), HasSubstr("readable"), HasSubstr("writable")));
}

TEST_F(AddedFormat, StandsInEveryCompletion) {
    for (const char* const shell : {"bash", "zsh", "fish"}) {
        EXPECT_THAT(run({"--generate", shell}).output, HasSubstr(" toy readable")) << shell;
        EXPECT_THAT(run({"--generate", shell}).output, HasSubstr(" toy writable")) << shell;
    }
}

TEST_F(AddedFormat, IsReadByItsExtensionAndByItsName) {
    EXPECT_EQ(run({"get", toy, "3"}).output, "2B\n");
    EXPECT_EQ(run({"get", "--from", "TOY", folder.write("a.txt", "toy 8\n3 2B\n"), "3"}).output, "2B\n");
}

TEST_F(AddedFormat, IsWrittenByItsExtensionAndByItsName) {
    const answer by_extension = run({"convert", toy, folder.path("b.toy")});
    EXPECT_EQ(by_extension.code, 0) << by_extension.errors;
    EXPECT_EQ(folder.read("b.toy"), "toy 8\n0 0A\n3 2B\n");
    EXPECT_EQ(run({"convert", "--to", "toy", toy, "-"}).output, "toy 8\n0 0A\n3 2B\n");
    EXPECT_EQ(run({"convert", "--to", "hex", toy, "-"}).output,
              ":010000000AF5\n:010003002BD1\n:00000001FF\n");
}

TEST_F(AddedFormat, IsCheckedAndComparedWithItsConsumer) {
    const answer marked = run({"check", folder.write("m.toy", "toy 8\n0 0A?\n")});
    EXPECT_EQ(marked.code, 1);
    EXPECT_THAT(marked.output, HasSubstr("m.toy:2:5: error for kvr: "));
    EXPECT_EQ(run({"check", "--for", "none", toy}).code, 0);
}

TEST_F(AddedFormat, IsNamedWhereAnUnknownOneIs) {
    const answer wrong = run({"info", "--from", "tpy", toy});
    EXPECT_EQ(wrong.code, 4);
    EXPECT_THAT(wrong.errors, HasSubstr("a.toy looks like Toy; try: kvrmem info --from toy "));
    EXPECT_THAT(run({"info", "--from", "tpy", folder.path("absent")}).errors,
                HasSubstr("did you mean toy? kvrmem formats lists them"));
    EXPECT_THAT(run({"info", folder.write("a", "-")}).errors,
                HasSubstr("the name does not determine the format; give --from"));
}

TEST_F(AddedFormat, IsFoundByTheContentsOfAFile) {
    EXPECT_EQ(run({"get", folder.write("b", "toy 8\n3 2B\n"), "3"}).output, "2B\n");
    const answer wrong = run({"info", folder.write("b.mif", "toy 8\n0 0A\n")});
    EXPECT_EQ(wrong.code, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("this looks like Toy, not like MIF"));
    EXPECT_THAT(wrong.errors, HasSubstr("hint: read it with --from toy"));
}

TEST_F(AddedFormat, ThatCannotDoSomethingIsRefusedForThatAlone) {
    const answer edited = run({"set", toy, "0=1"});
    EXPECT_EQ(edited.code, 2);
    EXPECT_THAT(edited.errors, HasSubstr("a.toy: Toy cannot be edited"));

    const answer read = run({"info", "--from", "writable", toy});
    EXPECT_EQ(read.code, 4);
    EXPECT_THAT(read.errors, HasSubstr("a.toy: writable cannot be read"));
    EXPECT_EQ(run({"convert", "--to", "writable", toy, "-"}).output, "toy 8\n0 0A\n3 2B\n");

    const answer written = run({"convert", "--to", "readable", toy, "-"});
    EXPECT_EQ(written.code, 4);
    EXPECT_THAT(written.errors, HasSubstr("readable cannot be written"));
    EXPECT_EQ(run({"get", "--from", "readable", toy, "3"}).output, "2B\n");
}

TEST_F(AddedFormat, ThatFindsNoWordHasTheFaultWithoutAPlace) {
    const std::string dont_care = folder.write("x.readable", "toy 8\n3 XX\n");
    const answer refused = run({"convert", dont_care, folder.path("x.hex")});
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.errors, HasSubstr(dont_care + ": error: word XX at address 3"));
}

} // namespace
