#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

/// A line of an assignment file with an assignment.
struct assignment_line {
    std::string operand; ///< without surrounding blanks and comment
    std::string place;   ///< "patch.txt:3:1", for messages
};

/// Reads the assignments of the file @p path, "-" for standard input: one assignment per line. A comment
/// begins with "#" outside of a string and ends with the line. Lines without an assignment are skipped.
/// @throws kvrimage::file_error if the file cannot be read
[[nodiscard]] std::vector<assignment_line> read_assignment_file(const std::string& path);

} // namespace kvrmem
