// What the tool's check says of a file against what the library does with it, and what its repairs leave.

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/resource_limits.h"
#include "fuzz/tool_targets.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/memory/rif/rif_memory.h"
#include "kvr/memory/rif/rif_reader.h"
#include "tools/kvrmem/check/check_fix.h"
#include "tools/kvrmem/check/check_report.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kvr_fuzz {

namespace {

using kvrmem::check_fault;
using kvrmem::check_source;
using kvrmem::fault_list;
using kvrmem::input_options;
using kvrmem::severity;

constexpr std::array<KVR_FILE_TYPES, 3> formats = {FILE_TYPE_MIF, FILE_TYPE_HEX, FILE_TYPE_RIF};

struct limits_of_person {
    std::optional<std::uint32_t> width;
    std::optional<std::uint32_t> depth;
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

/// A line of two keywords is read on when only the first has a fault, which the library tells all the same.
bool library_reads_mif(const check_source& source) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    kvr::line_source lines = source.lines(kvr::mif_reader::source_limit);
    return kvr::mif_reader(memory).read(lines) && memory.error_state == ERROR_STATE_NONE;
}

bool library_reads_hex(const check_source& source) {
    kvr::hex_memory memory(nullptr);
    kvr::line_source lines = source.lines(kvr::hex_record_walk::longest_line);
    return kvr::read_hex_lines(memory, lines);
}

bool library_reads_rif(const check_source& source) {
    kvr::rif_memory memory(nullptr);
    kvr::line_source lines = source.lines(kvr::line_source::unlimited);
    kvr::rif_reader(memory).read(lines);
    return memory.error_state == ERROR_STATE_NONE;
}

bool library_reads(const check_source& source, KVR_FILE_TYPES format) {
    switch (format) {
    case FILE_TYPE_MIF:
        return library_reads_mif(source);
    case FILE_TYPE_HEX:
        return library_reads_hex(source);
    default:
        return library_reads_rif(source);
    }
}

/// A fault behind the end of the file, or of its line, would be shown nowhere.
void expect_in_file(const check_fault& fault, const check_source& source) {
    expect(!fault.message.empty() && *fault.code != '\0', "a fault says nothing");
    expect(fault.line <= source.line_count(), "a fault lies behind the last line");
    expect(fault.line != 0 || fault.column == 0, "a fault has a column and no line");
    // A character that is missing has its place behind the line.
    expect(fault.line == 0 || fault.column <= source.line(fault.line).size() + 1,
           "a fault lies behind its line");
    if (fault.mended) {
        expect(fault.mended->offset + fault.mended->removed <= source.text().size(),
               "a repair reaches beyond the file");
    }
}

void expect_reports(const check_source& source, const fault_list& faults) {
    const kvrmem::painter paint(true);
    const std::string text = kvrmem::faults_as_text("file", source, faults, paint);
    expect(text.empty() == faults.sorted().empty(), "the faults and their text differ in number");
    expect(!kvrmem::json_text(kvrmem::faults_as_json("file", "format", faults)).empty(), "there is no JSON");
}

void expect_repaired(const check_source& source, const input_options& options) {
    const kvrmem::repaired_file repaired = kvrmem::repair_faults(source, options);
    expect(!repaired.changes.empty(), "there are repairs and no changes");
    for (const check_fault& fault : repaired.left.sorted()) {
        expect(!fault.mended, "a repair was left out");
    }
}

} // namespace

void try_check(std::string_view input) {
    input_bytes settings(input);
    const KVR_FILE_TYPES format = settings.choose(formats);
    const limits_of_person& said = settings.choose(said_by_person);
    const input_options options{format, said.width, said.depth};
    const check_source source{std::string(settings.rest())};

    fault_list faults(kvrmem::shown_faults);
    {
        const resource_limits limits(input.size());
        kvrmem::check_format(source, options, faults);
    }
    const bool has_errors = faults.count(severity::error) != 0;
    if (!said.width && !said.depth) {
        expect(has_errors != library_reads(source, format), "check and the library differ in their verdict");
    }
    bool has_repairs = false;
    for (const check_fault& fault : faults.sorted()) {
        expect_in_file(fault, source);
        has_repairs = has_repairs || fault.mended;
    }
    expect_reports(source, faults);
    const bool all_kept = faults.dropped(severity::error) == 0 && faults.dropped(severity::warning) == 0;
    if (all_kept && has_repairs) {
        expect_repaired(source, options);
    }
}

} // namespace kvr_fuzz
