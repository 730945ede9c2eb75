#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>

namespace kvrimage {

/// format::write() for CSV: the header "address,value" and one word a line, with tabs for the commas in a
/// file called .tsv. Hexadecimal and binary numbers have their prefix; octal is written as hexadecimal.
void write_csv(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size() for CSV.
[[nodiscard]] std::uint64_t written_csv_size(const memory_image& image, const write_options& options);

} // namespace kvrimage
