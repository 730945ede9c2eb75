// Converts numbers between radixes.

#include "bench/speed/table.h"
#include "bench/speed/timing.h"
#include "kvr/kvr.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef KVR_HAS_GMP
#include <gmp.h>
#endif

namespace speed {

namespace {

/// Random digits; the first one is not 0.
std::string random_digits(std::size_t count, unsigned base, std::uint64_t seed) {
    std::uint64_t state = seed;
    std::string text;
    while (text.size() < count) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        const char digit = "0123456789ABCDEF"[(state >> 33U) % base];
        if (!text.empty() || digit != '0') {
            text += digit;
        }
    }
    return text;
}

std::vector<std::string> random_numbers(std::size_t digits, unsigned base) {
    constexpr std::size_t count = 64;
    std::vector<std::string> numbers;
    while (numbers.size() < count) {
        numbers.push_back(random_digits(digits, base, 20261121 + numbers.size()));
    }
    return numbers;
}

/// The time of a conversion in seconds. Converts the numbers of @p numbers repeatedly until enough time has
/// passed.
template <class Convert>
double time_of_each(const std::vector<std::string>& numbers, Convert convert) {
    constexpr double enough = 0.02;
    std::size_t conversions = 0;
    const double begin = now();
    double time = 0;
    while (time < enough) {
        for (const std::string& number : numbers) {
            convert(number);
            ++conversions;
            if (conversions % 8 == 0 && (time = now() - begin) > 5 * enough) {
                break;
            }
        }
        time = now() - begin;
    }
    return time / static_cast<double>(conversions);
}

struct direction {
    const char* name;
    KVR_MEMORY_RADIXES from;
    KVR_MEMORY_RADIXES to;
    unsigned base;
    unsigned target_base;
};

constexpr direction to_decimal = {"hex to decimal", RADIX_HEX, RADIX_UNS, 16, 10};
constexpr direction from_decimal = {"decimal to hex", RADIX_UNS, RADIX_HEX, 10, 16};

std::size_t digits_for(std::size_t bits, unsigned base) {
    return base == 16 ? bits / 4 : static_cast<std::size_t>(static_cast<double>(bits) * 0.30102999566);
}

measurement library_time(const direction& way, const std::vector<std::string>& numbers) {
    return [&way, &numbers] {
        std::string result;
        return time_of_each(numbers, [&](const std::string& number) {
            kvr_radix_conversion(number, &result, way.from, way.to, 0);
        });
    };
}

measurement standard_time(const direction& way, const std::vector<std::string>& numbers) {
    return [&way, &numbers] {
        std::array<char, 72> text{};
        std::string result;
        return time_of_each(numbers, [&](const std::string& number) {
            std::uint64_t value = 0;
            std::from_chars(number.data(), number.data() + number.size(), value, static_cast<int>(way.base));
            const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                           static_cast<int>(way.target_base));
            result.assign(text.data(), end.ptr);
        });
    };
}

#ifdef KVR_HAS_GMP
measurement gmp_time(unsigned base, unsigned target_base, const std::vector<std::string>& numbers) {
    return [base, target_base, &numbers] {
        std::string result;
        mpz_t value;
        mpz_init(value);
        const double time = time_of_each(numbers, [&](const std::string& number) {
            mpz_set_str(value, number.c_str(), static_cast<int>(base));
            result.resize(mpz_sizeinbase(value, static_cast<int>(target_base)) + 2);
            mpz_get_str(result.data(), static_cast<int>(target_base), value);
        });
        mpz_clear(value);
        return time;
    };
}
#endif

std::string nanoseconds(const comparison& result) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.4g ns / %.4g ns", result.work * 1e9, result.floor * 1e9);
    return text.data();
}

std::string title(const direction& way, std::size_t bits) {
    return std::string(way.name) + ", " + std::to_string(bits) + " bits";
}

struct number_row {
    direction way;
    std::size_t bits;
    double target;
    double stretch;
};

constexpr std::array<number_row, 6> small_rows = {{{to_decimal, 8, 1.6, 1.0},
                                                   {from_decimal, 8, 1.6, 1.0},
                                                   {to_decimal, 32, 1.6, 1.0},
                                                   {from_decimal, 32, 1.6, 1.0},
                                                   {to_decimal, 60, 1.6, 1.0},
                                                   {from_decimal, 60, 1.6, 1.0}}};

#ifdef KVR_HAS_GMP
constexpr std::array<number_row, 12> large_rows = {{{to_decimal, 128, 1 / 2.0, 1 / 2.5},
                                                    {from_decimal, 128, 1 / 2.0, 1 / 2.5},
                                                    {to_decimal, 512, 1 / 2.0, 1 / 2.5},
                                                    {from_decimal, 512, 1 / 2.0, 1 / 2.5},
                                                    {to_decimal, 1024, 1 / 2.0, 1 / 2.5},
                                                    {from_decimal, 1024, 1 / 2.0, 1 / 2.5},
                                                    {to_decimal, 4096, 1 / 1.25, 1 / 1.8},
                                                    {from_decimal, 4096, 1 / 1.5, 1 / 1.8},
                                                    {to_decimal, 65536, 2.6, 1.3},
                                                    {from_decimal, 65536, 2.6, 1.3},
                                                    {to_decimal, 1048576, 4.6, 2.0},
                                                    {from_decimal, 1048576, 4.6, 2.0}}};
#endif

} // namespace

void number_rows(const table_settings& settings) {
    for (const number_row& row : small_rows) {
        const auto numbers = random_numbers(digits_for(row.bits, row.way.base), row.way.base);
        const comparison result =
            compare(library_time(row.way, numbers), standard_time(row.way, numbers), settings.rounds);
        print_row({title(row.way, row.bits), result.ratio, row.target, row.stretch, nanoseconds(result)});
    }
#ifdef KVR_HAS_GMP
    for (const number_row& row : large_rows) {
        const auto numbers = random_numbers(digits_for(row.bits, row.way.base), row.way.base);
        const comparison result =
            compare(library_time(row.way, numbers), gmp_time(row.way.base, row.way.target_base, numbers),
                    settings.rounds);
        print_row({title(row.way, row.bits), result.ratio, row.target, row.stretch, nanoseconds(result)});
    }
    constexpr direction to_binary = {"hex to binary", RADIX_HEX, RADIX_BIN, 16, 2};
    for (const std::size_t bits : {std::size_t{64}, std::size_t{1024}, std::size_t{65536}}) {
        const auto numbers = random_numbers(bits / 4, 16);
        const comparison result =
            compare(library_time(to_binary, numbers), gmp_time(16, 2, numbers), settings.rounds);
        // The stretch target is 0.05 ns per digit, in units of GMP's time.
        const double stretch = 0.05e-9 * static_cast<double>(bits) / result.floor;
        print_row({title(to_binary, bits), result.ratio, 1 / 8.0, stretch, nanoseconds(result)});
    }
#endif
}

} // namespace speed
