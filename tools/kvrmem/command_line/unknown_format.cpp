#include "tools/kvrmem/command_line/unknown_format.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/command_line/suggestion.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace kvrmem {

namespace {

struct other_format_name {
    std::string_view given;
    std::string_view meant; ///< the format's name in this tool
};

/// Names and extensions of formats in other tools.
constexpr std::array other_format_names = {
    other_format_name{"intel", "hex"},       other_format_name{"intelhex", "hex"},
    other_format_name{"intel-hex", "hex"},   other_format_name{"hex8", "hexbytes"},
    other_format_name{"hex16", "hexbytes"},  other_format_name{"hex32", "hexbytes"},
    other_format_name{"ihex8", "hexbytes"},  other_format_name{"ihex16", "hexbytes"},
    other_format_name{"ihex32", "hexbytes"}, other_format_name{"i8hex", "hexbytes"},
    other_format_name{"i16hex", "hexbytes"}, other_format_name{"i32hex", "hexbytes"},
    other_format_name{"h86", "hexbytes"},    other_format_name{"a43", "hexbytes"},
    other_format_name{"mcs", "hexbytes"},    other_format_name{"s1", "srec"},
    other_format_name{"s2", "srec"},         other_format_name{"s3", "srec"},
    other_format_name{"sx", "srec"},         other_format_name{"srecord", "srec"},
    other_format_name{"s-record", "srec"},   other_format_name{"mhx", "srec"},
    other_format_name{"exo", "srec"},        other_format_name{"raw", "binary"},
    other_format_name{"data", "binary"},     other_format_name{"bytes", "binary"},
    other_format_name{"elf32", "elf"},       other_format_name{"elf64", "elf"},
    other_format_name{"o", "elf"},           other_format_name{"memh", "readmemh"},
    other_format_name{"vmh", "readmemh"},    other_format_name{"memb", "readmemb"},
    other_format_name{"ti-txt", "titxt"},    other_format_name{"systemverilog", "verilog"},
    other_format_name{"svh", "verilog"},     other_format_name{"header", "c"},
    other_format_name{"carray", "c"},        other_format_name{"hpp", "c"},
};

/// Returns the most likely format of the contents of @p path; null if there is none, or if it is not a
/// regular file.
const kvrimage::format* format_of_contents(const std::string& path) {
    const std::filesystem::path place = kvrimage::platform::path_of(path);
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(place, ignored)) {
        return nullptr;
    }
    std::string head(kvrimage::sniffed_bytes, '\0');
    std::ifstream file(place, std::ios::binary);
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    const auto found = kvrimage::sniff(head, path);
    return found.empty() || found.front().as->read == nullptr ? nullptr : found.front().as;
}

/// Returns the command line with @p meant in place of the value @p name of @p option.
std::string line_with_format(std::string_view option, const std::string& name, const arguments& given,
                             const kvrimage::format& meant) {
    const std::string in_one_word = fmt::format("--{}={}", option, name);
    const bool is_one_word = std::ranges::find(given.words, in_one_word) != given.words.end();
    return is_one_word
               ? command_with_replaced(given.words, in_one_word, fmt::format("--{}={}", option, meant.id))
               : command_with_replaced(given.words, name, meant.id);
}

} // namespace

const kvrimage::format* format_meant_by(std::string_view name) {
    const auto* const found = std::ranges::find_if(other_format_names, [name](const other_format_name& each) {
        return kvr::equal_ignoring_case(each.given, name);
    });
    return found != other_format_names.end() ? kvrimage::format_of_name(found->meant) : nullptr;
}

const kvrimage::format* format_meant_by_extension(std::string_view path) {
    const std::size_t dot = path.find_last_of("./");
    return dot != std::string_view::npos && path[dot] == '.' ? format_meant_by(path.substr(dot + 1))
                                                             : nullptr;
}

void refuse_format_name(std::string_view option, const std::string& name, const arguments& given) {
    const std::string refusal = fmt::format("--{} {}: there is no such format; ", option, name);
    if (option == "from" && !given.files.empty()) {
        const kvrimage::format* const seen = format_of_contents(given.files.front());
        if (seen != nullptr) {
            usage_error(fmt::format("{}{} looks like {}; try: {}", refusal, given.files.front(), seen->title,
                                    line_with_format(option, name, given, *seen)));
        }
    }
    const kvrimage::format* const meant = format_meant_by(name);
    if (meant != nullptr && (option != "to" || meant->write != nullptr)) {
        usage_error(fmt::format("{}{} is called {} here; try: {}", refusal, meant->title, meant->id,
                                line_with_format(option, name, given, *meant)));
    }
    const std::string nearest = nearest_of(name, format_ids());
    usage_error(fmt::format("{}{}kvrmem formats lists them", refusal,
                            nearest.empty() ? "" : fmt::format("did you mean {}? ", nearest)));
}

} // namespace kvrmem
