#include "kvrimage/operations/error_correction/ecc_code.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace {

using namespace kvrimage;
using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(EccCheck, CoversNoBitOutsideOfItsMask) {
    const ecc_check check{.first_limb = 1, .mask = {0b10}};
    EXPECT_TRUE(check.covers(65));
    EXPECT_FALSE(check.covers(64));
    EXPECT_FALSE(check.covers(1));
    EXPECT_FALSE(check.covers(129));
}

/// @p value with bit @p bit changed.
word with_wrong_bit(const word& value, std::uint32_t bit) {
    std::string digits = value.to_text(radix::bin).value();
    char& digit = digits[digits.size() - 1 - bit];
    digit = digit == '0' ? '1' : '0';
    return word_of_digits(digits);
}

/// The data widths with which each scheme is tested.
std::vector<std::uint32_t> widths_of(std::string_view name) {
    std::vector<std::uint32_t> widths;
    for (const std::uint32_t width :
         {1U, 2U, 3U, 4U, 5U, 8U, 11U, 12U, 16U, 26U, 27U, 32U, 57U, 64U, 120U, 128U, 200U}) {
        try {
            static_cast<void>(ecc_scheme::named(name, width));
            widths.push_back(width);
        } catch (const std::invalid_argument&) {
        }
    }
    return widths;
}

class EccScheme : public testing::TestWithParam<ecc_scheme_name> {};

TEST_P(EccScheme, GivesTheDataBack) {
    memory_maker maker(3);
    for (const std::uint32_t width : widths_of(GetParam().name)) {
        const ecc_scheme scheme = ecc_scheme::named(GetParam().name, width);
        ASSERT_EQ(ecc_scheme::of_protected(GetParam().name, scheme.width()).data_width(), width);
        for (int round = 0; round < 20; ++round) {
            const word data = word_of_digits(maker.bits(width));
            const word value = scheme.encoded(data);
            ASSERT_EQ(value.width(), scheme.width());
            const ecc_result found = scheme.decoded(value);
            ASSERT_EQ(found.what, ecc_result::state::intact);
            ASSERT_EQ(found.data, data);
        }
    }
}

TEST_P(EccScheme, DoesWithEachWrongBitWhatItsStrengthSays) {
    memory_maker maker(4);
    for (const std::uint32_t width : widths_of(GetParam().name)) {
        const ecc_scheme scheme = ecc_scheme::named(GetParam().name, width);
        const word data = word_of_digits(maker.bits(width));
        const word value = scheme.encoded(data);
        ASSERT_TRUE(scheme.strength().finds_single);
        for (std::uint32_t bit = 0; bit < scheme.width(); ++bit) {
            const ecc_result found = scheme.decoded(with_wrong_bit(value, bit));
            if (scheme.strength().corrects_single) {
                ASSERT_EQ(found.what, ecc_result::state::corrected) << width << ' ' << bit;
                ASSERT_EQ(found.data, data);
                ASSERT_EQ(found.bit, bit);
            } else {
                ASSERT_EQ(found.what, ecc_result::state::damaged);
                ASSERT_EQ(found.bit, std::nullopt);
            }
        }
    }
}

TEST_P(EccScheme, DoesWithEachPairOfWrongBitsWhatItsStrengthSays) {
    memory_maker maker(5);
    for (const std::uint32_t width : widths_of(GetParam().name)) {
        const ecc_scheme scheme = ecc_scheme::named(GetParam().name, width);
        if (width > 64) {
            continue;
        }
        const word value = scheme.encoded(word_of_digits(maker.bits(width)));
        bool finds_all = true;
        for (std::uint32_t second = 1; second < scheme.width(); ++second) {
            const word wrong = with_wrong_bit(value, second);
            for (std::uint32_t first = 0; first < second; ++first) {
                finds_all &= scheme.decoded(with_wrong_bit(wrong, first)).what == ecc_result::state::damaged;
            }
        }
        ASSERT_EQ(finds_all, scheme.strength().finds_double) << width;
    }
}

INSTANTIATE_TEST_SUITE_P(All, EccScheme,
                         testing::ValuesIn(ecc_scheme::known().begin(), ecc_scheme::known().end()),
                         [](const auto& one) {
                             std::string name(one.param.name);
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST(EccSchemes, ParityBesideItsByteMakesBytesOfNineBits) {
    EXPECT_EQ(ecc_scheme::named("even-parity-8", 16).encoded(word::of(0x0180, 16)),
              word_of_digits("1"
                             "00000001"
                             "1"
                             "10000000"));
    EXPECT_EQ(ecc_scheme::named("odd-parity-8", 16).encoded(word::of(0x0381, 16)),
              word_of_digits("1"
                             "00000011"
                             "1"
                             "10000001"));
    EXPECT_EQ(ecc_scheme::named("even-parity-8-top", 16).encoded(word::of(0x0381, 16)).width(), 18U);
    EXPECT_EQ(ecc_scheme::named("odd-parity-8-top", 16).encoded(word::of(0x0181, 16)),
              word_of_digits("01"
                             "0000000110000001"));
    EXPECT_EQ(ecc_scheme::named("even-parity", 3).encoded(word::of(4, 3)), word_of_digits("1100"));
    EXPECT_EQ(ecc_scheme::named("odd-parity", 3).encoded(word::of(4, 3)), word_of_digits("0100"));
}

TEST(EccSchemes, HammingHasItsCheckBitsAtPowersOfTwo) {
    // Data 1011: positions 3, 5, 6, 7; checks 1: 3^5^7, 2: 3^6^7, 4: 5^6^7; bit 0: the parity of the rest.
    EXPECT_EQ(ecc_scheme::named("hamming", 4).encoded(word_of_digits("1011")), word_of_digits("10101010"));
    EXPECT_EQ(ecc_scheme::named("hamming", 32).width(), 39U);
    EXPECT_EQ(ecc_scheme::named("hamming", 64).width(), 72U);
    EXPECT_EQ(ecc_scheme::named("hamming", 1).width(), 4U);
}

TEST(EccSchemes, HsiaoHasItsCheckBitsOnTop) {
    // A data bit sets the check bits whose masks contain it.
    EXPECT_EQ(ecc_scheme::named("hsiao-39-32", 32).encoded(word::of(1, 32)),
              word_of_digits("0011001" + std::string(31, '0') + "1"));
    EXPECT_EQ(ecc_scheme::named("hsiao-39-32-inverted", 32).encoded(word::of(0, 32)),
              word_of_digits("0101010" + std::string(32, '0')));
    EXPECT_EQ(ecc_scheme::named("hsiao-39-32-v1", 32).encoded(word::of(2, 32)),
              word_of_digits("1001100" + std::string(30, '0') + "10"));
    EXPECT_EQ(ecc_scheme::named("hsiao-72-64", 64).encoded(word::of(1, 64)),
              word_of_digits("00000111" + std::string(63, '0') + "1"));
}

TEST(EccSchemes, RefusesWhatThereIsNot) {
    EXPECT_THAT([] { static_cast<void>(ecc_scheme::named("triple", 8)); },
                ThrowsMessage<std::invalid_argument>("there is no error-correction scheme triple"));
    EXPECT_THAT([] { static_cast<void>(ecc_scheme::named("hsiao-39-32", 31)); },
                ThrowsMessage<std::invalid_argument>("hsiao-39-32 has no form for words of 31 bits"));
    EXPECT_THROW(static_cast<void>(ecc_scheme::named("even-parity-8", 12)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::named("even-parity", 0)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::named("even-parity", widest_word)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::named("hamming", widest_word - 3)), std::invalid_argument);
    EXPECT_THAT([] { static_cast<void>(ecc_scheme::of_protected("hsiao-39-32", 40)); },
                ThrowsMessage<std::invalid_argument>("hsiao-39-32 has no protected words of 40 bits"));
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_protected("even-parity", 0)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_protected("even-parity", 1)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_protected("even-parity", ~0U)), std::invalid_argument);
}

TEST(EccSchemes, RefusesWordsOfOtherWidthsAndDontCareBits) {
    const ecc_scheme scheme = ecc_scheme::named("hamming", 4);
    EXPECT_THROW(static_cast<void>(scheme.encoded(word::of(0, 5))), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(scheme.decoded(word::of(0, 4))), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(scheme.encoded(word_of_digits("00X0"))), std::domain_error);
}

TEST(EccMasks, SayWhatTheyAreGoodFor) {
    const auto strength_of_masks = [](const std::vector<std::string>& masks) {
        std::vector<word> words;
        for (const std::string& mask : masks) {
            words.push_back(word_of_digits(mask));
        }
        return ecc_scheme::of_masks(words).strength();
    };
    EXPECT_EQ(strength_of_masks({"1111"}), (ecc_strength{true, false, false}));
    EXPECT_EQ(strength_of_masks({"1110"}), (ecc_strength{false, false, false}));
    EXPECT_EQ(strength_of_masks({"1011", "1101", "1110"}), (ecc_strength{true, true, false}));
    EXPECT_EQ(strength_of_masks({"1011", "1101", "1110", "0111"}), (ecc_strength{true, true, true}));
}

TEST(EccMasks, CheckAndInvertTheirBits) {
    const std::array masks = {word_of_digits("0011"), word_of_digits("1000")};
    const ecc_scheme scheme = ecc_scheme::of_masks(masks, 2);
    EXPECT_EQ(scheme.data_width(), 4U);
    EXPECT_EQ(scheme.encoded(word_of_digits("1001")), word_of_digits("011001"));
    EXPECT_EQ(scheme.decoded(word_of_digits("011001")).what, ecc_result::state::intact);
}

TEST(EccMasks, RefusesMasksThatAreNone) {
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_masks({})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_masks(std::vector<word>(65, word::of(1, 8)))),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_masks(std::array{word::of(1, 8), word::of(1, 9)})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_masks(std::array{word::of(1, 1025)})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ecc_scheme::of_masks(std::array{word_of_digits("X")})),
                 std::invalid_argument);
}

/// Compares each protected word with the scheme's result for the word.
void expect_protection_of_words(const memory_image& image, const ecc_scheme& scheme) {
    const memory_image made = protected_by(image, scheme);
    ASSERT_EQ(made.base(), image.base());
    ASSERT_EQ(made.depth(), image.depth());
    for (std::uint64_t address = image.base(); address <= image.last_address(); ++address) {
        const auto data = image[address];
        ASSERT_EQ(made[address], data ? std::optional(scheme.encoded(*data)) : std::nullopt);
    }
    const ecc_report report = check_protection(made, scheme);
    EXPECT_EQ(report.checked, image.count_set());
    EXPECT_EQ(report.findings, std::vector<ecc_finding>());
    EXPECT_EQ(unprotected(made, scheme), image);
}

TEST(Protection, OfRandomMemoriesIsThatOfTheirWords) {
    memory_maker maker(6);
    for (const ecc_scheme_name& one : ecc_scheme::known()) {
        for (const std::uint32_t width : widths_of(one.name)) {
            expect_protection_of_words(maker.memory(width, 300, 0, 9), ecc_scheme::named(one.name, width));
        }
    }
}

TEST(Protection, WrongBitsAreFoundAndCorrected) {
    memory_maker maker(7);
    for (const std::uint32_t width : {8U, 32U, 64U, 120U, 200U}) {
        const ecc_scheme scheme = ecc_scheme::named("hamming", width);
        const memory_image image = maker.memory(width, 2000, 0, 5);
        memory_image wrong = protected_by(image, scheme);
        std::vector<ecc_finding> expected;
        for (std::uint64_t address = 5; address < 2005; address += 1 + maker.below(60)) {
            if (const auto value = wrong[address]) {
                const auto bit = static_cast<std::uint32_t>(maker.below(scheme.width()));
                wrong.set(address, with_wrong_bit(*value, bit));
                expected.push_back({address, 1, 1, bit});
            }
        }
        const ecc_report report = check_protection(wrong, scheme);
        EXPECT_EQ(report.findings, expected);
        EXPECT_EQ(report.corrected, expected.size());
        EXPECT_EQ(report.damaged, 0U);
        EXPECT_EQ(unprotected(wrong, scheme), image);
    }
}

TEST(Protection, TakesFillsOfBillionsAtOnce) {
    const ecc_scheme scheme = ecc_scheme::named("hamming", 32);
    memory_image image(39, deepest_memory);
    const word right = scheme.encoded(word::of(0x1234, 32));
    image.fill({0, deepest_memory - 1}, std::array{right, with_wrong_bit(right, 7)});
    const ecc_report report = check_protection(image, scheme);
    EXPECT_EQ(report.checked, deepest_memory);
    EXPECT_EQ(report.corrected, deepest_memory / 2);
    constexpr std::uint64_t middle = deepest_memory / 2;
    EXPECT_EQ(report.findings,
              (std::vector<ecc_finding>{{1, middle / 2, 2, 7}, {middle + 1, middle / 2, 2, 7}}));
    EXPECT_EQ(unprotected(image, scheme)[1], word::of(0x1234, 32));
}

TEST(Protection, WordsThatAreDamagedHaveNoData) {
    const ecc_scheme scheme = ecc_scheme::named("hamming", 32);
    memory_image image(39, 8, 16);
    const word right = scheme.encoded(word::of(0x1234, 32));
    image.fill({16, 19}, std::array{right});
    image.set(18, with_wrong_bit(with_wrong_bit(right, 3), 4));
    const ecc_report report = check_protection(image, scheme);
    EXPECT_EQ(report.damaged, 1U);
    EXPECT_EQ(report.findings, (std::vector<ecc_finding>{{18, 1, 1, std::nullopt}}));
    EXPECT_THAT([&] { static_cast<void>(unprotected(image, scheme)); },
                ThrowsMessage<std::domain_error>(HasSubstr("the first at address 0x12")));
}

TEST(Protection, MemoryThatWasCheckedIsNotCheckedAgain) {
    const ecc_scheme scheme = ecc_scheme::named("hamming", 8);
    memory_image image(scheme.width(), 4);
    image.set(0, with_wrong_bit(scheme.encoded(word::of(0x12, 8)), 3));
    EXPECT_EQ(unprotected(image, scheme, check_protection(image, scheme)), unprotected(image, scheme));
    ecc_report damaged = check_protection(image, scheme);
    damaged.damaged = 1;
    EXPECT_THROW(static_cast<void>(unprotected(image, scheme, damaged)), std::domain_error);
    EXPECT_THROW(static_cast<void>(unprotected(memory_image(9, 1), scheme, {})), std::invalid_argument);
}

TEST(Protection, KeepsTheFirstFindings) {
    const ecc_scheme scheme = ecc_scheme::named("hamming", 8);
    memory_image image(scheme.width(), 1000);
    for (std::uint64_t address = 0; address < 1000; ++address) {
        const word right = scheme.encoded(word::of(address % 256, 8));
        image.set(address, with_wrong_bit(address == 999 ? with_wrong_bit(right, 1) : right, 0));
    }
    const ecc_report report = check_protection(image, scheme);
    EXPECT_EQ(report.corrected, 999U);
    EXPECT_EQ(report.findings.size(), ecc_most_findings);
    EXPECT_EQ(report.findings.back().address, ecc_most_findings - 1);
    EXPECT_THAT([&] { static_cast<void>(unprotected(image, scheme)); },
                ThrowsMessage<std::domain_error>(testing::Not(HasSubstr("the first"))));
}

TEST(Protection, RefusesOtherWidthsAndDontCareBits) {
    const ecc_scheme scheme = ecc_scheme::named("even-parity", 8);
    EXPECT_THROW(static_cast<void>(protected_by(memory_image(9, 1), scheme)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(check_protection(memory_image(8, 1), scheme)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(unprotected(memory_image(8, 1), scheme)), std::invalid_argument);
    memory_image data(8, 16, 16);
    data.set(18, word_of_digits("0000X000"));
    EXPECT_THAT([&] { static_cast<void>(protected_by(data, scheme)); },
                ThrowsMessage<std::domain_error>("the word at address 0x12 has don't-care bits: 0000X000"));
    memory_image words(9, 16);
    words.set(3, word_of_digits("00000X000"));
    EXPECT_THROW(static_cast<void>(check_protection(words, scheme)), std::domain_error);
    const ecc_scheme wide = ecc_scheme::named("even-parity", 200);
    memory_image wide_data(200, 2);
    wide_data.set(1, word_of_digits(std::string(200, 'X')));
    EXPECT_THROW(static_cast<void>(protected_by(wide_data, wide)), std::domain_error);
}

} // namespace
