#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/diagnostics/visible_text.h"
#include "tools/kvrmem/check/outputs.h"
#include "tools/kvrmem/check/reported_fault.h"
#include "tools/kvrmem/platform/json.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::place;
using kvrimage::text_edit;

/// Returns a relative reference, or a file URI for an absolute path.
std::string uri_of(const std::string& path) {
    if (path == "-") {
        return "stdin";
    }
    constexpr std::string_view unreserved =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string uri(path.starts_with('/') ? "file://" : "");
    for (const char character : path) {
        if (unreserved.find(character) != std::string_view::npos) {
            uri += character;
        } else {
            uri += fmt::format("%{:02X}", static_cast<unsigned char>(character));
        }
    }
    return uri;
}

json_value artifact_of(const std::string& path) {
    return {{"uri", uri_of(path)}};
}

json_value text_of(std::string_view text) {
    return {{"text", text}};
}

json_value sarif_region(std::string_view contents, std::uint64_t offset, std::uint64_t length,
                        std::uint64_t line) {
    const text_region region = region_of(contents, offset, length, line);
    const std::uint64_t begin = std::min<std::uint64_t>(offset, contents.size());
    return {{"startLine", region.first_line},
            {"startColumn", region.first_column},
            {"endLine", region.last_line},
            {"endColumn", region.end_column},
            {"byteOffset", begin},
            {"byteLength", std::min<std::uint64_t>(length, contents.size() - begin)}};
}

/// A place{} gives the location of the whole file.
json_value location_of(const checked_file& file, const place& where) {
    json_value physical = {{"artifactLocation", artifact_of(file.input.path)}};
    if (where != place{}) {
        physical["region"] = sarif_region(file.input.file.contents(), where.offset, where.length, where.line);
    }
    return {{"physicalLocation", std::move(physical)}};
}

bool is_unicode(std::string_view text) {
    while (!text.empty()) {
        const kvrimage::utf8_character character = kvrimage::first_character(text);
        if (character.code == 0 && text.front() != '\0') {
            return false;
        }
        text.remove_prefix(character.bytes.size());
    }
    return true;
}

/// Returns nothing without a repair, or if a repair contains bytes that are not text.
json_value fixes_of(const checked_file& file, const kvrimage::diagnostic& found) {
    if (found.fix.empty() || !std::ranges::all_of(found.fix, is_unicode, &text_edit::replacement)) {
        return nullptr;
    }
    const std::string_view contents = file.input.file.contents();
    // A fault of the whole file has no place.
    const place known = found.where != place{} ? found.where : place{1, 1, 0, 0};
    json_value replacements = json_value::array();
    for (const text_edit& edit : found.fix) {
        replacements.push_back({{"deletedRegion", sarif_region(contents, edit.offset, edit.length,
                                                               line_at(contents, edit.offset, known))},
                                {"insertedContent", text_of(edit.replacement)}});
    }
    json_value change = {{"artifactLocation", artifact_of(file.input.path)},
                         {"replacements", std::move(replacements)}};
    return json_value::array({{{"description", text_of(kvrimage::make_visible(found.repair).text)},
                               {"artifactChanges", json_value::array({std::move(change)})}}});
}

const char* sarif_level(const reported_fault& fault) {
    return fault.is_error ? "error" : "warning";
}

json_value rule_of(const reported_fault& fault) {
    const std::string example =
        fault.example.empty() ? "" : fmt::format(" Example: {}", kvrimage::make_visible(fault.example).text);
    return {{"id", fault.code},
            {"shortDescription", text_of(fault.documentation)},
            {"help", text_of(std::string(fault.documentation) + example)},
            {"defaultConfiguration", {{"level", sarif_level(fault)}}}};
}

class sarif_output final : public check_output {
public:
    explicit sarif_output(const arguments& arguments_given) : given(arguments_given) {}

    [[nodiscard]] std::size_t most_diagnostics() const override { return most_in_json; }
    void take(const checked_file& file) override {
        artifacts.push_back({{"location", artifact_of(file.input.path)}});
        for (const reported_fault& fault : faults_of(file)) {
            results.push_back(result_of(file, fault));
        }
        if (const std::uint64_t left_out = file.input.result.facts.diagnostics_left_out; left_out != 0) {
            notify(file.input.path, fmt::format("{} more faults are omitted", left_out), "note");
        }
    }
    void report_refused(const std::string& path, std::string_view reason) override {
        notify(path, reason, "error");
    }
    void finish(const check_totals& totals) override {
        json_value invocation = {{"executionSuccessful", totals.refused == 0},
                                 {"exitCode", static_cast<int>(totals.verdict(given.strict))}};
        if (!notifications.empty()) {
            invocation["toolExecutionNotifications"] = std::move(notifications);
        }
        json_value driver = {{"name", "kvrmem"}, {"version", KVRMEM_VERSION}, {"rules", std::move(rules)}};
        json_value run = {{"tool", {{"driver", std::move(driver)}}},
                          {"invocations", json_value::array({std::move(invocation)})},
                          {"columnKind", "unicodeCodePoints"},
                          {"artifacts", std::move(artifacts)},
                          {"results", std::move(results)}};
        print_json({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                    {"version", "2.1.0"},
                    {"runs", json_value::array({std::move(run)})}});
    }

private:
    json_value result_of(const checked_file& file, const reported_fault& fault) {
        json_value result = {{"ruleId", fault.code},
                             {"ruleIndex", index_of(fault)},
                             {"level", sarif_level(fault)},
                             {"message", text_of(fault.sentence())}};
        result["locations"] =
            json_value::array({location_of(file, fault.found != nullptr ? fault.found->where : place{})});
        if (fault.found == nullptr) {
            return result;
        }
        json_value related = json_value::array();
        for (const place& where : fault.found->more) {
            related.push_back(location_of(file, where));
        }
        if (!related.empty()) {
            result["relatedLocations"] = std::move(related);
        }
        if (json_value fixes = fixes_of(file, *fault.found); !fixes.is_null()) {
            result["fixes"] = std::move(fixes);
        }
        return result;
    }
    /// Returns the index of the rule, and adds the rule if it is new.
    std::size_t index_of(const reported_fault& fault) {
        const auto known = std::ranges::find(codes, fault.code);
        if (known == codes.end()) {
            codes.push_back(fault.code);
            rules.push_back(rule_of(fault));
            return codes.size() - 1;
        }
        return static_cast<std::size_t>(known - codes.begin());
    }
    void notify(const std::string& path, std::string_view text, const char* level) {
        json_value location = {{"physicalLocation", {{"artifactLocation", artifact_of(path)}}}};
        notifications.push_back({{"level", level},
                                 {"message", text_of(kvrimage::make_visible(text).text)},
                                 {"locations", json_value::array({std::move(location)})}});
    }

    const arguments& given;
    std::vector<std::string_view> codes; ///< of the rules
    json_value rules = json_value::array();
    json_value artifacts = json_value::array();
    json_value results = json_value::array();
    json_value notifications = json_value::array();
};

} // namespace

std::unique_ptr<check_output> make_sarif_output(const arguments& given) {
    return std::make_unique<sarif_output>(given);
}

} // namespace kvrmem
