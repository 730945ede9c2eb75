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
#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/files/check_report.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace kvr_fuzz {

namespace {

using kvrimage::diagnostic;
using kvrimage::diagnostic_class;

struct tried_format {
    const char* id;
    /// True when the library reads a text as a whole.
    bool (*library_reads)(std::string_view text);
};

/// A line of two keywords is read on when only the first has a fault, which the library reports all the same.
bool library_reads_mif(std::string_view text) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    kvr::line_source lines(text, kvr::mif_reader::source_limit);
    return kvr::mif_reader(memory).read(lines) && memory.error_state == ERROR_STATE_NONE;
}

bool library_reads_hex(std::string_view text) {
    kvr::hex_memory memory(nullptr);
    kvr::line_source lines(text, kvr::hex_record_walk::longest_line);
    return kvr::read_hex_lines(memory, lines);
}

bool library_reads_rif(std::string_view text) {
    kvr::rif_memory memory(nullptr);
    kvr::line_source lines(text, kvr::line_source::unlimited);
    kvr::rif_reader(memory).read(lines);
    return memory.error_state == ERROR_STATE_NONE;
}

constexpr std::array<tried_format, 3> tried_formats = {
    {{"mif", library_reads_mif}, {"hex", library_reads_hex}, {"rif", library_reads_rif}}};

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

diagnostic_class class_of(const diagnostic& found) {
    return kvrimage::about(found.id).level;
}

bool is_error(const diagnostic& found) {
    return class_of(found) != diagnostic_class::suspect;
}

const diagnostic* first_broken(const kvrimage::read_result& result) {
    const auto found = std::ranges::find(result.diagnostics, diagnostic_class::broken, class_of);
    return found != result.diagnostics.end() ? &*found : nullptr;
}

/// A place after the end of the file would be shown nowhere.
void expect_in_file(const diagnostic& found, std::string_view text) {
    expect(!found.message.empty() && found.count != 0, "a diagnostic says nothing");
    expect(found.where.offset + found.where.length <= text.size(),
           "a diagnostic is after the end of the file");
    expect(found.fix.empty() == found.repair.empty(), "a repair has no name, or a name no repair");
    for (const kvrimage::text_edit& edit : found.fix) {
        expect(edit.offset + edit.length <= text.size(), "a repair reaches beyond the file");
    }
    expect(!kvrimage::diagnostic_text(found, "file", text).empty(), "a diagnostic has no text");
}

/// Every command refuses what is broken, with the diagnostic of the check, and takes what is not.
void expect_same_reading(const kvrimage::read_result& checked, std::string_view text,
                         const kvrimage::read_options& options) {
    const kvrimage::read_result read = kvrimage::parse(text, options);
    const diagnostic* const broken = first_broken(checked);
    const diagnostic* const refused = first_broken(read);
    expect((broken == nullptr) == (refused == nullptr), "check and reading differ in their verdict");
    expect(broken == nullptr || (broken->id == refused->id && broken->where == refused->where &&
                                 broken->message == refused->message),
           "check and reading differ in their words");
    expect(read.image.has_value() == (refused == nullptr), "an image is missing, or that of a broken file");
}

void expect_repaired(std::string_view text, const kvrimage::check_options& options) {
    const kvrimage::repaired file = kvrimage::repair(std::string(text), options);
    expect(!file.repairs.empty(), "there are repairs, and none is made");
    for (const diagnostic& found : file.left.diagnostics) {
        expect(found.fix.empty(), "a repair was left out");
    }
}

} // namespace

void try_check(std::string_view input) {
    input_bytes settings(input);
    const tried_format& format = settings.choose(tried_formats);
    const limits_of_person& said = settings.choose(said_by_person);
    kvrimage::check_options options;
    options.read.as = kvrimage::format_of_name(format.id);
    options.read.width = said.width;
    options.read.depth = said.depth;
    const std::string text(settings.rest());

    kvrimage::read_result checked;
    {
        const resource_limits limits(input.size());
        checked = kvrimage::check(text, options);
    }
    if (!said.width && !said.depth && std::ranges::none_of(checked.diagnostics, is_error)) {
        expect(format.library_reads(text), "check finds nothing in what the library refuses");
    }
    for (const diagnostic& found : checked.diagnostics) {
        expect_in_file(found, text);
    }
    expect_same_reading(checked, text, options.read);
    expect(!kvrmem::json_text(kvrmem::report_as_json("file", checked)).empty(), "there is no JSON");
    const bool has_repairs =
        std::ranges::any_of(checked.diagnostics, [](const diagnostic& found) { return !found.fix.empty(); });
    if (has_repairs) {
        expect_repaired(text, options);
    }
}

} // namespace kvr_fuzz
