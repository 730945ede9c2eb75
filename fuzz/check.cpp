// The diagnostics of "kvrmem check" for a file and their cost, compared with the guarantees for every file.

#include "fuzz/expectation.h"
#include "fuzz/file_input.h"
#include "fuzz/resource_limits.h"
#include "fuzz/tool_targets.h"
#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/contract/contract.h"
#include "tools/kvrmem/files/check_report.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvr_fuzz {

namespace {

kvrimage::read_result checked_within_limits(std::string_view text, const kvrimage::read_options& options,
                                            std::size_t input_size) {
    const resource_limits limits(input_size);
    return kvrimage::check(text, {options});
}

/// A diagnostic that cannot be shown is a fault.
void expect_shown(const kvrimage::read_result& checked, std::string_view text) {
    for (const kvrimage::diagnostic& found : checked.diagnostics) {
        expect(found.count != 0, "a diagnostic has no place");
        expect(!kvrimage::diagnostic_text(found, "file", text).empty(), "a diagnostic has no text");
    }
    expect(!kvrmem::json_text(kvrmem::report_as_json("file", checked)).empty(), "there is no JSON");
}

} // namespace

void try_check(std::string_view input) {
    input_bytes settings(input);
    const kvrimage::read_options options = choose_read_options(settings);
    const std::string text(settings.rest());

    expect_shown(checked_within_limits(text, options, input.size()), text);
    const std::vector<std::string> broken = kvrimage_tests::broken_promises(text, options);
    expect(broken.empty(), broken.empty() ? "" : broken.front());
}

} // namespace kvr_fuzz
