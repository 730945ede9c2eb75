#include "kvrimage/edit/quoted_text.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvrimage::parse_quoted_text;
using kvrimage::quoted_text;
using kvrimage::quoted_text_fault;
using kvrimage::words_of_text;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::uint64_t> values_of_text(std::string_view bytes, std::uint32_t width) {
    std::vector<std::uint64_t> values;
    for (const kvrimage::word& each : words_of_text(bytes, width).words) {
        EXPECT_EQ(each.width(), width);
        values.push_back(each.to_unsigned().value());
    }
    return values;
}

TEST(QuotedText, EndsAtItsQuote) {
    const quoted_text text = parse_quoted_text(R"("v1.2" # rest")");
    EXPECT_EQ(text.bytes, "v1.2");
    EXPECT_EQ(text.length, 6U);
    EXPECT_FALSE(text.fault);
}

TEST(QuotedText, MayBeEmpty) {
    const quoted_text text = parse_quoted_text(R"("")");
    EXPECT_EQ(text.bytes, "");
    EXPECT_EQ(text.length, 2U);
    EXPECT_FALSE(text.fault);
}

TEST(QuotedText, HasEscapes) {
    using namespace std::string_view_literals;
    const std::string_view written = R"("\n\r\t\0\\\"\x7f\xC3a")";
    const quoted_text text = parse_quoted_text(written);
    EXPECT_EQ(text.bytes, "\n\r\t\0\\\"\x7F\xC3"
                          "a"sv);
    EXPECT_EQ(text.length, written.size());
    EXPECT_FALSE(text.fault);
}

TEST(QuotedText, WithoutItsEndIsAFault) {
    for (const std::string_view open : {R"(")", R"("ab)", R"("ab\")"}) {
        const quoted_text text = parse_quoted_text(open);
        EXPECT_EQ(text.fault, quoted_text_fault::not_closed) << open;
        EXPECT_EQ(text.length, open.size()) << open;
    }
}

TEST(QuotedText, WithAnotherEscapeIsAFaultThere) {
    for (const std::string_view bad : {R"("a\q")", R"("a\x4")", R"("a\xg0")", R"("a\x)", R"("a\)"}) {
        const quoted_text text = parse_quoted_text(bad);
        EXPECT_EQ(text.fault, quoted_text_fault::bad_escape) << bad;
        EXPECT_EQ(text.length, 2U) << bad;
        EXPECT_EQ(text.bytes, "a") << bad;
    }
}

TEST(QuotedText, BecomesAWordForEachByte) {
    EXPECT_THAT(values_of_text("A\xC3\xA9", 8), ElementsAre(0x41, 0xC3, 0xA9));
    EXPECT_THAT(values_of_text("AB", 32), ElementsAre(0x41, 0x42));
    EXPECT_THAT(values_of_text("AB", 7), ElementsAre(0x41, 0x42));
    EXPECT_THAT(values_of_text("", 8), IsEmpty());
}

TEST(QuotedText, WithAByteThatIsTooWideHasNoWords) {
    const kvrimage::text_as_words made = words_of_text("AB\xC3", 7);
    EXPECT_EQ(made.too_wide, 2U);
    EXPECT_THAT(made.words, IsEmpty());
    EXPECT_FALSE(words_of_text("AB", 7).too_wide);
}

/// A byte in a random one of its possible spellings.
std::string written_byte(memory_maker& maker, char byte) {
    constexpr std::string_view named("\n\r\t\0\\\"", 6);
    constexpr std::string_view letters = R"(nrt0\")";
    const std::size_t index = named.find(byte);
    if (index != std::string_view::npos && maker.below(2) == 0) {
        return {'\\', letters[index]};
    }
    if (byte == '\\' || byte == '"' || maker.below(3) == 0) {
        constexpr std::string_view digits = "0123456789abcDEF";
        const auto value = static_cast<unsigned char>(byte);
        return {'\\', 'x', digits[value >> 4U], digits[value & 15U]};
    }
    return {byte};
}

TEST(QuotedText, ComesBackHoweverItIsWritten) {
    memory_maker maker(20260102);
    for (int round = 0; round < rounds(2000); ++round) {
        std::string bytes;
        std::string written = "\"";
        for (std::uint64_t count = maker.below(12); count != 0; --count) {
            bytes += static_cast<char>(maker.below(256));
            written += written_byte(maker, bytes.back());
        }
        const quoted_text text = parse_quoted_text(written + "\",\"");
        ASSERT_EQ(text.bytes, bytes) << written;
        ASSERT_EQ(text.length, written.size() + 1) << written;
        ASSERT_FALSE(text.fault) << written;
    }
}

} // namespace
