#include "tools/kvrmem/files/written_report.h"

#include "tools/kvrmem/platform/tool_error.h"

#include <utility>

namespace kvrmem {

void require_json_apart(const arguments& given, const std::string& target) {
    if (given.json && target == "-") {
        usage_error("--json and the file - exclude each other: both are standard output");
    }
}

json_value report_on_inputs(const char* schema, std::span<const memory_input> inputs) {
    json_value all = json_value::array();
    for (const memory_input& input : inputs) {
        all.push_back({{"file", json_name(input.path)}, {"format", input.result.facts.as->title}});
    }
    return {{"schema", schema}, {"inputs", std::move(all)}};
}

json_value output_as_json(const std::string& target, const kvrimage::memory_image& image,
                          const kvrimage::write_options& options) {
    return {{"file", json_name(target)},
            {"format", options.as->title},
            {"width", image.width()},
            {"depth", image.depth()},
            {"words", image.count_set()}};
}

} // namespace kvrmem
