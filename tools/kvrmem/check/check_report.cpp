#include "tools/kvrmem/check/check_report.h"

#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

namespace kvrmem {

namespace {

constexpr const char* title(severity level) {
    return level == severity::error ? "error" : "warning";
}

std::string place_of(const std::string& name, const check_fault& fault) {
    if (fault.line == 0) {
        return fmt::format("{}:", name);
    }
    return fault.column == 0 ? fmt::format("{}:{}:", name, fault.line)
                             : fmt::format("{}:{}:{}:", name, fault.line, fault.column);
}

std::string fault_as_text(const std::string& name, const check_source& source, const check_fault& fault,
                          const painter& paint) {
    const style level_style = fault.level == severity::error ? style::bold_red : style::bold_magenta;
    std::string text =
        fmt::format("{} {} {}\n", paint.paint(style::bold, place_of(name, fault)),
                    paint.paint(level_style, fmt::format("{}:", title(fault.level))), fault.message);
    if (fault.line != 0 && fault.column != 0) {
        const excerpt shown = make_excerpt(source.line(fault.line), fault.column, fault.length);
        const std::size_t caret = shown.mark.find('^');
        text += fmt::format("  {}\n  {}{}\n", shown.line, shown.mark.substr(0, caret),
                            paint.paint(style::green, shown.mark.substr(caret)));
    }
    if (!fault.hint.empty()) {
        text += fmt::format("  hint: {}\n", fault.hint);
    }
    return text;
}

json_value number_or_null(std::uint64_t number) {
    return number != 0 ? json_value(number) : json_value(nullptr);
}

json_value fault_as_json(const check_fault& fault) {
    json_value document;
    document["severity"] = title(fault.level);
    document["line"] = number_or_null(fault.line);
    document["column"] = number_or_null(fault.column);
    document["length"] = number_or_null(fault.column != 0 ? fault.length : 0);
    document["code"] = fault.code;
    document["message"] = fault.message;
    document["hint"] = fault.hint.empty() ? json_value(nullptr) : json_value(fault.hint);
    return document;
}

} // namespace

std::string faults_as_text(const std::string& name, const check_source& source, const fault_list& faults,
                           const painter& paint) {
    std::string text;
    for (const check_fault& fault : faults.sorted()) {
        text += fault_as_text(name, source, fault, paint);
    }
    for (const severity level : {severity::error, severity::warning}) {
        if (faults.dropped(level) != 0) {
            text += fmt::format("{} and {}\n", paint.paint(style::bold, fmt::format("{}:", name)),
                                counted(faults.dropped(level), fmt::format("more {}", title(level))));
        }
    }
    return text;
}

std::string counted_faults(std::uint64_t errors, std::uint64_t warnings) {
    if (warnings == 0) {
        return counted(errors, "error");
    }
    if (errors == 0) {
        return counted(warnings, "warning");
    }
    return fmt::format("{}, {}", counted(errors, "error"), counted(warnings, "warning"));
}

json_value faults_as_json(const std::string& path, const char* format, const fault_list& faults) {
    json_value list = json_value::array();
    for (const check_fault& fault : faults.sorted()) {
        list.push_back(fault_as_json(fault));
    }
    json_value document;
    document["file"] = json_name(path);
    document["format"] = format;
    document["errors"] = faults.count(severity::error);
    document["warnings"] = faults.count(severity::warning);
    document["left_out"] = faults.dropped(severity::error) + faults.dropped(severity::warning);
    document["faults"] = std::move(list);
    return document;
}

} // namespace kvrmem
