#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/image_words.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tests/kvrimage/formats/toy_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<std::string> codes_of(const std::vector<diagnostic>& found) {
    std::vector<std::string> codes;
    std::ranges::transform(found, std::back_inserter(codes),
                           [](const diagnostic& each) { return std::string(about(each.id).code); });
    return codes;
}

memory_image image_of(std::uint32_t width, std::initializer_list<std::string_view> words) {
    auto made = std::make_unique<image_words>(words.size());
    std::uint64_t address = 0;
    for (const std::string_view word : words) {
        made->set(address++, word);
    }
    return {width, std::move(made)};
}

/// All sixteen words.
std::string full_toy() {
    std::string text = "toy 8\n";
    for (const char digit : std::string_view("0123456789ABCDEF")) {
        text += std::string{digit} + " 0" + digit + "\n";
    }
    return text;
}

class MemoryFile : public testing::Test {
protected:
    const format& toy = toy_format();
    test_folder folder;
};

TEST_F(MemoryFile, OfAnAddedFormatIsFoundByNamePathAndContents) {
    EXPECT_EQ(std::ranges::count(formats(), &toy), 1);
    EXPECT_EQ(format_of_name("TOY"), &toy);
    EXPECT_EQ(format_of_path("a.Toy"), &toy);
    const auto found = sniff("toy 8\n");
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.front().as, &toy);
    EXPECT_EQ(found.front().how_sure, certainty::certain);
    EXPECT_THAT(sniff("Dear reader,"), IsEmpty());
}

TEST_F(MemoryFile, IsReadByItsExtension) {
    const read_result result = read(folder.write("a.toy", "toy 8\n3 0A\n"));
    EXPECT_EQ(result.facts.as, &toy);
    ASSERT_TRUE(result.image);
    EXPECT_EQ(result.image->words()[3], "0A");
    EXPECT_THAT(result.diagnostics, IsEmpty());
}

TEST_F(MemoryFile, IsReadByTheNameThatTheCallerGivesIt) {
    const std::string path = folder.write("a", "00\n01\n");
    EXPECT_EQ(read(path, {}).facts.as, nullptr);
    EXPECT_EQ(read(path, {.file_name = "a.vmem"}).facts.as, format_of_name("readmemh"));
}

TEST_F(MemoryFile, OfNoKnownFormatIsBroken) {
    const read_result result = check("Dear reader,\n", {});
    EXPECT_FALSE(result.image);
    EXPECT_EQ(result.facts.as, nullptr);
    EXPECT_THAT(codes_of(result.diagnostics), ElementsAre("unknown-format"));
}

TEST_F(MemoryFile, IsFreeOfWhatConcernsConsumersThatAreNotAskedFor) {
    const std::string text = "WIDTH=8;\nDEPTH=1;\nCONTENT BEGIN\n[0..0] : 1;\nEND;\n";
    EXPECT_THAT(codes_of(check(text, {}).diagnostics), ElementsAre("range-of-one"));
    EXPECT_THAT(codes_of(check(text, {.consumers = {}}).diagnostics), IsEmpty());
}

TEST_F(MemoryFile, IsReadByItsContentsWithoutAnExtension) {
    EXPECT_EQ(read(folder.write("a", "toy 8\n3 0A\n")).facts.as, &toy);
    EXPECT_EQ(parse("toy 8\n").facts.as, &toy);
}

TEST_F(MemoryFile, IsReadInTheFormatThatWasAskedFor) {
    EXPECT_EQ(codes_of(parse("x", {.as = &toy}).diagnostics), std::vector<std::string>{"bad-digit"});
    EXPECT_EQ(read(folder.write("a.mif", "toy 8\n"), {.as = &toy}).facts.as, &toy);
}

TEST_F(MemoryFile, ThatIsNotThereIsAnError) {
    EXPECT_THROW(static_cast<void>(read(folder.path("none.toy"))), std::system_error);
}

TEST_F(MemoryFile, OfNoFormatIsBrokenWithOneDiagnostic) {
    const read_result result = parse("Dear reader,");
    EXPECT_EQ(result.facts.as, nullptr);
    EXPECT_FALSE(result.image);
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].message, "this does not look like a memory file");
}

TEST_F(MemoryFile, OfAForeignKindSaysSo) {
    const read_result result = parse("\x7F"
                                     "ELF\1");
    ASSERT_EQ(codes_of(result.diagnostics), std::vector<std::string>{"foreign-content"});
    EXPECT_EQ(result.diagnostics[0].where, (place{1, 1, 0, 4}));
}

/// A format that accepts everything, and one that cannot be read.
read_result read_anything(std::string_view /*contents*/, const read_options& /*options*/) {
    read_result result;
    result.image.emplace(image_of(8, {"00"}));
    return result;
}
constexpr std::string_view no_extensions[] = {"none"};
const format any_format = {.id = "any", .title = "Any", .extensions = no_extensions, .read = read_anything};
const format closed_format = {.id = "closed", .title = "Closed", .extensions = no_extensions};

read_result read_nothing(std::string_view contents, const read_options& options) {
    read_result result = read_anything(contents, options);
    result.image.reset();
    result.facts.diagnostics_left_out = 4;
    result.diagnostics = {diagnose::bad_digit(places(), "t", "toy", "hexadecimal"),
                          diagnose::no_words(places())};
    return result;
}
const format refusing_format = {.id = "no", .title = "No", .extensions = no_extensions, .read = read_nothing};

TEST_F(MemoryFile, OfSurelyAnotherFormatHasThatAsItsOneFault) {
    const read_result result = parse("toy 8\n", {.as = &refusing_format});
    ASSERT_EQ(codes_of(result.diagnostics), std::vector<std::string>{"other-format"});
    EXPECT_EQ(result.diagnostics[0].message, "this looks like Toy, not like No");
    EXPECT_EQ(result.diagnostics[0].hint, "read it with --from toy");
    EXPECT_EQ(result.facts.diagnostics_left_out, 0U);
    EXPECT_EQ(result.facts.as, &refusing_format);
}

TEST_F(MemoryFile, ThatIsReadAsAnotherFormatIsSuspect) {
    const read_result result = parse("toy 8\n", {.as = &any_format});
    EXPECT_TRUE(result.image);
    ASSERT_EQ(codes_of(result.diagnostics), std::vector<std::string>{"read-as-other-format"});
    EXPECT_EQ(result.diagnostics[0].message, "this looks like Toy, but was read as Any");
}

TEST_F(MemoryFile, OfAFormatThatCannotBeReadIsAMistakeOfTheCaller) {
    EXPECT_THROW(static_cast<void>(parse("", {.as = &closed_format})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(repair("", {.read = {.as = &closed_format}, .consumers = {}})),
                 std::invalid_argument);
}

TEST_F(MemoryFile, WithNothingWrongHasNoDiagnostics) {
    const read_result result = check(full_toy());
    EXPECT_THAT(result.diagnostics, IsEmpty());
    EXPECT_TRUE(result.image);
}

TEST_F(MemoryFile, WithGapsIsSuspect) {
    const read_result result = check("toy 8\n0 01\n2 02\n");
    ASSERT_EQ(codes_of(result.diagnostics), std::vector<std::string>{"gap"});
    EXPECT_EQ(result.diagnostics[0].message, "14 of 16 words are never set, the first at address 1");
    EXPECT_EQ(result.diagnostics[0].hint, "the library kvr holds 0 there");
}

TEST_F(MemoryFile, WithOneGapSaysIs) {
    std::string text = full_toy();
    text.erase(6, 5);
    const read_result result = check(text, {.read = {}, .consumers = {}});
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].message, "1 of 16 words is never set, the first at address 0");
    EXPECT_EQ(result.diagnostics[0].hint, "") << "no consumer is asked for";
}

TEST_F(MemoryFile, WithoutWordsIsSuspect) {
    EXPECT_EQ(codes_of(check("toy 8\n").diagnostics), std::vector<std::string>{"no-words"});
}

TEST_F(MemoryFile, ThatConsumersReadOtherwiseHasThatInFileOrder) {
    const std::string contents = "toy 8\n0 00\n5 66\n6 01??\n";
    EXPECT_EQ(codes_of(check(contents).diagnostics), (std::vector<std::string>{"kvr-refuses", "gap"}));
    const read_result result = check("toy 8\n0 00\n5 66\n");
    ASSERT_EQ(codes_of(result.diagnostics), (std::vector<std::string>{"kvr-reads-other-words", "gap"}));
    EXPECT_EQ(result.diagnostics[0].message, "the library kvr reads 00 at address 5, but the file has 66");
    EXPECT_EQ(result.diagnostics[0].where, (place{3, 1, 11, 4}));
    EXPECT_EQ(codes_of(check("toy 8\n0 00\n5 66\n", {.read = {}, .consumers = {"another"}}).diagnostics),
              std::vector<std::string>{"gap"});
}

TEST_F(MemoryFile, ThatIsBrokenIsNotCheckedFurther) {
    EXPECT_EQ(codes_of(check("toy 8\nno\n").diagnostics), std::vector<std::string>{"bad-digit"});
    EXPECT_EQ(
        codes_of(check("toy 8\nno\n", {.read = {.keep_going = true}, .consumers = {"kvr"}}).diagnostics),
        std::vector<std::string>{"bad-digit"});
}

/// A reader that finds no words and reports this itself, and one that returns no image.
read_result read_empty(std::string_view contents, const read_options& options) {
    read_result result = read_anything(contents, options);
    result.image.emplace(image_of(8, {""}));
    result.diagnostics = {diagnose::no_words(places())};
    return result;
}
read_result read_imageless(std::string_view /*contents*/, const read_options& /*options*/) {
    return {};
}

TEST_F(MemoryFile, WithoutWordsIsReportedOnce) {
    const format empty = {.id = "e", .title = "E", .extensions = no_extensions, .read = read_empty};
    EXPECT_EQ(codes_of(check("", {.read = {.as = &empty}, .consumers = {}}).diagnostics),
              std::vector<std::string>{"no-words"});
    const format imageless = {.id = "i", .title = "I", .extensions = no_extensions, .read = read_imageless};
    EXPECT_THAT(check("", {.read = {.as = &imageless}, .consumers = {}}).diagnostics, IsEmpty());
}

TEST_F(MemoryFile, IsRepairedUntilNothingCertainIsLeft) {
    const repaired file = repair("toy 8\n0 01??\n1 02\n2 03???\n");
    EXPECT_EQ(file.contents, "toy 8\n0 01\n1 02\n2 03\n");
    EXPECT_EQ(codes_of(file.repairs), (std::vector<std::string>(5, "kvr-refuses")));
    EXPECT_EQ(file.repairs[0].repair, "mark removed");
    EXPECT_EQ(codes_of(file.left.diagnostics), std::vector<std::string>{"gap"});
    EXPECT_TRUE(file.left.image);
}

TEST_F(MemoryFile, IsRepairedBeyondTheLimitOfDiagnostics) {
    std::string text = full_toy();
    for (std::size_t line_end = 10; line_end < text.size(); line_end += 6) {
        text.insert(line_end, "?");
    }
    const repaired file = repair(text, {.read = {.most_diagnostics = 2}, .consumers = {"kvr"}});
    EXPECT_EQ(file.contents, full_toy());
    EXPECT_EQ(file.repairs.size(), 16U);
}

TEST_F(MemoryFile, IsRepairedAThousandTimesAtMost) {
    const repaired file = repair("toy 8\n0 01" + std::string(1002, '?') + "\n");
    EXPECT_EQ(file.contents, "toy 8\n0 01??\n");
    EXPECT_EQ(file.repairs.size(), 1000U);
    EXPECT_EQ(codes_of(file.left.diagnostics), (std::vector<std::string>{"kvr-refuses", "gap"}));
}

TEST_F(MemoryFile, WithoutRepairsStaysAsItIs) {
    const repaired file = repair("toy 8\nno\n");
    EXPECT_EQ(file.contents, "toy 8\nno\n");
    EXPECT_THAT(file.repairs, IsEmpty());
    EXPECT_EQ(codes_of(file.left.diagnostics), std::vector<std::string>{"bad-digit"});
    EXPECT_THROW(static_cast<void>(repair("Dear reader,")), std::invalid_argument);
}

TEST_F(MemoryFile, IsWrittenInTheFormatOfItsName) {
    write(image_of(8, {"0A", "", "FF"}), folder.path("a.toy"));
    EXPECT_EQ(folder.read("a.toy"), "toy 8\n0 0A\n2 FF\n");
    write(image_of(8, {"0A"}), folder.path("a.none"), {.as = &toy});
    EXPECT_EQ(folder.read("a.none"), "toy 8\n0 0A\n");
}

TEST_F(MemoryFile, IsReadAsItWasWritten) {
    EXPECT_EQ(to_text(*parse(full_toy()).image, {.as = &toy}), full_toy());
}

TEST_F(MemoryFile, IsNotWrittenWhereItsFormatCannotHoldTheImage) {
    folder.write("a.toy", "old");
    const memory_image image = image_of(12, {"00A"});
    EXPECT_EQ(codes_of(can_write(image, {.as = &toy})), std::vector<std::string>{"too-wide"});
    EXPECT_THROW(write(image, folder.path("a.toy")), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(to_text(image, {.as = &toy})), std::invalid_argument);
    EXPECT_EQ(folder.read("a.toy"), "old");
    EXPECT_EQ(folder.count_files(), 1);
}

TEST_F(MemoryFile, IsNotWrittenWithoutAFormatThatCan) {
    const memory_image image = image_of(8, {"0A"});
    EXPECT_THROW(write(image, folder.path("a.unknown")), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(can_write(image, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(can_write(image, {.as = &closed_format})), std::invalid_argument);
    EXPECT_EQ(folder.count_files(), 0);
}

void write_one_letter(const memory_image& /*image*/, const write_options& /*options*/, text_sink& output) {
    output.write("x");
}

TEST_F(MemoryFile, IsWrittenByAFormatWithoutLimits) {
    const format plain = {.id = "p", .title = "P", .extensions = no_extensions, .write = write_one_letter};
    EXPECT_THAT(can_write(image_of(8, {"0A"}), {.as = &plain}), IsEmpty());
    EXPECT_EQ(to_text(image_of(8, {"0A"}), {.as = &plain}), "x");
}

TEST_F(MemoryFile, CannotBeWrittenWhereNoFolderIs) {
    EXPECT_THROW(write(image_of(8, {"0A"}), folder.path("none/a.toy")), std::system_error);
    EXPECT_THROW(write_contents("text", folder.path("none/a.toy")), std::system_error);
}

TEST_F(MemoryFile, IsReplacedByOtherContents) {
    folder.write("a.toy", "old");
    write_contents("new\n", folder.path("a.toy"));
    EXPECT_EQ(folder.read("a.toy"), "new\n");
    EXPECT_EQ(folder.count_files(), 1);
}

} // namespace
