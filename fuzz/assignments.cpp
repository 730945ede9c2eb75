// Quoted texts and files of assignments, compared with second parsers.

#include "fuzz/expectation.h"
#include "fuzz/scratch.h"
#include "fuzz/tool_targets.h"
#include "tests/models/assignment_file_operations.h"
#include "tests/models/quoted_text_operations.h"

#include <stdexcept>
#include <string>

namespace kvr_fuzz {

void try_quoted_text(std::string_view input) {
    try {
        kvr_test::compare_quoted_text(std::string("\"").append(input));
    } catch (const std::logic_error& difference) {
        report_finding(difference.what());
    }
}

void try_assignments(std::string_view input) {
    static const scratch_file file;
    file.assign(input);
    try {
        kvr_test::compare_assignment_file(file.path(), input);
    } catch (const std::logic_error& difference) {
        report_finding(difference.what());
    }
}

} // namespace kvr_fuzz
