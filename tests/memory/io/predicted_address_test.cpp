#include "kvr/memory/io/predicted_address.h"
#include "tests/memory/number_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using kvr::predicted_address;

struct line_style {
    std::string before;
    std::string after;
    unsigned base;
    std::size_t digits;
    bool lower_case;

    [[nodiscard]] std::string line(std::uint64_t address) const {
        return before + kvr_test::number_text(address, base, digits, !lower_case) + after;
    }
};

/// The text after a line.
const std::string rest_of_lines(predicted_address::readable, '.');

void learn(predicted_address& predicted, const line_style& style, std::uint64_t address,
           std::uint64_t count) {
    const std::string line = style.line(address);
    predicted.learn(line, std::string_view(line).substr(style.before.size(), style.digits), style.base,
                    address, count);
}

const line_style styles[] = {
    {"\t", "  :   ", 16, 6, false}, {"", ":", 16, 3, true},         {"", ":", 10, 4, false},
    {" ", " : ", 8, 5, false},      {"", ":", 2, 13, false},        {"        ", " : ", 16, 4, false},
    {":01", "00", 16, 4, false},    {"", ":       ", 10, 9, false},
};

TEST(PredictedAddress, NewOneMatchesNothing) {
    const predicted_address predicted;
    EXPECT_FALSE(predicted.matches(rest_of_lines.data()));
    EXPECT_FALSE(predicted.matches(std::string(64, '\0').data()));
}

TEST(PredictedAddress, GoesOnLineByLine) {
    for (const line_style& style : styles) {
        for (const std::uint64_t step : {1U, 2U, 8U, 16U, 33U}) {
            predicted_address predicted;
            learn(predicted, style, 0, step);
            if (style.lower_case) {
                // The first letter determines the case.
                predicted = predicted_address();
                learn(predicted, style, 0, 10);
                learn(predicted, style, 10, step);
            }
            for (std::uint64_t address = predicted.address(); address < 500; address += step) {
                ASSERT_EQ(predicted.address(), address);
                const std::string line = style.line(address);
                ASSERT_TRUE(predicted.matches((line + rest_of_lines).data())) << line;
                ASSERT_EQ(predicted.size(), line.size());
                std::string other = line;
                for (char& character : other) {
                    ++character;
                    ASSERT_FALSE(predicted.matches((other + rest_of_lines).data())) << other;
                    --character;
                }
                predicted.advance(step);
            }
        }
    }
}

TEST(PredictedAddress, LinesUpToTheNextCarryAreCounted) {
    for (const line_style& style : styles) {
        if (style.lower_case) {
            continue;
        }
        predicted_address predicted;
        learn(predicted, style, 0, 1);
        for (std::uint64_t address = 1; address < 300;) {
            const std::uint64_t at_once = predicted.lines_at_once();
            std::string lines;
            for (std::uint64_t i = 0; i < at_once; ++i) {
                lines += style.line(address + i) + ";";
            }
            const std::size_t line_size = style.line(address).size() + 1;
            const auto is_rest = [](const char* text) { return *text == ';'; };
            ASSERT_EQ(predicted.count_predicted((lines + rest_of_lines).data(), line_size, at_once, is_rest),
                      at_once);
            lines[lines.size() - 1] = ':';
            ASSERT_EQ(predicted.count_predicted((lines + rest_of_lines).data(), line_size, at_once, is_rest),
                      at_once - 1);
            predicted.advance(at_once);
            address += at_once;
            ASSERT_EQ(predicted.address(), address);
        }
    }
}

TEST(PredictedAddress, NothingIsPredictedAfterTheLastAddressOfTheDigits) {
    predicted_address predicted;
    const line_style style{"", ":", 16, 2, false};
    learn(predicted, style, 0, 0xFF);
    ASSERT_TRUE(predicted.matches(("FF:" + rest_of_lines).data()));
    predicted.advance(1);
    EXPECT_FALSE(predicted.matches(("00:" + rest_of_lines).data()));
    EXPECT_FALSE(predicted.matches(("100:" + rest_of_lines).data()));
}

TEST(PredictedAddress, AddressesThatJumpAreNotPredicted) {
    predicted_address predicted;
    const line_style style{"", ":", 16, 2, false};
    learn(predicted, style, 5, 1);
    EXPECT_FALSE(predicted.matches(("06:" + rest_of_lines).data()));
    learn(predicted, style, 6, 1);
    EXPECT_TRUE(predicted.matches(("07:" + rest_of_lines).data()));
}

TEST(PredictedAddress, AJumpEndsThePredictionOfTheLinesBeforeIt) {
    predicted_address predicted;
    const line_style style{"", ":", 16, 2, false};
    learn(predicted, style, 0, 1);
    learn(predicted, style, 5, 1);
    EXPECT_EQ(predicted.size(), 0U);
    EXPECT_FALSE(predicted.matches(("01:" + rest_of_lines).data()));
}

TEST(PredictedAddress, LettersAreWrittenLikeTheLastOnes) {
    predicted_address predicted;
    line_style style{"", ":", 16, 2, true};
    learn(predicted, style, 0, 0xE);
    learn(predicted, style, 0xE, 2);
    learn(predicted, style, 0x10, 0xA); // has no letter
    EXPECT_TRUE(predicted.matches(("1a:" + rest_of_lines).data()));
    style.lower_case = false;
    learn(predicted, style, 0x1A, 1);
    EXPECT_TRUE(predicted.matches(("1B:" + rest_of_lines).data()));
}

TEST(PredictedAddress, LongBlanksAreNotPredicted) {
    const auto size_after = [](std::size_t blanks) {
        predicted_address predicted;
        learn(predicted, {std::string(blanks, ' '), ":", 16, 2, false}, 0, 1);
        return predicted.size();
    };
    EXPECT_EQ(size_after(predicted_address::readable - 3), predicted_address::readable);
    EXPECT_EQ(size_after(predicted_address::readable - 2), 0U);
    EXPECT_EQ(size_after(predicted_address::readable + 6), 0U);
}

} // namespace
