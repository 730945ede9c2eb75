#include "kvr/numeric/decimal_conversion.h"
#include "kvr/numeric/power_of_ten.h"
#include "kvr/numeric/wide_arithmetic.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using limbs = std::vector<std::uint64_t>;

/// Repeated division by 10^19.
limbs plain_chunks(limbs number, std::size_t count) {
    limbs chunks;
    for (std::size_t chunk = 0; chunk < count; ++chunk) {
        std::uint64_t remainder = 0;
        for (std::size_t index = number.size(); index-- > 0;) {
            const kvr::chunk_division division = kvr::divide_by_decimal_chunk(remainder, number[index]);
            number[index] = division.quotient;
            remainder = division.remainder;
        }
        chunks.push_back(remainder);
    }
    return chunks;
}

/// Repeated multiplication by 10^19.
limbs plain_number(const limbs& chunks) {
    limbs number(chunks.size());
    for (std::size_t index = chunks.size(); index-- > 0;) {
        kvr::multiply_by_limb(number, kvr::decimal_chunk, chunks[index]);
    }
    return number;
}

void expect_both_ways(const limbs& number) {
    const std::size_t bits = number.size() * 64;
    limbs chunks(kvr::chunks_for_bits(bits) + 1, 5);
    kvr::split_into_chunks(chunks, number);
    ASSERT_EQ(chunks, plain_chunks(number, chunks.size())) << number.size();
    limbs joined(chunks.size(), 5);
    kvr::join_chunks(joined, chunks);
    ASSERT_FALSE(kvr::is_less(joined, number) || kvr::is_less(number, joined)) << number.size();
}

} // namespace

TEST(DecimalConversion, ChunksForBitsAreEnoughAndHardlyMore) {
    for (std::size_t bits = 0; bits < 300000; bits += 1 + bits / 100) {
        const double least = static_cast<double>(bits) * 0.301029995663981195 / 19;
        ASSERT_GE(static_cast<double>(kvr::chunks_for_bits(bits)), least);
        ASSERT_LE(static_cast<double>(kvr::chunks_for_bits(bits)), least * 1.001 + 1.001);
    }
}

TEST(DecimalConversion, LeadingZerosNeedNoChunks) {
    for (const std::size_t zeros : {0U, 1U, 2U, 30U, 100U}) {
        limbs number(1 + zeros);
        number.front() = 7;
        limbs chunk(1);
        kvr::split_into_chunks(chunk, number);
        EXPECT_EQ(chunk.front(), 7U);
    }
}

TEST(DecimalConversion, ShortPowersOfTenAreThoseOfThePlainRule) {
    for (std::size_t chunks = 1; chunks <= kvr::base_chunks; ++chunks) {
        limbs one_above(chunks + 1);
        one_above.back() = 1;
        limbs expected = plain_number(one_above);
        expected.resize(chunks);
        const kvr::power_of_ten power = kvr::short_power_of_ten(chunks);
        EXPECT_EQ(limbs(power.power.begin(), power.power.end()), expected);
    }
}

TEST(DecimalConversion, RandomNumbersOfAllLengthsAreThoseOfThePlainRule) {
    std::mt19937_64 random(61);
    for (std::size_t size = 0; size < 700; size += 1 + size / 12) {
        for (int count = 0; count < 4; ++count) {
            limbs number(size);
            std::uint64_t run = 0;
            for (std::uint64_t& limb : number) {
                run = random() % 8 == 0 ? ~run : run;
                limb = count % 2 == 0 ? random() : run;
            }
            expect_both_ways(number);
        }
    }
}

TEST(DecimalConversion, NumbersAroundPowersOfTheChunkAreExact) {
    for (std::size_t count = 1; count < 400; count += 1 + count / 40) {
        limbs chunks(count + 1);
        chunks[count] = 1;
        limbs number = plain_number(chunks);
        expect_both_ways(number);
        kvr::subtract_limbs(number, limbs{1});
        expect_both_ways(number);
        kvr::add_limbs(number, limbs{2});
        expect_both_ways(number);
        kvr::multiply_by_limb(number, 9999999999999999999U);
        expect_both_ways(number);
    }
}

TEST(DecimalConversion, DigitsAreReadAndWrittenInBothOrders) {
    std::mt19937_64 random(62);
    for (std::size_t length = 1; length < 200; ++length) {
        std::string digits = std::to_string(1 + random() % 9);
        while (digits.size() < length) {
            digits += static_cast<char>('0' + random() % 10);
        }
        limbs chunks((length + 18) / 19);
        kvr::read_chunks(chunks, digits);
        ASSERT_EQ(kvr::count_digits(chunks), length);
        std::string written(length + 2, '-');
        kvr::write_digits(written.data() + 1, chunks, length);
        ASSERT_EQ(written, "-" + digits + "-");
        kvr::write_reversed_digits(written.data() + 1, chunks, length);
        ASSERT_EQ(written, "-" + std::string(digits.rbegin(), digits.rend()) + "-");
    }
}

TEST(DecimalConversion, DigitsOfPowersOfTenAreCounted) {
    EXPECT_EQ(kvr::count_digits(limbs{0, 0}), 0U);
    std::size_t digits = 1;
    for (std::uint64_t power = 1; digits < 19; power *= 10, ++digits) {
        EXPECT_EQ(kvr::count_digits(limbs{power}), digits);
        EXPECT_EQ(kvr::count_digits(limbs{power * 10 - 1}), digits);
        EXPECT_EQ(kvr::count_digits(limbs{7, power}), digits + 19);
    }
}

TEST(DecimalConversion, ChunksWhoseUpperHalfIsShortAreJoined) {
    // 255 chunks fewer than 256 times 11: each time they are halved, the upper half is the shorter one.
    std::mt19937_64 random(63);
    limbs chunks(11 * 256 - 255);
    for (std::uint64_t& chunk : chunks) {
        chunk = random() % kvr::decimal_chunk;
    }
    limbs joined(chunks.size(), 5);
    kvr::join_chunks(joined, chunks);
    EXPECT_EQ(joined, plain_number(chunks));
}
