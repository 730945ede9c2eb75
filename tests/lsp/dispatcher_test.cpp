#include "tools/kvrmem/lsp/dispatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using kvrmem::lsp::dispatcher;
using kvrmem::lsp::error_code;
using kvrmem::lsp::framed_message;
using kvrmem::lsp::json;
using kvrmem::lsp::request_error;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A dispatcher with some handlers, and the messages that it has sent.
class Dispatcher : public testing::Test {
protected:
    Dispatcher() : messages([this](const std::string& text) { sent.push_back(text); }) {
        messages.on_request("initialize", [](const json&) { return json{{"ready", true}}; });
        messages.on_request("echo", [](const json& params) { return params; });
        messages.on_request("fail", [](const json&) -> json {
            throw request_error(error_code::request_failed, "it does not go");
        });
        messages.on_request("text", [](const json& params) { return params.at("text").get<std::string>(); });
        messages.on_request("break", [](const json&) -> json { throw std::runtime_error("broken"); });
        messages.on_request("exhaust", [](const json&) -> json { throw std::bad_alloc(); });
        messages.on_notification("note", [this](const json& params) { notes.push_back(params.dump()); });
        messages.on_notification("bad note", [](const json&) { throw std::runtime_error("broken"); });
        messages.on_notification("exhausting note", [](const json&) { throw std::bad_alloc(); });
    }

    void take(const std::string& text) { messages.take({framed_message::kind::complete, text}); }
    void handle_all() {
        while (messages.handle_next()) {
        }
    }
    void run(const std::string& text) {
        take(text);
        handle_all();
    }
    void initialize() {
        run(R"({"jsonrpc":"2.0","id":0,"method":"initialize"})");
        sent.clear();
    }

    std::vector<std::string> sent;
    std::vector<std::string> notes;
    dispatcher messages;
};

std::string error_text(const std::string& id, int code, const std::string& message) {
    return R"({"error":{"code":)" + std::to_string(code) + R"(,"message":")" + message + R"("},"id":)" + id +
           R"(,"jsonrpc":"2.0"})";
}

TEST_F(Dispatcher, AnswersRequests) {
    initialize();
    run(R"({"jsonrpc":"2.0","id":"a","method":"echo","params":[1,"x"]})");
    EXPECT_THAT(sent, ElementsAre(R"({"id":"a","jsonrpc":"2.0","result":[1,"x"]})"));
}

TEST_F(Dispatcher, HandlesNotifications) {
    initialize();
    run(R"({"jsonrpc":"2.0","method":"note","params":{"a":1}})");
    run(R"({"jsonrpc":"2.0","method":"bad note"})");
    run(R"({"jsonrpc":"2.0","method":"$/other"})");
    EXPECT_THAT(notes, ElementsAre(R"({"a":1})"));
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(Dispatcher, WaitsForInitialize) {
    run(R"({"jsonrpc":"2.0","id":1,"method":"echo"})");
    run(R"({"jsonrpc":"2.0","method":"note"})");
    EXPECT_THAT(sent, ElementsAre(error_text("1", -32002, "the first request must be 'initialize'")));
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(Dispatcher, IsInitializedOnce) {
    initialize();
    run(R"({"jsonrpc":"2.0","id":1,"method":"initialize"})");
    EXPECT_THAT(sent, ElementsAre(error_text("1", -32600, "the server is already initialized")));
}

TEST_F(Dispatcher, TakesNothingButExitAfterShutdown) {
    initialize();
    run(R"({"jsonrpc":"2.0","id":1,"method":"shutdown"})");
    run(R"({"jsonrpc":"2.0","id":2,"method":"echo"})");
    run(R"({"jsonrpc":"2.0","method":"note"})");
    EXPECT_FALSE(messages.has_ended());
    run(R"({"jsonrpc":"2.0","method":"exit"})");
    EXPECT_TRUE(messages.has_ended());
    EXPECT_TRUE(messages.was_shut_down());
    take(R"({"jsonrpc":"2.0","id":3,"method":"echo"})");
    EXPECT_FALSE(messages.handle_next());
    EXPECT_THAT(sent, ElementsAre(R"({"id":1,"jsonrpc":"2.0","result":null})",
                                  error_text("2", -32600, "the server was shut down")));
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(Dispatcher, KnowsThatItWasNotShutDown) {
    run(R"({"jsonrpc":"2.0","method":"exit"})");
    EXPECT_TRUE(messages.has_ended());
    EXPECT_FALSE(messages.was_shut_down());
}

TEST_F(Dispatcher, ReportsWhatFails) {
    initialize();
    run(R"({"jsonrpc":"2.0","id":1,"method":"fail"})");
    run(R"({"jsonrpc":"2.0","id":2,"method":"break"})");
    run(R"({"jsonrpc":"2.0","id":3,"method":"none"})");
    EXPECT_THAT(sent,
                ElementsAre(error_text("1", -32803, "it does not go"), error_text("2", -32603, "broken"),
                            error_text("3", -32601, "there is no request 'none'")));
    sent.clear();
    run(R"({"jsonrpc":"2.0","id":4,"method":"text","params":{"text":1}})");
    EXPECT_THAT(sent, ElementsAre(HasSubstr(R"("code":-32602)")));
}

TEST_F(Dispatcher, LetsExhaustedMemoryPass) {
    initialize();
    EXPECT_THROW(run(R"({"jsonrpc":"2.0","id":1,"method":"exhaust"})"), std::bad_alloc);
    EXPECT_THROW(run(R"({"jsonrpc":"2.0","method":"exhausting note"})"), std::bad_alloc);
}

TEST_F(Dispatcher, ReportsWhatIsNoMessage) {
    run("{");
    run("\"\xFF\"");
    run("[]");
    run("1");
    run(R"({"id":5,"method":"echo"})");
    run(R"({"jsonrpc":"2.0","id":6})");
    run(R"({"jsonrpc":"2.0","id":1.5,"method":"echo"})");
    run(R"({"jsonrpc":"2.0","id":7,"method":"echo","params":1})");
    EXPECT_THAT(sent, ElementsAre(error_text("null", -32700, "the message is not JSON"),
                                  error_text("null", -32700, "the message is not JSON"),
                                  error_text("null", -32600, "batches are not supported by the protocol"),
                                  error_text("null", -32600, "a message must be an object"),
                                  error_text("5", -32600, "jsonrpc must be 2.0"),
                                  error_text("6", -32600, "a message must have a method"),
                                  error_text("null", -32600, "an id must be an integer or a string"),
                                  error_text("7", -32600, "params must be an object or an array")));
}

TEST_F(Dispatcher, ReportsHeadersAndLengths) {
    messages.take({framed_message::kind::bad_header});
    messages.take({framed_message::kind::too_long});
    EXPECT_THAT(sent, ElementsAre(error_text("null", -32700, "a header without a usable Content-Length"),
                                  error_text("null", -32600, "the message is too long")));
}

TEST_F(Dispatcher, BoundsNesting) {
    initialize();
    run(R"({"jsonrpc":"2.0","id":1,"method":"none","params":)" + std::string(1000000, '[') + "}");
    EXPECT_THAT(sent, ElementsAre(error_text("null", -32600, "the message is nested too deeply")));
}

TEST_F(Dispatcher, BoundsValues) {
    dispatcher strict([this](const std::string& text) { sent.push_back(text); }, 100);
    const auto take_arrays = [&strict](int count) {
        std::string arrays = "[]";
        for (int index = 1; index < count; ++index) {
            arrays += ",[]";
        }
        strict.take({framed_message::kind::complete,
                     R"({"jsonrpc":"2.0","id":1,"method":"none","params":[)" + arrays + "]}"});
    };
    take_arrays(90);
    EXPECT_THAT(sent, IsEmpty());
    take_arrays(101);
    EXPECT_THAT(sent, ElementsAre(error_text("null", -32600, "the message has too many values")));
}

TEST_F(Dispatcher, EndsWithAMessageThatCannotBeSkipped) {
    initialize();
    messages.take({framed_message::kind::endless});
    EXPECT_TRUE(messages.has_ended());
    EXPECT_FALSE(messages.was_shut_down());
    EXPECT_THAT(sent, ElementsAre(error_text("null", -32600,
                                             "the message is too long to be skipped: the session ends")));
}

TEST_F(Dispatcher, IsFullOfManyMessages) {
    initialize();
    for (int index = 0; index < 4095; ++index) {
        take(R"({"jsonrpc":"2.0","method":"note"})");
    }
    EXPECT_FALSE(messages.is_full());
    take(R"({"jsonrpc":"2.0","method":"note"})");
    EXPECT_TRUE(messages.is_full());
    EXPECT_TRUE(messages.handle_next());
    EXPECT_FALSE(messages.is_full());
}

TEST_F(Dispatcher, DoesNotRunWhatWasCancelled) {
    initialize();
    take(R"({"jsonrpc":"2.0","id":1,"method":"echo","params":[1]})");
    take(R"({"jsonrpc":"2.0","id":"1","method":"echo","params":[2]})");
    take(R"({"jsonrpc":"2.0","method":"$/cancelRequest","params":{"id":1}})");
    take(R"({"jsonrpc":"2.0","method":"$/cancelRequest","params":{"id":77}})");
    take(R"({"jsonrpc":"2.0","method":"$/cancelRequest"})");
    handle_all();
    EXPECT_THAT(sent, ElementsAre(error_text("1", -32800, "the request was cancelled"),
                                  R"({"id":"1","jsonrpc":"2.0","result":[2]})"));
}

TEST_F(Dispatcher, TakesResponsesForNothing) {
    initialize();
    run(R"({"jsonrpc":"2.0","id":"kvrmem-1","result":{"applied":true}})");
    run(R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":""}})");
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(Dispatcher, SendsNotificationsAndRequests) {
    messages.notify("a", {{"text", "\xFF"}});
    messages.request("b", json::array());
    messages.request("c", nullptr);
    EXPECT_THAT(sent,
                ElementsAre("{\"jsonrpc\":\"2.0\",\"method\":\"a\",\"params\":{\"text\":\"\xEF\xBF\xBD\"}}",
                            R"({"id":"kvrmem-1","jsonrpc":"2.0","method":"b","params":[]})",
                            R"({"id":"kvrmem-2","jsonrpc":"2.0","method":"c","params":null})"));
}

} // namespace
