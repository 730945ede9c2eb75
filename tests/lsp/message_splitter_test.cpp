#include "tools/kvrmem/lsp/message_splitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvrmem::lsp::framed_message;
using kvrmem::lsp::message_limits;
using kvrmem::lsp::message_splitter;
using testing::ElementsAre;

/// The results for @p bytes in blocks of @p block: texts, "<bad header>", "<too long>".
std::vector<std::string> split(std::string_view bytes, std::size_t block = 1000,
                               const message_limits& limits = {}) {
    message_splitter splitter(limits);
    std::vector<std::string> found;
    while (!bytes.empty()) {
        splitter.feed(bytes.substr(0, block));
        bytes.remove_prefix(std::min(block, bytes.size()));
        while (const auto message = splitter.next()) {
            found.push_back(message->what == framed_message::kind::complete     ? message->text
                            : message->what == framed_message::kind::bad_header ? "<bad header>"
                            : message->what == framed_message::kind::too_long   ? "<too long>"
                                                                                : "<endless>");
        }
    }
    return found;
}

TEST(MessageSplitter, SplitsMessagesCutAnywhere) {
    constexpr std::string_view stream = "Content-Length: 2\r\n\r\n{}Content-Length: 0\r\n\r\n"
                                        "content-length:\t 4 \r\nContent-Type: a; b\r\n\r\n\r\n\r\n";
    for (std::size_t block = 1; block < stream.size(); ++block) {
        EXPECT_THAT(split(stream, block), ElementsAre("{}", "", "\r\n\r\n")) << block;
    }
}

TEST(MessageSplitter, KeepsWhatIsNotComplete) {
    EXPECT_THAT(split("Content-Length: 3\r\n\r\n{}"), ElementsAre());
    EXPECT_THAT(split("Content-Length: 3\r\n"), ElementsAre());
}

TEST(MessageSplitter, GoesOnAfterABadHeader) {
    constexpr std::string_view good = "Content-Length: 1\r\n\r\nx";
    for (const std::string_view bad :
         {"\r\n\r\n", "Content-Length\r\n\r\n", "Content-Length:\r\n\r\n", "Content-Length: -1\r\n\r\n",
          "Content-Length: 1x\r\n\r\n", "Content-Length: 99999999999999999999\r\n\r\n", "Length: 1\r\n\r\n",
          "Content-Length: 1\r\nContent-Length: b\r\n\r\n"}) {
        EXPECT_THAT(split(std::string(bad).append(good)), ElementsAre("<bad header>", "x")) << bad;
    }
}

TEST(MessageSplitter, SkipsWhatIsTooLong) {
    const message_limits limits{4, 10, 100};
    constexpr std::string_view stream = "Content-Length: 5\r\n\r\n12345Content-Length: 4\r\n\r\n1234";
    for (std::size_t block = 1; block < stream.size(); ++block) {
        EXPECT_THAT(split(stream, block, limits), ElementsAre("<too long>", "1234")) << block;
    }
}

TEST(MessageSplitter, EndsWithWhatIsTooLongToBeSkipped) {
    const message_limits limits{4, 10, 100};
    EXPECT_THAT(split("Content-Length: 11\r\n\r\n12345678901Content-Length: 4\r\n\r\n1234", 7, limits),
                ElementsAre("<endless>"));
    EXPECT_THAT(split("Content-Length: 18446744073709551615\r\n\r\nContent-Length: 4\r\n\r\n1234"),
                ElementsAre("<endless>"));
}

TEST(MessageSplitter, BoundsHeaders) {
    const message_limits limits{100, 1000, 30};
    const std::string good = "Content-Length: 1\r\n\r\nx";
    const std::string long_one = "A: " + std::string(200, 'b') + "\r\n\r\n";
    for (std::size_t block = 1; block < 100; ++block) {
        EXPECT_THAT(split(long_one + good, block, limits), ElementsAre("<bad header>", "x")) << block;
    }
}

TEST(MessageSplitter, TakesAHeaderOfTheLimitWhereverItIsCut) {
    const std::string header = "Content-Length: 1\r\nA: bbbbbb";
    const message_limits limits{100, 1000, header.size()};
    const std::string good = header + "\r\n\r\nx";
    const std::string too_long = header + "b\r\n\r\n";
    for (std::size_t block = 1; block <= good.size(); ++block) {
        EXPECT_THAT(split(good, block, limits), ElementsAre("x")) << block;
        EXPECT_THAT(split(too_long, block, limits), ElementsAre("<bad header>")) << block;
    }
}

} // namespace
