#include "tools/kvrmem/commands/repair.h"

#include "kvrimage/files/file_name.h"
#include "tools/kvrmem/files/check_report.h"
#include "tools/kvrmem/files/diagnostic_colors.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/lost_comments.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/platform/message.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

void report_repairs(const std::string& name, const kvrimage::repaired& repaired) {
    for (const kvrimage::diagnostic& each : repaired.repairs) {
        const std::string place =
            each.where.line == 0 ? name : fmt::format("{}:{}:{}", name, each.where.line, each.where.column);
        const std::string times = each.count > 1 ? fmt::format(" ({} places)", each.count) : "";
        print_message(fmt::format("{}: fixed: {}{}", place, each.repair, times));
    }
    if (repaired.repairs.empty()) {
        print_message(fmt::format("{}: nothing to repair", name));
    }
}

/// Returns whether the diagnostic is not a fault of the file but requires an option from the user.
bool asks_user(const kvrimage::diagnostic& found) {
    return kvrimage::about(found.id).level == kvrimage::diagnostic_class::broken &&
           (found.id == kvrimage::diagnostic_id::width_unknown || !found.option.empty());
}

/// Removes diagnostics that require an option and returns them as notes on the file @p name, to be shown
/// after it is written.
std::vector<std::string> notes_instead_of_questions(const std::string& name,
                                                    std::vector<kvrimage::diagnostic>& diagnostics) {
    std::vector<std::string> notes;
    for (const kvrimage::diagnostic& each : diagnostics) {
        if (asks_user(each)) {
            notes.push_back(fmt::format("{}: note: {}; {}", name, each.message, each.hint));
        }
    }
    std::erase_if(diagnostics, asks_user);
    return notes;
}

} // namespace

exit_code repair_file(const arguments& given) {
    const memory_input input = open_memory(given, given.files[0]);
    const std::string& name = input.name();
    kvrimage::repaired repaired =
        kvrimage::repair(std::string(input.file.contents()), check_options_for(given, input.options));
    const std::vector<std::string> notes =
        notes_instead_of_questions(kvrimage::title_of_output(*given.output), repaired.left.diagnostics);
    const diagnostic_counts left(repaired.left);
    const std::string report =
        report_as_text(name, repaired.contents, repaired.left, diagnostic_painter(stderr, given.color));
    if (left.fail(given.strict)) {
        print_message_as_it_is(report);
        print_message(fmt::format("{} in {} cannot be repaired with certainty; {} is not written",
                                  left.text(), name, *given.output));
        return exit_code::negative;
    }
    if (!given.force) {
        require_no_lost_comments(*given.output, repaired.contents);
    }
    write_text(*given.output, repaired.contents);
    report_repairs(name, repaired);
    print_message_as_it_is(report);
    std::ranges::for_each(notes, print_message);
    note_other_extension(*given.output, *repaired.left.facts.as);
    return exit_code::success;
}

} // namespace kvrmem
