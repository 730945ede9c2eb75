#include "kvrimage/operations/checksum/crc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using namespace kvrimage;

std::uint64_t crc_of_text(const crc_model& model, std::string_view text) {
    crc check(model);
    check.add(text);
    return check.value();
}

std::uint64_t plainly_reversed(std::uint64_t value, std::uint32_t width) {
    std::uint64_t reversed = 0;
    for (std::uint32_t bit = 0; bit < width; ++bit) {
        reversed |= (value >> bit & 1U) << (width - 1 - bit);
    }
    return reversed;
}

/// Computes the CRC bit by bit with a register that is not reflected.
std::uint64_t plain_crc(const crc_model& model, std::string_view text) {
    const std::uint64_t top = std::uint64_t{1} << (model.width - 1);
    const std::uint64_t all = top | (top - 1);
    std::uint64_t bits = model.initial;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        for (unsigned bit = 0; bit < 8; ++bit) {
            const bool is_one = (byte >> (model.reflects_input ? bit : 7 - bit) & 1U) != 0;
            const bool leaves = ((bits & top) != 0) != is_one;
            bits = (bits << 1U & all) ^ (leaves ? model.polynomial : 0);
        }
    }
    return (model.reflects_output ? plainly_reversed(bits, model.width) : bits) ^ model.final_xor;
}

TEST(Crc, OfTheNineDigitsIsThatOfTheCatalogue) {
    for (const known_crc& known : known_crcs()) {
        EXPECT_EQ(crc_of_text(known.model, "123456789"), known.check) << known.name;
    }
}

TEST(Crc, NamesAreInOrderAndDifferent) {
    const std::span<const known_crc> all = known_crcs();
    EXPECT_TRUE(std::ranges::is_sorted(all, [](const known_crc& left, const known_crc& right) {
        return left.model.width != right.model.width ? left.model.width < right.model.width
                                                     : left.name < right.name;
    }));
    EXPECT_EQ(std::ranges::adjacent_find(all, {}, &known_crc::name), all.end());
}

TEST(Crc, OfNothingIsTheInitialValueAtTheEnd) {
    EXPECT_EQ(crc_of_text({16, 0x1021, 0x1234, false, false, 0x00FF}, ""), 0x12CBU);
    EXPECT_EQ(crc_of_text({8, 0x07, 0x01, true, true, 0}, ""), 0x80U);
}

TEST(Crc, OfRandomModelsIsThatOfTheBits) {
    std::mt19937_64 engine(1);
    for (std::uint32_t width = 1; width <= 64; ++width) {
        for (unsigned reflected = 0; reflected < 4; ++reflected) {
            const std::uint64_t all = ~std::uint64_t{0} >> (64 - width);
            const crc_model model = {
                width,         engine() & all, engine() & all, (reflected & 1) != 0, (reflected & 2) != 0,
                engine() & all};
            std::string text(engine() % 100, '\0');
            std::ranges::generate(text, [&] { return static_cast<char>(engine()); });
            ASSERT_EQ(crc_of_text(model, text), plain_crc(model, text)) << width << ' ' << reflected;
        }
    }
}

TEST(Crc, TheBytesMayComeInPieces) {
    const std::string text = "a text of more than one block of eight bytes";
    for (const known_crc& known : known_crcs()) {
        for (std::size_t cut = 0; cut <= text.size(); cut += 5) {
            crc check(known.model);
            check.add(text.substr(0, cut));
            static_cast<void>(check.value());
            check.add(text.substr(cut));
            ASSERT_EQ(check.value(), crc_of_text(known.model, text)) << known.name;
        }
    }
}

TEST(Crc, RefusesParametersThatDoNotFit) {
    EXPECT_THROW(crc(crc_model{0, 0, 0, false, false, 0}), std::invalid_argument);
    EXPECT_THROW(crc(crc_model{65, 0, 0, false, false, 0}), std::invalid_argument);
    EXPECT_THROW(crc(crc_model{8, 0x100, 0, false, false, 0}), std::invalid_argument);
    EXPECT_THROW(crc(crc_model{8, 7, 0x100, false, false, 0}), std::invalid_argument);
    EXPECT_THROW(crc(crc_model{8, 7, 0, false, false, 0x100}), std::invalid_argument);
}

} // namespace
