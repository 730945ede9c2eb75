#include "tools/kvrmem/files/words_as_json.h"

#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <string>

namespace kvrmem {

namespace {

std::string name_of(const word_radix& radix) {
    return radix.is_fixed_point() ? fmt::format("fixed:{}.{}", radix.integer_bits, radix.fraction_bits)
                                  : std::string(kvrimage::title_of(radix.digits));
}

json_value run_as_json(const shown_run& run, const word_radix& radix) {
    json_value entry = {{"first", run.addresses.first}, {"last", run.addresses.last}};
    entry["word"] = run.value ? json_value(shown_or_gap(run.value, radix)) : json_value(nullptr);
    if (run.is_unreadable) {
        entry["unreadable"] = true;
    }
    return entry;
}

} // namespace

bool print_words_as_json(std::string_view schema, const memory_input& input,
                         std::span<const kvrimage::address_range> ranges, const word_radix& radix) {
    const json_value name = json_name(input.path);
    output_stream output;
    output.write(
        fmt::format("{{\n  \"schema\": \"{}\",\n  \"file\": {},\n  \"format\": {},\n  \"width\": {},\n"
                    "  \"depth\": {},\n  \"radix\": \"{}\",\n  \"words\": [",
                    schema, json_text(name), json_text(input.result.facts.as->title), input.image().width(),
                    input.image().depth(), name_of(radix)));
    bool all_set = true;
    const char* separator = "";
    for (const kvrimage::address_range& range : ranges) {
        for_each_shown_run(input.result, range, [&](const shown_run& run) {
            all_set = all_set && run.value.has_value();
            output.write(fmt::format("{}\n    {}", separator, json_text(run_as_json(run, radix))));
            separator = ",";
        });
    }
    output.write("\n  ]\n}\n");
    output.finish();
    return all_set;
}

} // namespace kvrmem
