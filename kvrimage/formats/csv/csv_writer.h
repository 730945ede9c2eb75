#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>

namespace kvrimage {

/// Implements format::write for CSV: the header "address,value" and one word per line, with tabs instead of
/// commas in a .tsv file. Hexadecimal and binary numbers have their prefix. Octal is written as hexadecimal.
void write_csv(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for CSV.
[[nodiscard]] std::uint64_t written_csv_size(const memory_image& image, const write_options& options);

} // namespace kvrimage
