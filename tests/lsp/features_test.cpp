// Sessions with the server: its answers to a client, feature by feature.

#include "tests/lsp/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace lsp_tests;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string mif_uri = "file:///work/boot%20rom.mif";
const std::string mif_text = "-- boot\n-- code\nWIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n[0..7] : 1A; -- all\n"
                             "10 : 41 06;\n10 : 07;\nEND;\n";

/// A session with one document.
class Features : public testing::Test {
protected:
    void start(const std::string& uri, const std::string& text, const json& options = nullptr,
               const json& capabilities = json::object()) {
        client.initialize(options, capabilities);
        client.open(uri, text);
    }
    std::string hover(const std::string& uri, int line, int character) {
        const json found = client.result("textDocument/hover", at(uri, line, character));
        return found.is_null() ? "" : found["contents"]["value"].get<std::string>();
    }
    json actions(const std::string& uri, int line, int character, const json& only = nullptr) {
        json params = {{"textDocument", {{"uri", uri}}},
                       {"range", {{"start", position(line, character)}, {"end", position(line, character)}}},
                       {"context", {{"diagnostics", json::array()}}}};
        if (!only.is_null()) {
            params["context"]["only"] = only;
        }
        return client.result("textDocument/codeAction", params);
    }
    std::vector<std::string> titles(const std::string& uri, int line, int character,
                                    const json& only = nullptr) {
        std::vector<std::string> all;
        for (const json& each : actions(uri, line, character, only)) {
            all.push_back(each["title"].get<std::string>());
        }
        return all;
    }
    std::string execute(const std::string& command, const json& arguments, const std::string& text) {
        client.result("workspace/executeCommand", {{"command", command}, {"arguments", arguments}});
        return client.applied(arguments[0].get<std::string>(), text);
    }
    std::string failure(const std::string& command, const json& arguments) {
        const json answer =
            client.request("workspace/executeCommand", {{"command", command}, {"arguments", arguments}});
        return answer.contains("error") ? answer["error"]["message"].get<std::string>() : "none";
    }

    session client;
};

TEST_F(Features, CapabilitiesNameTheEncoding) {
    EXPECT_EQ(session().initialize()["positionEncoding"], "utf-16");
    EXPECT_EQ(session().initialize(
                  nullptr, {{"general", {{"positionEncodings", {"utf-32", "utf-8"}}}}})["positionEncoding"],
              "utf-8");
    EXPECT_EQ(
        session().initialize(nullptr, {{"general", {{"positionEncodings", {"utf-16"}}}}})["positionEncoding"],
        "utf-16");
}

TEST_F(Features, DiagnosticsFollowEdits) {
    start(mif_uri, "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 100;\n1 : 1\nEND;\n");
    EXPECT_THAT(client.diagnostics(mif_uri),
                ElementsAre("4:5-4:8 error: value 100 needs 9 bits, the words have 8\nhint: needs WIDTH 9",
                            "5:6-6:1 error: no ';' after '1 : 1'"));
    client.edit(mif_uri, {3, 4, 3, 5}, "");
    client.edit(mif_uri, {4, 5, 4, 5}, ";");
    EXPECT_THAT(client.diagnostics(mif_uri), IsEmpty());
    EXPECT_THAT(client.received(), IsEmpty()); // nothing has changed since
}

TEST_F(Features, DiagnosticsMarkFurtherPlaces) {
    start(mif_uri, "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 100;\n1 : 101;\nEND;\n");
    EXPECT_THAT(
        client.diagnostics(mif_uri),
        ElementsAre(HasSubstr("4:5-4:8 error: value 100 needs 9 bits, the words have 8 (2 places in all)"),
                    "5:5-5:8 error: as in line 4: value 100 needs 9 bits, the words have 8"));
}

TEST_F(Features, DiagnosticsOfConsumers) {
    start(mif_uri, mif_text);
    const std::vector<std::string> found = client.diagnostics(mif_uri);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_THAT(found[0], HasSubstr("8:1-8:9 warning: address 10 is set again"));
    EXPECT_THAT(found[1], HasSubstr("hint: the library kvr holds 0 there"));
    client.notify("workspace/didChangeConfiguration", {{"settings", {{"kvrmem", {{"for", json::array()}}}}}});
    EXPECT_THAT(client.diagnostics(mif_uri)[1], Not(HasSubstr("hint")));
}

TEST_F(Features, DiagnosticsThatAreLeftOutAreCounted) {
    start("file:///a.coe", "a\nb\nc\n", {{"diagnostics", 1}, {"format", "coe"}});
    std::string text = "WIDTH=8;\nDEPTH=99;\nCONTENT BEGIN\n0 1;\n1 : 2\n2 : g;\nEND;\n";
    client.open(mif_uri, text);
    client.notify("workspace/didChangeConfiguration", {{"settings", {{"kvrmem", {{"format", nullptr}}}}}});
    EXPECT_THAT(client.diagnostics(mif_uri).back(), HasSubstr("more diagnostics not shown"));
}

TEST_F(Features, DiagnosticsCountUtf16) {
    start("file:///a.mem", "// \xF0\x9F\x98\x80\n/* \xF0\x9F\x98\x80 */ g\n");
    EXPECT_THAT(client.diagnostics("file:///a.mem"), ElementsAre(HasSubstr("2:10-2:11 error")));
    session other;
    other.initialize(nullptr, {{"general", {{"positionEncodings", {"utf-8"}}}}});
    other.open("file:///a.mem", "/* \xF0\x9F\x98\x80 */ g\n");
    EXPECT_THAT(other.diagnostics("file:///a.mem"), ElementsAre(HasSubstr("1:12-1:13 error")));
}

TEST_F(Features, DiagnosticsGoWhenADocumentIsClosed) {
    start(mif_uri, mif_text);
    client.notify("textDocument/didClose", {{"textDocument", {{"uri", mif_uri}}}});
    const std::vector<json> sent = client.received();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_THAT(sent[0]["params"]["diagnostics"], IsEmpty());
    EXPECT_EQ(client.error_of("textDocument/hover", at(mif_uri, 0, 0)), -32602);
}

TEST_F(Features, AFileOfBytesHasNone) {
    start("file:///a.bin", "anything\n");
    EXPECT_THAT(client.diagnostics("file:///a.bin"), IsEmpty());
    EXPECT_THAT(titles("file:///a.bin", 0, 0), IsEmpty());
}

TEST_F(Features, HoverShowsAWordInAllRadixes) {
    start(mif_uri, mif_text, {{"radix", "fixed:4.4"}});
    EXPECT_EQ(hover(mif_uri, 5, 10),
              "```text\naddress    0x00 (0)\nsets       8 words: 0x00..0x07\nhex        1A\n"
              "binary     00011010\noctal      032\nunsigned   26\nsigned     26\n"
              "fixed:4.4  1.625\n```");
    EXPECT_THAT(hover(mif_uri, 6, 8), HasSubstr("address    0x11 (17)\nhex        06\n"));
}

TEST_F(Features, HoverNamesTheLineThatReplacesAWord) {
    start(mif_uri, mif_text);
    EXPECT_THAT(hover(mif_uri, 6, 5), HasSubstr("hex        41\n"));
    EXPECT_THAT(hover(mif_uri, 6, 5), HasSubstr("replaced   by line 8\n"));
    EXPECT_THAT(hover(mif_uri, 7, 5), HasSubstr("hex        07\n"));
    EXPECT_THAT(hover(mif_uri, 7, 5), Not(HasSubstr("replaced")));
}

TEST_F(Features, HoverOfARangeShowsItsOwnWord) {
    start(mif_uri, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n[0..7] : 1F;\n0 : 20;\n[2..3] : 21;\n3 : 22;\nEND;\n");
    EXPECT_THAT(hover(mif_uri, 3, 9), HasSubstr("hex        1F\n"));
    EXPECT_THAT(hover(mif_uri, 3, 9), HasSubstr("replaced   3 words, the first by line 5\n"));
    EXPECT_THAT(hover(mif_uri, 5, 9), HasSubstr("replaced   1 word, the first by line 7\n"));
}

TEST_F(Features, HoverOfWordsThatTakeTurns) {
    start(mif_uri, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n[0..7] : 1 2;\n[3..4] : 3 4;\n0 : 5;\n"
                   "[0..3] : 6 7;\nEND;\n");
    EXPECT_THAT(hover(mif_uri, 3, 10), HasSubstr("hex        01\n"));
    EXPECT_THAT(hover(mif_uri, 3, 10), HasSubstr("replaced   3 words, the first by line 5\n"));
    EXPECT_THAT(hover(mif_uri, 3, 12), HasSubstr("hex        02\n"));
    EXPECT_THAT(hover(mif_uri, 3, 12), HasSubstr("replaced   2 words, the first by line 5\n"));
    EXPECT_THAT(hover(mif_uri, 6, 10), Not(HasSubstr("replaced")));
}

TEST_F(Features, HoverOfARangeThatIsAllReplaced) {
    start(mif_uri, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n[0..1] : 1F;\n[0..7] :\n 20;\nEND;\n");
    EXPECT_THAT(hover(mif_uri, 3, 9), HasSubstr("hex        1F\n"));
    EXPECT_THAT(hover(mif_uri, 3, 9), HasSubstr("replaced   2 words, the first by line 6\n"));
}

TEST_F(Features, HoverNoticesAReplacementOnTheSameLine) {
    start(mif_uri, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n0 : 1F; 0 : 20;\nEND;\n");
    EXPECT_THAT(hover(mif_uri, 3, 4), HasSubstr("hex        1F\n"));
    EXPECT_THAT(hover(mif_uri, 3, 4), HasSubstr("replaced   by line 4\n"));
    EXPECT_THAT(hover(mif_uri, 3, 12), Not(HasSubstr("replaced")));
}

TEST_F(Features, HoverOfReplacedRecordsAndLists) {
    start("file:///a.srec", "S1050000414277\nS1050000434473\nS9030000FC\n");
    EXPECT_THAT(hover("file:///a.srec", 0, 8), HasSubstr("hex        41\n"));
    EXPECT_THAT(hover("file:///a.srec", 0, 8), HasSubstr("replaced   by line 2\n"));
    client.open("file:///a.rif", "@0\n1F\n20\n@0\n21\n");
    EXPECT_THAT(hover("file:///a.rif", 1, 1), HasSubstr("hex        1F\n"));
    EXPECT_THAT(hover("file:///a.rif", 1, 1), HasSubstr("replaced   by line 5\n"));
}

TEST_F(Features, HoverOfAPartOfAWordShowsTheWhole) {
    start("file:///a.srec", "S104000041BA\nS104000142B8\nS9030000FC\n", {{"width", 16}, {"endian", "big"}});
    EXPECT_THAT(hover("file:///a.srec", 0, 8), HasSubstr("hex        4142\n"));
    EXPECT_THAT(hover("file:///a.srec", 0, 8), Not(HasSubstr("replaced")));
}

TEST_F(Features, HoverShowsCharactersAndAddressesOfBytes) {
    start("file:///a.srec", "S10700004142FF4333\nS9030000FC\n",
          {{"width", 32}, {"endian", "big"}, {"base", 0}});
    EXPECT_THAT(hover("file:///a.srec", 0, 9), HasSubstr("address    0x0 (0)\nbyte       0x0 (0)\n"));
    EXPECT_THAT(hover("file:///a.srec", 0, 9), HasSubstr("text       'AB.C'\n"));
}

TEST_F(Features, HoverCutsWideWordsAndShowsDontCareBits) {
    start("file:///a.mem", std::string(300, 'A') + "\nX" + std::string(299, 'B') + "\n");
    EXPECT_THAT(hover("file:///a.mem", 0, 3), HasSubstr("hex        " + std::string(200, 'A') + "...\n"));
    EXPECT_THAT(hover("file:///a.mem", 1, 3), Not(HasSubstr("signed")));
}

TEST_F(Features, HoverOfAnAddressShowsWhatItSets) {
    start(mif_uri, mif_text);
    EXPECT_EQ(hover(mif_uri, 5, 1), "```text\naddress    0x00 (0)\nsets       8 words: 0x00..0x07\n```");
}

TEST_F(Features, HoverOfARangeOfSeveralWords) {
    start(mif_uri, "WIDTH=8;\nDEPTH=8;\nCONTENT BEGIN\n[0..7] : 1 2;\nEND;\n");
    EXPECT_THAT(hover(mif_uri, 3, 12), HasSubstr("sets       4 words: 0x1..0x7 in steps of 2\n"));
}

TEST_F(Features, HoverSaysNothingElsewhere) {
    start(mif_uri, mif_text);
    EXPECT_EQ(hover(mif_uri, 0, 0), "");
    EXPECT_EQ(hover(mif_uri, 99, 99), "");
    client.open("file:///a.unknown", "nothing\n");
    EXPECT_EQ(hover("file:///a.unknown", 0, 0), "");
    client.open("file:///b.mem", "@G 1\n");
    EXPECT_EQ(hover("file:///b.mem", 0, 4), "");
}

TEST_F(Features, DefinitionIsThePlaceThatCounts) {
    start(mif_uri, mif_text);
    const json found = client.result("textDocument/definition", at(mif_uri, 6, 5));
    EXPECT_EQ(found["range"]["start"], position(7, 0));
    EXPECT_TRUE(client.result("textDocument/definition", at(mif_uri, 0, 0)).is_null());
}

TEST_F(Features, FoldsAreHeaderCommentsBlocksAndRuns) {
    start("file:///a.mif",
          "-- a\n-- b\nWIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n0 : 1;\n1 : 0;\n2 : 0;\n3 : 0;\n10 : 5;\nEND;\n");
    std::vector<std::string> folds;
    for (const json& each :
         client.result("textDocument/foldingRange", {{"textDocument", {{"uri", "file:///a.mif"}}}})) {
        folds.push_back(each["kind"].get<std::string>() + " " + each["startLine"].dump() + "-" +
                        each["endLine"].dump());
    }
    EXPECT_THAT(folds, ElementsAre("region 2-4", "comment 0-1", "region 5-8", "region 6-8"));
}

TEST_F(Features, FoldsOfGapsAreTheLinesBetweenBlocks) {
    const auto folds_of = [this](const std::string& uri) {
        std::vector<std::string> folds;
        for (const json& each :
             client.result("textDocument/foldingRange", {{"textDocument", {{"uri", uri}}}})) {
            folds.push_back(each["kind"].get<std::string>() + " " + each["startLine"].dump() + "-" +
                            each["endLine"].dump());
        }
        return folds;
    };
    start("file:///a.mem", "1\n\n// a\n\n@10 2\n\n\n3\n\n@5\n4\n");
    EXPECT_THAT(folds_of("file:///a.mem"), ElementsAre("region 4-7", "region 1-3"));
    client.open("file:///b.mem", "1\n// a\n// b\n\n@10\n2\n");
    EXPECT_THAT(folds_of("file:///b.mem"), ElementsAre("comment 1-2"));
}

TEST_F(Features, SymbolsAreHeaderAndBlocks) {
    start(mif_uri, mif_text);
    const json found = client.result("textDocument/documentSymbol", {{"textDocument", {{"uri", mif_uri}}}});
    std::vector<std::string> names;
    for (const json& each : found) {
        names.push_back(each["name"].get<std::string>() + ": " + each["detail"].get<std::string>());
    }
    EXPECT_THAT(names, ElementsAre("header: MIF, 32 words of 8 bits", "0x00..0x07: 8 words",
                                   "0x10..0x11: 2 words", "0x10: 1 word"));
    ASSERT_EQ(found[0]["children"].size(), 2U);
    EXPECT_EQ(found[0]["children"][1]["name"], "DEPTH");
    EXPECT_EQ(found[0]["children"][1]["detail"], "32");
    client.open("file:///a.unknown", "nothing\n");
    EXPECT_THAT(
        client.result("textDocument/documentSymbol", {{"textDocument", {{"uri", "file:///a.unknown"}}}}),
        IsEmpty());
    client.open("file:///a.mem", "1 2\n");
    EXPECT_EQ(
        client.result("textDocument/documentSymbol", {{"textDocument", {{"uri", "file:///a.mem"}}}}).size(),
        1U);
}

TEST_F(Features, SymbolsAreLimited) {
    std::string text;
    for (int number = 0; number < 6000; ++number) {
        text += "DEPTH=32;\n";
    }
    start(mif_uri, text + std::string(mif_text));
    const json found = client.result("textDocument/documentSymbol", {{"textDocument", {{"uri", mif_uri}}}});
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found[0]["name"], "header");
    EXPECT_EQ(found[0]["children"].size(), 5000U);
}

TEST_F(Features, WorkspaceSymbolsAreAddresses) {
    start(mif_uri, mif_text);
    client.open("file:///a.mem", "1 2\n3\n");
    const auto names_for = [this](const std::string& query) {
        std::vector<std::string> names;
        for (const json& each : client.result("workspace/symbol", {{"query", query}})) {
            names.push_back(each["containerName"].get<std::string>() + " " + each["name"].get<std::string>() +
                            " " + each["location"]["range"]["start"].dump());
        }
        return names;
    };
    EXPECT_THAT(names_for("0x2"), ElementsAre("a.mem 0x2 = 3 {\"character\":0,\"line\":1}",
                                              "boot rom.mif 0x02 = 1A {\"character\":0,\"line\":5}"));
    EXPECT_THAT(names_for("17"), ElementsAre("boot rom.mif 0x11 = 06 {\"character\":0,\"line\":6}"));
    EXPECT_THAT(names_for("1f"), IsEmpty());
    EXPECT_THAT(names_for("main"), IsEmpty());
    EXPECT_EQ(client.error_of("workspace/symbol", json::object()), -32602);
}

TEST_F(Features, InlayHintsAreAddressesThatAreNotWritten) {
    start("file:///a.mem", "1 2\n3\n@10 4\n5 6\n\n7 // x\n");
    const auto hints = [this](int first, int last) {
        std::vector<std::string> all;
        for (const json& each :
             client.result("textDocument/inlayHint",
                           {{"textDocument", {{"uri", "file:///a.mem"}}},
                            {"range", {{"start", position(first, 0)}, {"end", position(last, 0)}}}})) {
            all.push_back(each["position"]["line"].dump() + " " + each["label"].get<std::string>());
        }
        return all;
    };
    EXPECT_THAT(hints(0, 9), ElementsAre("0 0x00", "1 0x02", "3 0x11", "5 0x13"));
    EXPECT_THAT(hints(1, 2), ElementsAre("1 0x02"));
    client.open("file:///a.mem", "@1 g\n");
    EXPECT_THAT(hints(0, 9), IsEmpty());
}

TEST_F(Features, InlayHintsAreLimited) {
    std::string text;
    for (int number = 0; number < 12000; ++number) {
        text += "5\n";
    }
    start("file:///a.mem", text);
    const json range = {{"start", position(0, 0)}, {"end", position(20000, 0)}};
    EXPECT_EQ(client
                  .result("textDocument/inlayHint",
                          {{"textDocument", {{"uri", "file:///a.mem"}}}, {"range", range}})
                  .size(),
              10000U);
}

TEST_F(Features, InlayHintsCountAsTheFileDoes) {
    const auto hints = [this](const std::string& uri) {
        std::vector<std::string> all;
        for (const json& each :
             client.result("textDocument/inlayHint",
                           {{"textDocument", {{"uri", uri}}},
                            {"range", {{"start", position(0, 0)}, {"end", position(9, 0)}}}})) {
            all.push_back(each["position"]["line"].dump() + " " + each["label"].get<std::string>());
        }
        return all;
    };
    start("file:///a.txt", "@F000\n01 02\n04 05 06\nq\n", {{"width", 16}, {"endian", "little"}});
    EXPECT_THAT(hints("file:///a.txt"), ElementsAre("1 0xF000", "2 0xF002"));
    client.open("file:///a.csv", "address,value\n3,1F\n4,20\n");
    EXPECT_THAT(hints("file:///a.csv"), IsEmpty());
    client.open("file:///b.csv", "value\n1F\n20\n");
    EXPECT_THAT(hints("file:///b.csv"), ElementsAre("1 0x0", "2 0x1"));
    client.open("file:///c.csv", "value,address\n31,3\n32,4\n");
    EXPECT_THAT(hints("file:///c.csv"), IsEmpty());
    client.open("file:///d.mem", "1 2 @8 3\n4 @8 5\n");
    EXPECT_THAT(hints("file:///d.mem"), ElementsAre("0 0x0", "1 0x9"));
}

TEST_F(Features, FormattingChangesTheTextFromTheFirstLineThatDiffers) {
    start(mif_uri,
          "WIDTH=8;\nDEPTH=2;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\n\nCONTENT BEGIN\n\t0 : 1f;\nEND;\n");
    const json params = {{"textDocument", {{"uri", mif_uri}}},
                         {"options", {{"tabSize", 4}, {"insertSpaces", true}}}};
    EXPECT_EQ(client.result("textDocument/formatting", params),
              json::array({{{"range", {{"start", position(6, 0)}, {"end", position(8, 0)}}},
                            {"newText", "\t0  :   1F;\nEND;\n"}}}));
    client.open("file:///done.mif",
                "WIDTH=8;\nDEPTH=2;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\n\nCONTENT BEGIN\n"
                "\t0  :   1F;\nEND;\n");
    EXPECT_EQ(client.result("textDocument/formatting", {{"textDocument", {{"uri", "file:///done.mif"}}}}),
              json::array());
}

TEST_F(Features, FormattingOfABrokenFileOrOneOfNoFormatIsRefused) {
    start(mif_uri, "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1FF;\nEND;\n");
    EXPECT_EQ(client.error_of("textDocument/formatting", {{"textDocument", {{"uri", mif_uri}}}}), -32803);
    client.open("file:///a.unknown", "nothing\n");
    EXPECT_EQ(client.error_of("textDocument/formatting", {{"textDocument", {{"uri", "file:///a.unknown"}}}}),
              -32803);
    client.open("file:///a.bin", "nothing\n");
    EXPECT_EQ(client.error_of("textDocument/formatting", {{"textDocument", {{"uri", "file:///a.bin"}}}}),
              -32803);
}

TEST_F(Features, SemanticTokensAreThePieces) {
    start(mif_uri, "WIDTH=8; % a\n\nb %\nDEPTH=2;\nCONTENT BEGIN 0 : 1F;\nEND;\n");
    const json params = {{"textDocument", {{"uri", mif_uri}}}};
    EXPECT_EQ(
        client.result("textDocument/semanticTokens/full", params)["data"],
        json::parse("[0,0,5,1,0, 0,6,1,2,0, 0,3,3,0,0, 2,0,3,0,0, 1,0,5,1,0, 0,6,1,2,0, 1,0,7,1,0, 0,8,5,1,0,"
                    " 0,6,1,3,0, 0,4,2,4,0, 1,0,3,1,0]"));
    json in_range = params;
    in_range["range"] = {{"start", position(3, 0)}, {"end", position(4, 0)}};
    EXPECT_EQ(client.result("textDocument/semanticTokens/range", in_range)["data"],
              json::parse("[3,0,5,1,0, 0,6,1,2,0]"));
}

TEST_F(Features, QuickFixesAreRepairs) {
    const std::string text = "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1\n1 : 2;\nEND;\n";
    start(mif_uri, text);
    EXPECT_THAT(titles(mif_uri, 3, 0),
                ElementsAre("Fix: ';' put after the last value", "Make all certain repairs"));
    EXPECT_THAT(titles(mif_uri, 1, 0), ElementsAre("Make all certain repairs"));
    const json fix = actions(mif_uri, 3, 0, {"quickfix"});
    ASSERT_EQ(fix.size(), 1U);
    EXPECT_EQ(with_protocol_edits(text, fix[0]["edit"]["changes"][mif_uri]),
              "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1;\n1 : 2;\nEND;\n");
    EXPECT_EQ(execute("kvrmem.fixAll", {mif_uri}, text),
              "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1;\n1 : 2;\nEND;\n");
}

TEST_F(Features, EditsNameTheVersionOfTheText) {
    const std::string text = "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1\n1 : 2;\nEND;\n";
    start(mif_uri, text, nullptr, {{"workspace", {{"workspaceEdit", {{"documentChanges", true}}}}}});
    client.edit(mif_uri, {0, 0, 0, 0}, "\n");
    client.received();
    const json document = {{"uri", mif_uri}, {"version", 2}};
    const json fix = actions(mif_uri, 4, 0, {"quickfix"});
    ASSERT_EQ(fix.size(), 1U);
    EXPECT_FALSE(fix[0]["edit"].contains("changes"));
    EXPECT_EQ(fix[0]["edit"]["documentChanges"][0]["textDocument"], document);
    EXPECT_EQ(fix[0]["edit"]["documentChanges"][0]["edits"][0]["newText"], ";");
    client.result("workspace/executeCommand", {{"command", "kvrmem.fixAll"}, {"arguments", {mif_uri}}});
    const json asked = client.received().front()["params"]["edit"]["documentChanges"];
    EXPECT_EQ(asked[0]["textDocument"], document);
}

TEST_F(Features, RepairsEndLinesAsTheDocumentDoes) {
    const std::string text = "WIDTH=8;\r\nDEPTH=2;\r\nCONTENT BEGIN\r\n% a % 0 : 1;\r\n1 : 2;\r\nEND;\r\n";
    start(mif_uri, text);
    const json fix = actions(mif_uri, 3, 0, {"quickfix"});
    ASSERT_EQ(fix.size(), 1U);
    EXPECT_EQ(fix[0]["title"], "Fix: line break put after the comment");
    EXPECT_EQ(with_protocol_edits(text, fix[0]["edit"]["changes"][mif_uri]),
              "WIDTH=8;\r\nDEPTH=2;\r\nCONTENT BEGIN\r\n% a % \r\n0 : 1;\r\n1 : 2;\r\nEND;\r\n");
}

TEST_F(Features, AChecksumIsRecomputed) {
    const std::string uri = "file:///a.srec";
    const std::string text = "S105000041424C\nS9030000FC\n";
    start(uri, text);
    const json fix = actions(uri, 0, 0, {"quickfix"});
    ASSERT_EQ(fix.size(), 1U);
    EXPECT_EQ(with_protocol_edits(text, fix[0]["edit"]["changes"][uri]), "S1050000414277\nS9030000FC\n");
}

TEST_F(Features, ActionsForAWord) {
    start(mif_uri, mif_text);
    EXPECT_THAT(titles(mif_uri, 5, 10, {"refactor"}),
                ElementsAre("Set the word at 0x00 to 0", "Set all bits of the word at 0x00",
                            "Invert the word at 0x00", "Give each word of 0x00..0x07 a line of its own",
                            "Set 8 words that are not set to 0: 0x08..0x0F",
                            "Write the file with binary words, without its comments",
                            "Write the file with octal words, without its comments",
                            "Write the file with signed decimal words, without its comments",
                            "Write the file with unsigned decimal words, without its comments"));
    EXPECT_THAT(titles(mif_uri, 5, 10, {"source"}), IsEmpty());
    EXPECT_THAT(titles(mif_uri, 5, 10, {"quickfix", 1}), IsEmpty());
}

TEST_F(Features, NoChangesOfABrokenFile) {
    start(mif_uri, "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1;\n1 : g;\nEND;\n");
    EXPECT_THAT(titles(mif_uri, 3, 4), IsEmpty());
}

TEST_F(Features, NoChangesWhereTheFormatCannotBeEdited) {
    start("file:///a.mem", "1 2\n");
    EXPECT_THAT(titles("file:///a.mem", 0, 0), IsEmpty());
    EXPECT_EQ(failure("kvrmem.set", {"file:///a.mem", "0", "1"}),
              "words of $readmemh files cannot be set in place");
}

TEST_F(Features, ALastWordHasNoGapAfterIt) {
    start("file:///a.rif", "@0\n1 2\n");
    EXPECT_THAT(
        titles("file:///a.rif", 1, 2, {"refactor"}),
        ElementsAre("Set the word at 0x1 to 0", "Set all bits of the word at 0x1", "Invert the word at 0x1"));
}

TEST_F(Features, CommandsSetWords) {
    start(mif_uri, mif_text);
    EXPECT_THAT(execute("kvrmem.set", {mif_uri, "0x11", "0b11"}, mif_text), HasSubstr("10 : 41 03;"));
    EXPECT_THAT(execute("kvrmem.set", {mif_uri, "0x8..0xF", "-1"}, mif_text), HasSubstr("[8..F] : FF;"));
    EXPECT_THAT(execute("kvrmem.invert", {mif_uri, "0x11"}, mif_text), HasSubstr("10 : 41 F9;"));
    EXPECT_EQ(execute("kvrmem.set", {mif_uri, "0x11", "6"}, mif_text), "<no edit>");
}

TEST_F(Features, CommandsSplitRanges) {
    start(mif_uri, mif_text);
    EXPECT_THAT(execute("kvrmem.splitRange", {mif_uri, "0..7"}, mif_text),
                HasSubstr("0 : 1A; -- all\n1 : 1A;\n2 : 1A;\n3 : 1A;\n4 : 1A;\n5 : 1A;\n6 : 1A;\n7 : 1A;\n"));
    const std::string deep = "WIDTH=8;\nDEPTH=9999;\nCONTENT BEGIN\n[0..1FFF] : 0;\nEND;\n";
    client.open("file:///b.mif", deep);
    EXPECT_EQ(failure("kvrmem.splitRange", {"file:///b.mif", "0..0x1FFF"}),
              "the range has more than 4096 words");
}

TEST_F(Features, ARangeWithAReplacedWordIsNotSplit) {
    start(mif_uri, "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n[0..3] : 1F;\n1 : 20;\nEND;\n");
    EXPECT_THAT(titles(mif_uri, 3, 9, {"refactor"}), Not(Contains(HasSubstr("a line of its own"))));
    EXPECT_THAT(titles(mif_uri, 3, 1, {"refactor"}), Not(Contains(HasSubstr("a line of its own"))));
}

TEST_F(Features, ARangeOfSeveralWordsIsSplitAsAWhole) {
    const std::string text = "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n[0..3] : 1F 2F;\nEND;\n";
    start(mif_uri, text);
    for (const int character : {1, 9, 12}) {
        EXPECT_THAT(titles(mif_uri, 3, character, {"refactor"}),
                    Contains("Give each word of 0x0..0x3 a line of its own"));
    }
    EXPECT_THAT(execute("kvrmem.splitRange", {mif_uri, "0..3"}, text),
                HasSubstr("0 : 1F;\n1 : 2F;\n2 : 1F;\n3 : 2F;\n"));
}

TEST_F(Features, CommandsChangeTheRadix) {
    const std::string text = "WIDTH=8;\nDEPTH=2;\nADDRESS_RADIX=DEC;\nCONTENT BEGIN\n0 : \xC3\xA4;\nEND;\n";
    start(mif_uri, "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1F;\n1 : 20;\nEND;\n");
    EXPECT_THAT(execute("kvrmem.changeRadix", {mif_uri, "bin"},
                        "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1F;\n1 : 20;\nEND;\n"),
                HasSubstr("00011111;"));
    EXPECT_EQ(failure("kvrmem.changeRadix", {mif_uri, "ter"}), "a radix is bin, oct, dec, uns or hex");
    client.open("file:///broken.mif", "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1;\n1 : 8Z;\nEND;\n");
    EXPECT_EQ(failure("kvrmem.changeRadix", {"file:///broken.mif", "bin"}),
              "a file with errors would lose words");
    client.open("file:///lists.mem", "@0 1 2\n");
    EXPECT_EQ(failure("kvrmem.changeRadix", {"file:///lists.mem", "bin"}),
              "the file does not state its radix, or is read from a base");
}

TEST_F(Features, WordsOfAFileThatIsReadFromABaseAreSetAtItsAddresses) {
    const std::string text = "WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n10 : 1F;\nEND;\n";
    start(mif_uri, text, {{"base", 0x10}});
    EXPECT_THAT(hover(mif_uri, 3, 6), HasSubstr("address    0x0 (0)\n"));
    EXPECT_THAT(titles(mif_uri, 3, 6, {"refactor"}), Contains("Set the word at 0x0 to 0"));
    EXPECT_EQ(execute("kvrmem.set", {mif_uri, "0", "1"}, text),
              "WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n10 : 01;\nEND;\n");
}

TEST_F(Features, RepairsThatWouldLeaveErrorsAreRefused) {
    start(mif_uri, "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n[1..1] : 1F;\n1 : 20;\nEND;\n");
    EXPECT_THAT(failure("kvrmem.fixAll", {mif_uri}), HasSubstr("the repairs would leave errors: address 1"));
}

TEST_F(Features, CommandsReportWhatIsWrong) {
    start(mif_uri, mif_text);
    EXPECT_EQ(failure("kvrmem.set", {mif_uri, "0x20", "1"}), "0x20 is not an address of the memory");
    EXPECT_EQ(failure("kvrmem.set", {mif_uri, "x", "1"}), "x is not an address of the memory");
    EXPECT_EQ(failure("kvrmem.set", {mif_uri, "0", "256"}),
              "kvrmem.set: value 256 needs 9 bits, the word has 8");
    EXPECT_EQ(failure("kvrmem.set", {mif_uri, "0"}), "argument 3: expected a word, as in 0x1F");
    EXPECT_EQ(failure("kvrmem.other", {mif_uri}), "there is no command 'kvrmem.other'");
    EXPECT_EQ(failure("kvrmem.set", {"file:///other"}), "file:///other is not open");
    EXPECT_EQ(failure("kvrmem.set", json::array()), "the first argument must be the URI of a document");
    client.open("file:///a.unknown", "nothing\n");
    EXPECT_EQ(failure("kvrmem.fixAll", {"file:///a.unknown"}), "the contents fit no format");
    EXPECT_EQ(failure("kvrmem.set", {"file:///a.unknown", "0", "1"}),
              "the words of the file are not known; see its diagnostics");
}

TEST_F(Features, FaultySettingsAreReported) {
    start(mif_uri, mif_text, {{"kvrmem", {{"width", "many"}}}});
    EXPECT_EQ(client.received()[0]["params"]["message"], "kvrmem.width: expected a number from 1 to 1048576");
}

TEST_F(Features, OptionsOfTheCommandLineHoldUntilSettingsCome) {
    kvrmem::lsp::file_settings given;
    given.check.read.width = 16;
    session other(given);
    other.initialize();
    other.open("file:///a.mem", "123\n");
    EXPECT_THAT(other.result("textDocument/hover", at("file:///a.mem", 0, 0)).dump(),
                HasSubstr("hex        0123"));
}

TEST_F(Features, ChangesThatAreNoArrayAreLeftOut) {
    start("file:///a.mem", "g\n");
    EXPECT_EQ(client.diagnostics("file:///a.mem").size(), 1U);
    client.notify("textDocument/didChange", {{"textDocument", {{"uri", "file:///a.mem"}, {"version", 5}}},
                                             {"contentChanges", {{"x", {{"text", "A\n"}}}}}});
    EXPECT_THAT(client.received(), IsEmpty());
}

TEST_F(Features, ARequestIsCancelledWhileAnotherIsHandled) {
    start("file:///a.mem", "1\n2\n");
    const auto receive = [this](const json& message) { client.server().receive(framed(message.dump())); };
    for (const int id : {71, 72}) {
        receive(
            {{"jsonrpc", "2.0"}, {"id", id}, {"method", "workspace/symbol"}, {"params", {{"query", "0x1"}}}});
    }
    EXPECT_TRUE(client.server().handle_next());
    receive({{"jsonrpc", "2.0"}, {"method", "$/cancelRequest"}, {"params", {{"id", 72}}}});
    EXPECT_TRUE(client.server().handle_next());
    EXPECT_FALSE(client.server().has_waiting());
    const std::vector<json> sent = client.received();
    ASSERT_GE(sent.size(), 2U);
    EXPECT_EQ(sent[0]["result"].size(), 1U);
    EXPECT_EQ(sent[1]["error"]["code"], -32800);
}

TEST_F(Features, WholeTextsReplaceADocument) {
    start("file:///a.mem", "g\n");
    client.notify("textDocument/didChange", {{"textDocument", {{"uri", "file:///a.mem"}, {"version", 5}}},
                                             {"contentChanges", {{{"text", "A\n"}}}}});
    const std::vector<json> sent = client.received();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0]["params"]["version"], 5);
    EXPECT_THAT(sent[0]["params"]["diagnostics"], IsEmpty());
}

} // namespace
