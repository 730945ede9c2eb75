#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

/// A line of a file of assignments that has one.
struct assignment_line {
    std::string operand; ///< without the blanks and the comment around it
    std::string place;   ///< "patch.txt:3:1", for messages
};

/// The lines of the file @p path, "-" for standard input: one assignment a line. A comment begins with "#"
/// outside of a text and ends with the line; lines without an assignment are left out.
/// @throws kvrimage::file_error when the file cannot be read
[[nodiscard]] std::vector<assignment_line> read_assignment_file(const std::string& path);

} // namespace kvrmem
