// Edits and layouts of files in all formats, compared with a model of words and comments; the inverse edit
// and a repeated edit are compared as well.

#include "fuzz/expectation.h"
#include "fuzz/file_input.h"
#include "fuzz/tool_targets.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/models/edit_operations.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace kvr_fuzz {

namespace {

/// A number that differs for most inputs (FNV-1a).
std::uint32_t number_of(std::string_view bytes) {
    constexpr std::uint32_t factor = 16777619;
    std::uint32_t number = 2166136261;
    for (const char byte : bytes) {
        number = (number ^ static_cast<unsigned char>(byte)) * factor;
    }
    return number;
}

} // namespace

void try_edit(std::string_view input) {
    // The edits are derived from the bytes of the input, so that the target can share the inputs of "check".
    kvr_test::random_choices choices(number_of(input));
    input_bytes settings(input);
    const kvrimage::read_options options = choose_read_options(settings);
    const std::string text(settings.rest());
    const kvrimage::read_result read = parse(text, options);
    if (!read.image || read.facts.as->edit == nullptr) {
        return;
    }
    try {
        static_cast<void>(
            kvr_test::compare_edit(text, options, kvr_test::any_assignments(choices, *read.image)));
    } catch (const std::logic_error& difference) {
        report_finding(difference.what());
    }
}

void try_layout(std::string_view input) {
    input_bytes settings(input);
    const kvrimage::read_options options = choose_read_options(settings);
    try {
        static_cast<void>(kvr_test::compare_layout(std::string(settings.rest()), options));
    } catch (const std::logic_error& difference) {
        report_finding(difference.what());
    }
}

} // namespace kvr_fuzz
