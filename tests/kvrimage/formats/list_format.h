#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

// Functions that the tests of formats with lists of words share.

/// The result of reading @p contents in the format @p as with @p options.
[[nodiscard]] kvrimage::read_result read_as(const kvrimage::format& as, std::string_view contents,
                                            kvrimage::read_options options = {});

/// The words of @p image in hexadecimal, separated by blanks; "-" for a word that is not set.
[[nodiscard]] std::string words_of(const kvrimage::memory_image& image);

/// The words that @p as reads from @p contents; if it reads none, the first broken diagnostic ("coe-radix
/// 1:29+1: message").
[[nodiscard]] std::string words_read(const kvrimage::format& as, std::string_view contents,
                                     const kvrimage::read_options& options = {});

/// "coe-radix 1:29+1: message / hint" for each diagnostic.
[[nodiscard]] std::vector<std::string> found_in(const kvrimage::format& as, std::string_view contents,
                                                const kvrimage::read_options& options = {});

/// @p contents after all repairs.
[[nodiscard]] std::string repaired_as(const kvrimage::format& as, const std::string& contents);

/// Words of @p width bits, some of them in runs. With @p with_gaps, some are not set.
[[nodiscard]] kvrimage::memory_image random_words(std::mt19937& random, std::uint32_t width, bool with_gaps);

/// Writes random memories of 1 to 300 bits with @p to, and expects to read the same words.
void expect_round_trips(const kvrimage::write_options& to, bool with_gaps,
                        const kvrimage::read_options& from = {});

/// Cuts @p contents at every byte and changes each of its bytes, and expects that the guarantees for every
/// file hold.
void expect_promises_kept(const kvrimage::format& as, const std::string& contents,
                          const kvrimage::read_options& options = {});

/// Expects that written_size() is an upper bound and at most a few percent above the actual size.
void expect_close_size(const kvrimage::write_options& to, bool with_gaps);

} // namespace kvrimage_tests
