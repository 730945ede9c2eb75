#include "tools/kvrmem/lsp/outline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kvrmem::lsp::document;
using kvrmem::lsp::line_range;
using kvrmem::lsp::outline;
using kvrmem::lsp::outline_block;
using kvrmem::lsp::outline_of;
using kvrmem::lsp::outline_setting;
using testing::ElementsAre;
using testing::IsEmpty;

outline outline_of_text(const std::string& name, const std::string& text) {
    document made("file:///" + name, 1, text, {});
    made.use({});
    return outline_of(made);
}

std::string lines_of(const line_range& lines) {
    return std::to_string(lines.first) + "-" + std::to_string(lines.last);
}

std::vector<std::string> blocks_of(const outline& found) {
    std::vector<std::string> texts;
    for (const outline_block& each : found.blocks) {
        texts.push_back(lines_of(each.lines) + " " + std::to_string(each.addresses.first) + ".." +
                        std::to_string(each.addresses.last));
    }
    return texts;
}

std::vector<std::string> texts_of(const std::vector<line_range>& all) {
    std::vector<std::string> texts;
    for (const line_range& each : all) {
        texts.push_back(lines_of(each));
    }
    return texts;
}

TEST(Outline, HasBlocksOfAddressesThatFollowEachOther) {
    EXPECT_THAT(blocks_of(outline_of_text("a.mem", "1 2\n3\n@10 4\n5\n@8 6\n@9 7\n")),
                ElementsAre("0-1 0..2", "2-3 16..17", "4-5 8..9"));
}

TEST(Outline, TakesRangesOfSeveralWordsForOneBlock) {
    const outline found =
        outline_of_text("a.mif", "WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n[0..7] : 1 2;\n8 : 3;\n"
                                 "4 : 5;\n10 : 6;\nEND;\n");
    EXPECT_THAT(blocks_of(found), ElementsAre("3-4 0..8", "5-5 4..4", "6-6 16..16"));
    EXPECT_EQ(found.blocks[0].where.offset, 34U); // the address, not the word
}

TEST(Outline, LeavesOutWordsWithoutAnAddress) {
    EXPECT_THAT(blocks_of(outline_of_text("a.rif", "@G\n1\n2\n@0\n3\n")), ElementsAre("4-4 0..0"));
}

TEST(Outline, KeepsAWordOfTwoRecordsInItsBlock) {
    document made("file:///a.hex", 1, ":020000001234B8\n:0200020056782E\n:00000001FF\n", {});
    kvrmem::lsp::file_settings settings;
    settings.check.read.width = 32;
    settings.check.read.unit = kvrimage::address_unit::byte;
    settings.check.read.order = kvrimage::byte_order::little;
    made.use(settings);
    EXPECT_THAT(blocks_of(outline_of(made)), ElementsAre("0-1 0..0"));
}

TEST(Outline, HasTheSettingsBeforeTheWords) {
    const std::string text = "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1;\nEND;\n";
    std::vector<std::string> settings;
    for (const outline_setting& each : outline_of_text("a.mif", text).settings) {
        settings.push_back(std::string(each.name.in(text)) + "=" + std::string(each.value.in(text)));
    }
    EXPECT_THAT(settings, ElementsAre("WIDTH=8", "DEPTH=4", "CONTENT=", "BEGIN="));
}

TEST(Outline, HasCommentsOfSeveralLines) {
    EXPECT_THAT(
        texts_of(outline_of_text("a.mem", "// a\n// b\n1 // c\n// d\n2\n/* e\n*/ // f\n// g\n/* h\n\n*/ 3\n")
                     .comments),
        ElementsAre("0-1", "5-9"));
    EXPECT_THAT(texts_of(outline_of_text("a.mem", "2\n// a\n\n// b\n// c\n").comments), ElementsAre("3-4"));
    EXPECT_THAT(texts_of(outline_of_text("a.mem", "3\n/* a\nb */ 2\n").comments), IsEmpty());
}

TEST(Outline, HasRunsOfEqualLines) {
    EXPECT_THAT(texts_of(outline_of_text("a.mem", "A\nA\nA\n1\n1\n2\n2 2\n2\n").runs),
                ElementsAre("0-2", "5-7"));
    EXPECT_THAT(texts_of(outline_of_text("a.mem", "A\nA\nA\nA 1\n1\n1\n1 1\n").runs),
                ElementsAre("0-2", "4-6"));
    EXPECT_THAT(texts_of(outline_of_text("a.mem", "A 1\n1\n1\n").runs), IsEmpty());
    EXPECT_THAT(texts_of(outline_of_text("a.mem", "1 A\nA\nA\n\nA\nA\nA\n").runs), ElementsAre("4-6"));
}

} // namespace
