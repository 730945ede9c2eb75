#include "tools/kvrmem/files/format_choice.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/unknown_format.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

[[noreturn]] void refuse_name(const std::string& path, std::string_view advice) {
    usage_error(fmt::format("{}: {} not determine the format; give {} (kvrmem formats lists them)",
                            kvrimage::title_of_input(path), path == "-" ? "the contents do" : "the name does",
                            advice));
}

[[noreturn]] void refuse_format(const std::string& path, const kvrimage::format& as) {
    usage_error(fmt::format("{}: {} cannot be read, only written; if the file has another format, give "
                            "--from (kvrmem formats lists them)",
                            kvrimage::title_of_input(path), as.title));
}

/// Returns @p option, with its value if the extension of @p path is that of another tool.
std::string advice_for(const std::string& path, std::string_view option) {
    const kvrimage::format* const meant = format_meant_by_extension(path);
    return meant != nullptr ? fmt::format("{} {}, if it is {}", option, meant->id, meant->title)
                            : std::string(option);
}

bool is_readable(const kvrimage::format* as) {
    return as->read != nullptr;
}

} // namespace

const kvrimage::format& format_for(const kvrimage::format* given, const std::string& path,
                                   std::string_view option) {
    const kvrimage::format* const found = given != nullptr ? given : kvrimage::format_of_path(path);
    if (found == nullptr) {
        refuse_name(path, advice_for(path, option));
    }
    return *found;
}

void require_known_format(const kvrimage::format* given, const std::string& path, std::string_view contents) {
    if (given != nullptr) {
        if (!is_readable(given)) {
            refuse_format(path, *given);
        }
        return;
    }
    const std::vector<const kvrimage::format*> named = kvrimage::formats_of_path(path);
    if (!named.empty()) {
        if (std::ranges::none_of(named, is_readable)) {
            refuse_format(path, *named.front());
        }
        return;
    }
    const std::vector<kvrimage::sniffed> found = kvrimage::sniff(contents);
    const kvrimage::certainty best = found.empty() ? kvrimage::certainty::no : found.front().how_sure;
    if (best != kvrimage::certainty::certain) {
        refuse_name(path, best == kvrimage::certainty::likely
                              ? fmt::format("--from {}, which it looks like", found.front().as->id)
                              : advice_for(path, "--from"));
    }
}

void note_other_extension(const std::string& path, const kvrimage::format& written) {
    const std::vector<const kvrimage::format*> named = kvrimage::formats_of_path(path);
    if (!named.empty() && std::ranges::find(named, &written) == named.end()) {
        print_message(fmt::format("{}: note: the name states {}, but {} was written",
                                  kvrimage::title_of_output(path), named.front()->title, written.title));
    }
}

} // namespace kvrmem
