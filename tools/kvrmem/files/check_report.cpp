#include "tools/kvrmem/files/check_report.h"

#include "kvrimage/diagnostics/visible_text.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::diagnostic;
using kvrimage::diagnostic_class;

/// In the order of diagnostic_class.
constexpr std::array<const char*, 3> class_names = {"broken", "consumer", "suspect"};

json_value as_json(const kvrimage::place& where) {
    return {
        {"line", where.line}, {"column", where.column}, {"offset", where.offset}, {"length", where.length}};
}

/// Escaped, since it may quote any bytes of a file.
json_value text_or_null(const std::string& text) {
    return text.empty() ? json_value(nullptr) : json_value(kvrimage::make_visible(text).text);
}

/// Diagnostics of the whole file have no places.
json_value places_as_json(const diagnostic& found) {
    json_value places = json_value::array();
    if (found.where != kvrimage::place{}) {
        places.push_back(as_json(found.where));
        for (const kvrimage::place& where : found.more) {
            places.push_back(as_json(where));
        }
    }
    return places;
}

json_value fix_as_json(const diagnostic& found) {
    if (found.fix.empty()) {
        return nullptr;
    }
    json_value edits = json_value::array();
    for (const kvrimage::text_edit& edit : found.fix) {
        edits.push_back(
            {{"offset", edit.offset}, {"length", edit.length}, {"replacement", edit.replacement}});
    }
    return {{"what", text_or_null(found.repair)}, {"edits", std::move(edits)}};
}

json_value as_json(const diagnostic& found) {
    const kvrimage::diagnostic_kind& kind = kvrimage::about(found.id);
    json_value document;
    document["code"] = kind.code;
    document["class"] = class_names[static_cast<std::size_t>(kind.level)];
    document["consumer"] = text_or_null(found.consumer);
    document["message"] = text_or_null(found.message);
    document["hint"] = text_or_null(found.hint);
    document["places"] = places_as_json(found);
    document["count"] = found.count;
    document["fix"] = fix_as_json(found);
    return document;
}

} // namespace

diagnostic_counts::diagnostic_counts(const kvrimage::read_result& result)
    : not_kept(result.facts.diagnostics_left_out) {
    for (const diagnostic& found : result.diagnostics) {
        ++counts[static_cast<std::size_t>(kvrimage::about(found.id).level)];
    }
}

void diagnostic_counts::add(const diagnostic_counts& other) {
    std::ranges::transform(counts, other.counts, counts.begin(), std::plus<>());
    not_kept += other.not_kept;
}

std::uint64_t diagnostic_counts::errors() const noexcept {
    return of(diagnostic_class::broken) + of(diagnostic_class::consumer);
}

std::string diagnostic_counts::text() const {
    const std::string more = not_kept == 0 ? "" : fmt::format(" and {} more", not_kept);
    if (warnings() == 0) {
        return counted(errors(), "error") + more;
    }
    if (errors() == 0) {
        return counted(warnings(), "warning") + more;
    }
    return fmt::format("{}, {}{}", counted(errors(), "error"), counted(warnings(), "warning"), more);
}

std::string report_as_text(const std::string& name, std::string_view contents,
                           const kvrimage::read_result& result, const kvrimage::text_painter& paint) {
    std::string text;
    for (const diagnostic& found : result.diagnostics) {
        text += kvrimage::diagnostic_text(found, name, contents, paint);
    }
    return text;
}

json_value report_as_json(const std::string& path, const kvrimage::read_result& result) {
    const diagnostic_counts counts(result);
    json_value document;
    document["file"] = json_name(path);
    document["format"] =
        result.facts.as != nullptr ? json_value(result.facts.as->title) : json_value(nullptr);
    for (std::size_t level = 0; level < class_names.size(); ++level) {
        document[class_names[level]] = counts.of(static_cast<diagnostic_class>(level));
    }
    document["left_out"] = counts.left_out();
    document["diagnostics"] = json_value::array();
    for (const diagnostic& found : result.diagnostics) {
        document["diagnostics"].push_back(as_json(found));
    }
    return document;
}

} // namespace kvrmem
