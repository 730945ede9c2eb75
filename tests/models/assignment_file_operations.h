#pragma once

#include "tests/kvrimage/files/test_folder.h"
#include "tests/models/choices.h"

#include <string>
#include <string_view>

namespace kvr_test {

/// Compares the lines of the file @p path, which holds @p contents, with those of a second reader; and what
/// each line assigns with what it assigns when it is written again in one plain form.
/// @throws std::logic_error that says what differs
void compare_assignment_file(const std::string& path, std::string_view contents);

/// Makes files of assignments, sound ones and others.
class assignment_file_operations {
public:
    /// @p source must outlive it.
    explicit assignment_file_operations(choices& source) : chosen(source) {}

    /// @throws std::logic_error that says what differs
    void step();
    /// All has been compared already.
    static void compare_all() {}

private:
    choices& chosen;
    test_folder folder;
};

} // namespace kvr_test
