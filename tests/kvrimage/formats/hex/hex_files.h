#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage::hex_test {

inline const std::string end_record = ":00000001FF\n";

/// Options that give the width of the words.
[[nodiscard]] read_options of_width(std::uint32_t width);

/// ":" + @p fields (record length to data, without blanks) + their checksum + LF.
[[nodiscard]] std::string record(const std::string& fields);

/// A line for each diagnostic: "broken checksum 1:10+2 x1", followed by its message, hint and repair if
/// requested.
[[nodiscard]] std::string report_of(const read_result& result);

/// The text with the edits of all diagnostics.
[[nodiscard]] std::string with_repairs(std::string_view text, const read_result& result);
[[nodiscard]] std::string with_edits_of(std::string_view text, const std::vector<text_edit>& edits);

/// "0=12 3=AB": the set words; "none" without an image.
[[nodiscard]] std::string words_of(const read_result& result);

/// The text that write() generates.
[[nodiscard]] std::string written_hex(const memory_image& image);

} // namespace kvrimage::hex_test
