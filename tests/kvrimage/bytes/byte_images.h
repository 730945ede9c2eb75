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

/// "0=12 5=FF": the words of @p result with their addresses; "none" without an image.
[[nodiscard]] std::string set_words_of(const kvrimage::read_result& result);

/// "broken checksum 1:5+2 x3
/// " for each diagnostic: class, code, line, column, length and number of places.
[[nodiscard]] std::string shown_report(const kvrimage::read_result& result);

/// Options for words of @p width bits.
[[nodiscard]] kvrimage::read_options bytes_as(std::uint32_t width, kvrimage::byte_order order);

/// Writes random memories in the format @p as and reads them again, with widths from 1 to 300 and both byte
/// orders. Returns a description of the first fault; "" if there is none.
[[nodiscard]] std::string fault_of_round_trips(const kvrimage::format& as, bool with_gaps);

/// Cuts @p contents at every byte and changes random characters. Each result must have an image or a broken
/// diagnostic. Returns a description of the first fault; "" if there is none.
[[nodiscard]] std::string fault_of_damaged(const kvrimage::format& as, const std::string& contents);

/// Inserts a blank before the end of each line of random files of records. The blank has no meaning, but
/// leaves every record to the parser. Returns the first difference; "" if there is none. @p record makes a
/// record from an address and data.
[[nodiscard]] std::string fault_of_fast_records(
    const kvrimage::format& as,
    const std::function<std::string(std::uint64_t address, const std::string& data)>& record,
    const std::string& end);

} // namespace kvrimage_tests
