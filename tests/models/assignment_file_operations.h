#pragma once

#include "tests/kvrimage/files/test_folder.h"
#include "tests/models/choices.h"

#include <string>
#include <string_view>

namespace kvr_test {

/// Compares the lines of the file @p path, which contains @p contents, with those of a second reader. Writes
/// each assignment in one plain form and compares it with the assignment of that form.
/// @throws std::logic_error that describes the difference
void compare_assignment_file(const std::string& path, std::string_view contents);

/// Generates valid and invalid files of assignments.
class assignment_file_operations {
public:
    /// @p source must outlive it.
    explicit assignment_file_operations(choices& source) : chosen(source) {}

    /// @throws std::logic_error that describes the difference
    void step();
    /// Does nothing: step() has compared everything.
    static void compare_all() {}

private:
    choices& chosen;
    test_folder folder;
};

} // namespace kvr_test
