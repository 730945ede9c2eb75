#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/format_table.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <array>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::format;

json_value as_json() {
    json_value all = json_value::array();
    for (const format* one : kvrimage::formats()) {
        all.push_back(
            {{"name", one->id},
             {"title", one->title},
             {"extensions", std::vector<std::string>(one->extensions.begin(), one->extensions.end())},
             {"uses", uses_of(*one)},
             {"addresses", title_of(one->counts)},
             {"states", stated_by(*one)},
             {"holds", held_by(*one)}});
    }
    return {{"schema", "kvrmem-formats-1"}, {"formats", std::move(all)}};
}

exit_code list_formats(const arguments& given) {
    if (given.json) {
        print_json(as_json());
    } else {
        print(format_table());
    }
    return exit_code::success;
}

constexpr std::array formats_options = {option_id::json};

} // namespace

const command formats_command = {
    "formats",
    "",
    "List the file formats: their names, and what they can do and hold.",
    "  $ kvrmem formats\n"
    "  $ kvrmem formats --json | jq -r '.formats[].name'\n",
    "NAME is the value for --from and --to. STATES lists what files of the format state.\n"
    "HOLDS lists what they can hold: words that are not set (gaps), bits that are neither\n"
    "0 nor 1, and ranges of equal words in one line.\n",
    0,
    0,
    formats_options,
    list_formats};

} // namespace kvrmem
