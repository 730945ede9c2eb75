#pragma once

#include <span>
#include <string>

namespace speed {

/// Runs the work of a child process of the table: @p words are the name of the work and its arguments.
/// Returns the exit code of the process; -1 if there is no such work.
///
/// floor-read FILE STORE_BYTES   reads FILE in blocks, then touches STORE_BYTES bytes in pages
/// floor-convert IN OUT_BYTES OUT  reads IN in blocks, then writes OUT_BYTES bytes to OUT
///     read FILE BITS                reads FILE with the library
[[nodiscard]] int run_work(std::span<char*> words);

/// Writes @p bytes bytes to @p path in blocks, as the floor of writing a file.
void write_blocks(const std::string& path, unsigned long long bytes);

} // namespace speed
