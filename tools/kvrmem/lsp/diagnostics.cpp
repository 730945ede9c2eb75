#include "kvrimage/diagnostics/visible_text.h"
#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace kvrmem::lsp {

namespace {

using kvrimage::diagnostic;
using kvrimage::diagnostic_class;
using kvrimage::place;

enum severity : int { severity_error = 1, severity_warning = 2, severity_information = 3 };

int severity_of(const diagnostic& found) {
    return kvrimage::about(found.id).level == diagnostic_class::suspect ? severity_warning : severity_error;
}

json made_diagnostic(json range, int severity, std::string_view code, const std::string& message) {
    return {{"range", std::move(range)},
            {"severity", severity},
            {"code", code},
            {"source", "kvrmem"},
            {"message", message}};
}

std::string message_of(const diagnostic& found) {
    std::string text = kvrimage::make_visible(found.message).text;
    if (!found.consumer.empty()) {
        text = fmt::format("for {}: {}", found.consumer, text);
    }
    if (found.count > 1) {
        text += fmt::format(" ({} in all)", counted(found.count, "place"));
    }
    if (!found.hint.empty()) {
        text += fmt::format("\nhint: {}", kvrimage::make_visible(found.hint).text);
    }
    return text;
}

/// Faults of the whole file are placed at its first character.
kvrimage::span span_of(const place& where) {
    return where.line == 0 ? kvrimage::span() : kvrimage::span{where.offset, where.length};
}

void add_diagnostic(const document& of, const diagnostic& found, json& all) {
    const std::string_view code = kvrimage::about(found.id).code;
    all.push_back(
        made_diagnostic(of.range(span_of(found.where)), severity_of(found), code, message_of(found)));
    for (const place& each : found.more) {
        all.push_back(made_diagnostic(
            of.range(span_of(each)), severity_of(found), code,
            fmt::format("as in line {}: {}", found.where.line, kvrimage::make_visible(found.message).text)));
    }
}

} // namespace

json diagnostics_of(document& of) {
    json all = json::array();
    if (!of.is_text()) {
        return all;
    }
    const kvrimage::read_result& found = of.result();
    for (const diagnostic& each : found.diagnostics) {
        add_diagnostic(of, each, all);
    }
    if (found.facts.diagnostics_left_out != 0) {
        all.push_back(made_diagnostic(
            of.range({}), severity_information, "left-out",
            fmt::format("{} not shown", counted(found.facts.diagnostics_left_out, "more diagnostic"))));
    }
    return all;
}

} // namespace kvrmem::lsp
