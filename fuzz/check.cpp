// What the tool's check says of a file, and how long that takes, against what is promised of every file.

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/resource_limits.h"
#include "fuzz/tool_targets.h"
#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/contract/contract.h"
#include "tools/kvrmem/files/check_report.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kvr_fuzz {

namespace {

constexpr std::array<std::string_view, 3> tried_formats = {"mif", "hex", "rif"};

struct limits_of_person {
    std::optional<std::uint32_t> width;
    std::optional<std::uint64_t> depth;
};
constexpr std::array<limits_of_person, 8> said_by_person = {{
    {},
    {8, {}},
    {16, {}},
    {12, {}},
    {{}, 16},
    {32, 256},
    {1, 1},
    {1U << 20U, 0xFFFFFFFF},
}};

kvrimage::read_result checked_within_limits(std::string_view text, const kvrimage::read_options& options,
                                            std::size_t input_size) {
    const resource_limits limits(input_size);
    return kvrimage::check(text, {options});
}

/// A diagnostic that cannot be shown is none.
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
    kvrimage::read_options options;
    options.as = kvrimage::format_of_name(settings.choose(tried_formats));
    const limits_of_person& said = settings.choose(said_by_person);
    options.width = said.width;
    options.depth = said.depth;
    const std::string text(settings.rest());

    expect_shown(checked_within_limits(text, options, input.size()), text);
    const std::vector<std::string> broken = kvrimage_tests::broken_promises(text, options);
    expect(broken.empty(), broken.empty() ? "" : broken.front());
}

} // namespace kvr_fuzz
