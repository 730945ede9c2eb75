#include "tools/kvrmem/commands/repair.h"

#include "tools/kvrmem/check/check_fix.h"
#include "tools/kvrmem/check/check_report.h"
#include "tools/kvrmem/memory/lost_comments.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/replacement_file.h"

#include <fmt/format.h>

#include <cstdio>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

void report_changes(const std::string& name, const std::vector<change>& changes) {
    for (const change& each : changes) {
        const std::string place =
            each.column != 0 ? fmt::format("{}:{}", each.line, each.column) : fmt::format("{}", each.line);
        tell(fmt::format("{}:{}: fixed: {}", name, place, each.what));
    }
}

} // namespace

exit_code repair_file(const arguments& given) {
    const std::string& path = given.files[0];
    const input_options options = options_for(given, path);
    const input_file file(path);
    const repaired_file repaired = repair_faults(check_source::of(file), options);
    const std::uint64_t errors = repaired.left.count(severity::error);
    const std::uint64_t warnings = repaired.left.count(severity::warning);
    const painter paint = painter_for(stderr, given.color);
    if (errors == 0 && !given.force) {
        require_no_lost_comments(*given.output, repaired.source.text());
    }
    if (errors == 0) {
        replacement_file out(*given.output);
        out.output().write(repaired.source.text());
        out.commit();
        report_changes(file.name(), repaired.changes);
    }
    tell_as_it_is(faults_as_text(file.name(), repaired.source, repaired.left, paint));
    if (errors != 0) {
        tell(fmt::format("{} in {} cannot be repaired for certain; {} is not written",
                         counted_faults(errors, warnings), file.name(), *given.output));
        return exit_code::negative;
    }
    tell_of_other_extension(*given.output, options.format);
    if (repaired.changes.empty()) {
        tell(fmt::format("{}: nothing to repair", file.name()));
    }
    return exit_code::fine;
}

} // namespace kvrmem
