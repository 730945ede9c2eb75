#pragma once

#include <span>
#include <string>

namespace speed {

/// Runs what a child process of the table is started for: the name of the work and its arguments. The exit
/// code of the process; -1 when there is no such work.
///
///     floor-read FILE STORE_BYTES   reads FILE in blocks, then touches so many bytes in pages
///     floor-convert IN OUT_BYTES OUT  reads IN in blocks, then writes so many bytes to OUT
///     read FILE BITS                reads FILE with the library
[[nodiscard]] int run_work(std::span<char*> words);

/// Writes @p bytes bytes to @p path in blocks, as the floor of what writes a file.
void write_blocks(const std::string& path, unsigned long long bytes);

} // namespace speed
