// Sessions of random messages: valid ones in any order, canceled, damaged, cut, and with other types. Nothing
// may crash or hang. Each request gets one answer, with a result or with an error of the protocol.

#include "tests/lsp/session.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>

namespace {

using namespace lsp_tests;

constexpr std::array<std::string_view, 19> methods = {
    "initialize",
    "initialized",
    "shutdown",
    "$/cancelRequest",
    "textDocument/didOpen",
    "textDocument/didChange",
    "textDocument/didClose",
    "workspace/didChangeConfiguration",
    "textDocument/hover",
    "textDocument/definition",
    "textDocument/foldingRange",
    "textDocument/documentSymbol",
    "textDocument/inlayHint",
    "textDocument/formatting",
    "textDocument/semanticTokens/full",
    "textDocument/codeAction",
    "workspace/symbol",
    "workspace/executeCommand",
    "textDocument/unknown",
};

constexpr std::array<std::string_view, 7> texts = {
    "WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n[0..7] : 1 2;\n8 : 5\n9 : X3;\nEND;\n",
    "1F 20\n@8 3x\n// comment\n",
    "@0\n12 34\n",
    ":0400000012345678E8\n:00000001FF\n",
    "memory_initialization_radix=16;\nmemory_initialization_vector=1,2;\n",
    "S1050000414277\nS9030000FC\n",
    "\r\n\xF0\x9F\x98\x80 z\r",
};
constexpr std::array<std::string_view, 5> uris = {"file:///a.mif", "file:///b.mem", "file:///c.hex",
                                                  "file:///%zz", ""};

class message_maker {
public:
    explicit message_maker(unsigned seed) : random(seed) {}

    std::size_t below(std::size_t limit) { return random() % limit; }
    bool once_in(std::size_t times) { return below(times) == 0; }
    template <class Texts>
    std::string one_of(const Texts& all) {
        return std::string(all.at(below(all.size())));
    }

    json message() {
        json made = {{"jsonrpc", "2.0"}, {"method", one_of(methods)}, {"params", params()}};
        if (once_in(2)) {
            made["id"] = next_id++;
        }
        if (once_in(20)) {
            damage(made);
        }
        return made;
    }
    /// @p text with some bytes changed or its end removed.
    std::string damaged(std::string text) {
        for (std::size_t count = below(4); count > 0 && !text.empty(); --count) {
            text[below(text.size())] = static_cast<char>(below(256));
        }
        return once_in(5) ? text.substr(0, below(text.size() + 1)) : text;
    }

private:
    json place() { return position(static_cast<int>(below(10)), static_cast<int>(below(12))); }
    json range() { return {{"start", place()}, {"end", place()}}; }
    json params() {
        const std::string uri = one_of(uris);
        json made = {
            {"textDocument", {{"uri", uri}, {"version", below(9)}, {"text", one_of(texts)}}},
            {"position", place()},
            {"range", range()},
            {"context", {{"diagnostics", json::array()}}},
            {"contentChanges", {{{"range", range()}, {"text", damaged(one_of(texts)).substr(0, 5)}}}},
            {"query", "0x" + std::to_string(below(20))},
            {"id", below(next_id + 1)},
            {"command", one_of(commands)},
            {"arguments", {uri, "0x" + std::to_string(below(9)), once_in(2) ? "5" : "hex"}},
            {"settings",
             {{"kvrmem", {{"width", below(40)}, {"address-unit", once_in(2) ? "byte" : "word"}}}}}};
        make_utf8(made["contentChanges"][0]["text"]);
        if (once_in(10)) {
            damage(made);
        }
        return made;
    }
    /// A client sends only UTF-8.
    static void make_utf8(json& text) {
        text = json::parse(text.dump(-1, ' ', false, json::error_handler_t::replace));
    }
    /// Changes the type of a member, or of a member within it, or removes it.
    void damage(json& object) {
        auto member = object.begin();
        std::advance(member, static_cast<std::ptrdiff_t>(below(object.size())));
        if (member->is_structured() && !member->empty() && once_in(2)) {
            damage(*member);
            return;
        }
        static const std::array<json, 6> others = {json(),    json(-1),         json(1e300),
                                                   json("x"), json::array({1}), json::object()};
        *member = others.at(below(others.size()));
    }

    static constexpr std::array<std::string_view, 6> commands = {
        "kvrmem.set", "kvrmem.invert", "kvrmem.fixAll", "kvrmem.changeRadix", "kvrmem.splitRange", "other"};

    std::mt19937 random;
    std::size_t next_id = 1;
};

const std::set<int> known_errors = {-32700, -32600, -32601, -32602, -32603, -32002, -32800, -32803};

/// Examines the messages of the server and counts its answers by id.
void count_answers(const std::vector<json>& sent, std::map<json, int>& answers) {
    for (const json& each : sent) {
        ASSERT_EQ(each.at("jsonrpc"), "2.0");
        if (each.contains("method")) {
            continue;
        }
        ASSERT_NE(each.contains("result"), each.contains("error")) << each;
        if (each.contains("error")) {
            ASSERT_TRUE(known_errors.contains(each["error"]["code"].get<int>())) << each;
            ASSERT_NE(each["error"]["code"], -32603) << each;
        }
        ++answers[each.at("id")];
    }
}

bool is_id(const json& id) {
    return id.is_number_integer() || id.is_string();
}

TEST(SessionFuzz, EveryRequestIsAnsweredOnce) {
    for (unsigned seed = 0; seed < 32; ++seed) {
        SCOPED_TRACE(seed);
        message_maker maker(seed);
        session client;
        if (seed % 8 != 0) {
            client.initialize();
        }
        std::map<json, int> expected;
        std::map<json, int> answers;
        for (int block = 0; block < 12; ++block) {
            std::string bytes;
            for (std::size_t count = 1 + maker.below(6); count > 0; --count) {
                const json message = maker.message();
                if (message["method"] == "shutdown" && !maker.once_in(20)) {
                    continue;
                }
                const bool is_response = !message.contains("method");
                if (message.contains("id") && is_id(message["id"]) && !is_response) {
                    ++expected[message["id"]];
                }
                bytes += framed(message.dump());
            }
            client.send_bytes(bytes);
            count_answers(client.received(), answers);
        }
        answers.erase(json()); // answers to messages without a readable id
        EXPECT_EQ(answers, expected);
    }
}

TEST(SessionFuzz, DamagedStreamsAreSurvived) {
    for (unsigned seed = 100; seed < 140; ++seed) {
        SCOPED_TRACE(seed);
        message_maker maker(seed);
        session client;
        client.initialize();
        std::map<json, int> ignored;
        for (int block = 0; block < 12; ++block) {
            std::string bytes = framed(maker.message().dump(-1, ' ', false, json::error_handler_t::replace));
            client.send_bytes(maker.damaged(bytes));
            count_answers(client.received(), ignored);
        }
        EXPECT_FALSE(client.server().has_ended());
    }
}

} // namespace
