#include "tools/kvrmem/lsp/text_buffer.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvrmem::lsp::position_encoding;
using kvrmem::lsp::text_buffer;
using kvrmem::lsp::text_position;

constexpr std::array encodings = {position_encoding::utf8, position_encoding::utf16};

/// What a text_buffer answers, worked out from the first byte on each time.
class plain_text {
public:
    plain_text(std::string contents, position_encoding unit_of_positions)
        : text(std::move(contents)),
          unit(unit_of_positions) {}

    /// The position of every offset, in order.
    [[nodiscard]] std::vector<text_position> positions() const {
        std::vector<text_position> all;
        text_position here;
        for (std::size_t at = 0; at <= text.size(); ++at) {
            all.push_back(here);
            if (at == text.size()) {
                break;
            }
            const bool ends_line =
                text[at] == '\n' || (text[at] == '\r' && (at + 1 == text.size() || text[at + 1] != '\n'));
            here = ends_line ? text_position{here.line + 1, 0}
                             : text_position{here.line, here.character + units_of(text[at])};
        }
        return all;
    }
    /// The offset of the last character that begins at or before @p where, on its line.
    [[nodiscard]] std::size_t offset_of(const text_position& where) const {
        const std::vector<text_position> all = positions();
        std::size_t found = text.size();
        for (std::size_t at = text.size() + 1; at-- > 0;) {
            if (all[at].line == where.line) {
                const bool is_line_end = at < text.size() && (text[at] == '\n' || text[at] == '\r');
                const bool is_end = at == text.size() || is_line_end;
                found = at;
                if (is_begin(at) && all[at].character <= where.character && (!is_end || !ends_before(at))) {
                    return at;
                }
            }
        }
        return found;
    }
    std::string text;

private:
    [[nodiscard]] bool is_begin(std::size_t at) const {
        return at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U;
    }
    /// True within a CR LF.
    [[nodiscard]] bool ends_before(std::size_t at) const {
        return at > 0 && at < text.size() && text[at] == '\n' && text[at - 1] == '\r';
    }
    [[nodiscard]] std::uint64_t units_of(char byte) const {
        const auto value = static_cast<unsigned char>(byte);
        if (unit == position_encoding::utf8) {
            return 1;
        }
        return (value & 0xC0U) == 0x80U ? 0 : (value >= 0xF0U ? 2 : 1);
    }

    position_encoding unit;
};

void expect_same(const text_buffer& buffer, const plain_text& model) {
    ASSERT_EQ(buffer.text(), model.text);
    const std::vector<text_position> positions = model.positions();
    ASSERT_EQ(buffer.line_count(), positions.back().line + 1);
    for (std::size_t at = 0; at < positions.size(); ++at) {
        const bool is_begin =
            at == model.text.size() || (static_cast<unsigned char>(model.text[at]) & 0xC0U) != 0x80U;
        if (is_begin) {
            ASSERT_EQ(buffer.position_of(at), positions[at]) << at;
        }
    }
}

/// A text of pieces that are hard to count.
std::string random_text(std::mt19937& random, std::size_t most) {
    constexpr std::array<std::string_view, 10> pieces = {
        "a", "1F ", "\n", "\r", "\r\n", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xF0\x90\x8D\x88z",
        ";"};
    std::string text;
    for (std::size_t count = random() % (most + 1); count > 0; --count) {
        text += pieces.at(random() % pieces.size());
    }
    return text;
}

TEST(TextBuffer, FollowsAPlainTextThroughRandomEdits) {
    for (const position_encoding unit : encodings) {
        std::mt19937 random(7);
        for (int round = 0; round < 60; ++round) {
            plain_text model(random_text(random, 30), unit);
            text_buffer buffer(model.text, unit);
            expect_same(buffer, model);
            for (int change = 0; change < 12; ++change) {
                const text_position one{random() % (buffer.line_count() + 1), random() % 8};
                const text_position other{random() % (buffer.line_count() + 1), random() % 8};
                ASSERT_EQ(buffer.offset_of(one), model.offset_of(one)) << one.line << ":" << one.character;
                const std::size_t begin = std::min(buffer.offset_of(one), buffer.offset_of(other));
                const std::size_t end = std::max(buffer.offset_of(one), buffer.offset_of(other));
                const std::string replacement = random_text(random, 5);
                buffer.replace(begin, end, replacement);
                model.text.replace(begin, end - begin, replacement);
                expect_same(buffer, model);
            }
        }
    }
}

TEST(TextBuffer, TakesAnyBytesAtAnyPlace) {
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        plain_text model("", position_encoding::utf8);
        text_buffer buffer("", position_encoding::utf8);
        for (int change = 0; change < 10; ++change) {
            const std::size_t one = random() % (model.text.size() + 1);
            const std::size_t length = random() % (model.text.size() - one + 1);
            std::string bytes;
            for (std::size_t count = random() % 4; count > 0; --count) {
                constexpr std::string_view some = "\r\n\x80\xFFz";
                bytes += some[random() % some.size()];
            }
            buffer.replace(one, one + length, bytes);
            model.text.replace(one, length, bytes);
            expect_same(buffer, model);
        }
    }
}

TEST(TextBuffer, CountsSurrogatePairsAsTwo) {
    const text_buffer buffer("a\xF0\x9F\x98\x80z", position_encoding::utf16);
    EXPECT_EQ(buffer.position_of(5), (text_position{0, 3}));
    EXPECT_EQ(buffer.offset_of({0, 3}), 5U);
    EXPECT_EQ(buffer.offset_of({0, 2}), 1U); // between the two
}

TEST(TextBuffer, CutsPositionsThatAreBeyond) {
    const text_buffer buffer("ab\r\ncd", position_encoding::utf16);
    EXPECT_EQ(buffer.offset_of({0, 99}), 2U);
    EXPECT_EQ(buffer.offset_of({1, 99}), 6U);
    EXPECT_EQ(buffer.offset_of({2, 0}), 6U);
    EXPECT_EQ(buffer.offset_of({~std::uint64_t{0}, ~std::uint64_t{0}}), 6U);
}

TEST(TextBuffer, KnowsItsLines) {
    const text_buffer buffer("ab\r\n\rcd\n", position_encoding::utf8);
    ASSERT_EQ(buffer.line_count(), 4U);
    EXPECT_EQ(buffer.start_of(1), 4U);
    EXPECT_EQ(buffer.end_of(0), 2U);
    EXPECT_EQ(buffer.end_of(1), 4U);
    EXPECT_EQ(buffer.end_of(2), 7U);
    EXPECT_EQ(buffer.end_of(3), 8U);
    EXPECT_EQ(buffer.line_of(3), 0U);
    EXPECT_EQ(buffer.line_of(8), 3U);
}

} // namespace
