#pragma once

#include <cstdint>
#include <string>

namespace speed {

/// The number of words of each measured memory.
inline constexpr std::uint32_t words_measured = 1U << 20;

/// A line of the table: the ratio reached and the target, both in units of the yardstick.
struct table_row {
    std::string work;
    double reached;
    double target;
    double stretch;
    std::string absolute; ///< the two figures of the ratio
};

void print_head();
void print_row(const table_row& row);

/// The settings that all rows share.
struct table_settings {
    std::string self;   ///< path of this program, for the child processes
    std::string tool;   ///< kvrmem, built for speed
    std::string folder; ///< on a memory file system
    int rounds = 9;
};

// The groups of rows. Each group prints its rows as it measures them.
void file_rows(const table_settings& settings);
void memory_rows(const table_settings& settings);
void tool_rows(const table_settings& settings);
void number_rows(const table_settings& settings);
void word_rows(const table_settings& settings);
void byte_rows(const table_settings& settings);
void operation_rows(const table_settings& settings);

} // namespace speed
