#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <functional>
#include <random>
#include <string>

namespace kvrimage_tests {

/// A word of @p width random bits.
[[nodiscard]] kvrimage::word random_plain_word(std::mt19937& random, std::uint32_t width);

/// A memory of random words with random gaps, single words and runs.
[[nodiscard]] kvrimage::memory_image random_byte_image(std::mt19937& random, std::uint32_t width,
                                                       std::uint64_t depth);

/// "0=12 5=FF": the words of @p result by their addresses; "none" without an image.
[[nodiscard]] std::string set_words_of(const kvrimage::read_result& result);

/// "broken checksum 1:5+2 x3\n" each: class, code, line, column, length and the number of places.
[[nodiscard]] std::string shown_report(const kvrimage::read_result& result);

/// Options for words of @p width bits.
[[nodiscard]] kvrimage::read_options bytes_as(std::uint32_t width, kvrimage::byte_order order);

/// What is wrong when random memories are written in @p as and read again; "" for nothing. Widths 1 to 300,
/// both orders of bytes.
[[nodiscard]] std::string fault_of_round_trips(const kvrimage::format& as, bool with_gaps);

/// What is wrong when @p contents are cut at every byte, and when characters are changed at random: each
/// reading must have an image or something broken. "" for nothing.
[[nodiscard]] std::string fault_of_damaged(const kvrimage::format& as, const std::string& contents);

/// What differs when a blank is put before the end of each line of random files of records, where it means
/// nothing and leaves every record to the parser; "" for nothing. @p record makes one of address and data.
[[nodiscard]] std::string fault_of_fast_records(
    const kvrimage::format& as,
    const std::function<std::string(std::uint64_t address, const std::string& data)>& record,
    const std::string& end);

} // namespace kvrimage_tests
