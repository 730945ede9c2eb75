#pragma once

#include <cstdint>
#include <string>

namespace speed {

/// Of each memory that is measured.
inline constexpr std::uint32_t words_measured = 1U << 20;

/// A line of the table: the ratio reached and the target, both in units of the yardstick.
struct table_row {
    std::string work;
    double reached;
    double target;
    double stretch;
    std::string absolute; ///< the figures of the ratio
};

void print_head();
void print_row(const table_row& row);

/// The environment of the rows.
struct table_settings {
    std::string self;   ///< this program, for the child processes
    std::string tool;   ///< kvrmem, built for speed
    std::string folder; ///< on a memory file system
    int rounds = 9;
};

// The groups of rows. Each prints its rows as they are measured.
void file_rows(const table_settings& settings);
void memory_rows();
void tool_rows(const table_settings& settings);
void number_rows(const table_settings& settings);
void word_rows(const table_settings& settings);
void byte_rows(const table_settings& settings);
void operation_rows(const table_settings& settings);

} // namespace speed
