#include "tools/kvrmem/files/format_choice.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <vector>

namespace kvrmem {

namespace {

/// "--from mif, which it looks like", if @p contents say so.
std::string likely_option(std::string_view option, std::string_view contents) {
    const std::vector<kvrimage::sniffed> found = kvrimage::sniff(contents);
    const bool is_likely = !found.empty() && found.front().how_sure >= kvrimage::certainty::likely;
    return is_likely ? fmt::format("{} {}, which it looks like", option, found.front().as->id)
                     : std::string(option);
}

} // namespace

const kvrimage::format& format_for(const kvrimage::format* given, const std::string& path,
                                   std::string_view option, std::string_view contents) {
    const kvrimage::format* const found = given != nullptr ? given : kvrimage::format_of_path(path);
    if (found == nullptr) {
        usage_error(fmt::format("{}: the name does not tell the format ({}); give {}", path,
                                format_extensions(", "), likely_option(option, contents)));
    }
    return *found;
}

void note_other_extension(const std::string& path, const kvrimage::format& written) {
    const kvrimage::format* const named = kvrimage::format_of_path(path);
    if (named != nullptr && named != &written) {
        tell(fmt::format("{}: note: the name says {}, what was written is {}",
                         kvrimage::title_of_output(path), named->title, written.title));
    }
}

} // namespace kvrmem
