#include "tools/kvrmem/commands/other_commands.h"

#include "kvrimage/files/platform.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/numbers/human_number.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <vector>

namespace kvrmem {

namespace {

/// A way to do with this tool what other tools have a command for.
struct our_way {
    const command* meant;
    std::string_view reason;
    std::string_view options = {};  ///< required options, separated by blanks
    std::string_view new_file = {}; ///< for --output, without extension; "": not needed
};

constexpr our_way by_diff = {&diff_command, "compares two memories word by word"};
constexpr our_way by_set = {&set_command, "changes single words of a file"};
constexpr our_way by_fill = {&fill_command, "gives ranges of addresses new words"};
constexpr our_way by_dump = {&dump_command, "shows a memory as a table"};
constexpr our_way by_get = {&get_command, "prints the words of addresses and ranges"};
constexpr our_way by_formats = {&formats_command, "lists the formats"};
constexpr our_way by_sum = {&sum_command, "computes checksums"};
constexpr our_way by_crc = {&sum_command, "computes checksums", "--algorithm crc-32"};
constexpr our_way by_hash = {&sum_command, "computes checksums", "--algorithm sha-256"};
constexpr our_way by_split = {&split_command, "writes the parts of a memory to files"};
constexpr our_way by_join = {&join_command, "puts lanes, banks or blocks together again", "", "joined"};
constexpr our_way by_merge = {&merge_command, "puts the words of several files into one memory", "",
                              "merged"};
constexpr our_way by_overlay = {&merge_command, "lays the words of a file over those of another",
                                "--overlap last", "merged"};
constexpr our_way by_convert = {&convert_command, "writes a memory in another format"};
constexpr our_way by_check = {&check_command, "reports every fault of a file"};
constexpr our_way by_fix = {&check_command, "repairs what is certain with --fix", "--fix", "fixed"};
constexpr our_way by_info = {&info_command, "shows what a file holds"};
constexpr our_way by_statistics = {&info_command, "counts the words with --statistics", "--statistics"};
constexpr our_way by_new = {&new_command, "makes a memory file"};
constexpr our_way by_plot = {&plot_command, "draws the words of a memory"};
constexpr our_way by_radix = {&radix_command, "converts one number"};
constexpr our_way by_format = {&format_command, "brings files into the layout of their formats"};
constexpr our_way by_lsp = {&lsp_command, "serves editors"};

struct other_command {
    std::string_view name;
    const our_way* first;
    const our_way* second = nullptr; ///< used if the words do not fit the first
};

/// Commands of other tools.
constexpr std::array other_commands = {
    other_command{"compare", &by_diff},
    other_command{"cmp", &by_diff},
    other_command{"difference", &by_diff},
    other_command{"equal", &by_diff},
    other_command{"patch", &by_set, &by_overlay},
    other_command{"poke", &by_set},
    other_command{"write", &by_set},
    other_command{"put", &by_set},
    other_command{"edit", &by_set},
    other_command{"modify", &by_set},
    other_command{"change", &by_set},
    other_command{"erase", &by_fill},
    other_command{"clear", &by_fill},
    other_command{"memset", &by_fill},
    other_command{"show", &by_dump},
    other_command{"view", &by_dump},
    other_command{"cat", &by_dump},
    other_command{"print", &by_dump},
    other_command{"display", &by_dump},
    other_command{"hexdump", &by_dump},
    other_command{"xxd", &by_dump},
    other_command{"od", &by_dump},
    other_command{"list", &by_dump, &by_formats},
    other_command{"ls", &by_dump, &by_formats},
    other_command{"types", &by_formats},
    other_command{"list-formats", &by_formats},
    other_command{"peek", &by_get},
    other_command{"read", &by_get, &by_dump},
    other_command{"extract", &by_get},
    other_command{"checksum", &by_sum},
    other_command{"cksum", &by_sum},
    other_command{"crc", &by_crc},
    other_command{"crc32", &by_crc},
    other_command{"hash", &by_hash},
    other_command{"digest", &by_hash},
    other_command{"sha256", &by_hash},
    other_command{"sha256sum", &by_hash},
    other_command{"split-file", &by_split},
    other_command{"divide", &by_split},
    other_command{"partition", &by_split},
    other_command{"interleave", &by_join},
    other_command{"assemble", &by_join},
    other_command{"concat", &by_merge},
    other_command{"concatenate", &by_merge},
    other_command{"combine", &by_merge},
    other_command{"append", &by_merge},
    other_command{"overlay", &by_overlay},
    other_command{"export", &by_convert},
    other_command{"import", &by_convert},
    other_command{"translate", &by_convert},
    other_command{"transcode", &by_convert},
    other_command{"save", &by_convert},
    other_command{"validate", &by_check},
    other_command{"verify", &by_diff, &by_check},
    other_command{"lint", &by_check},
    other_command{"test", &by_check},
    other_command{"fix", &by_fix},
    other_command{"repair", &by_fix},
    other_command{"stats", &by_statistics},
    other_command{"stat", &by_statistics},
    other_command{"statistics", &by_statistics},
    other_command{"histogram", &by_statistics},
    other_command{"summary", &by_info},
    other_command{"inspect", &by_info},
    other_command{"describe", &by_info},
    other_command{"size", &by_info},
    other_command{"create", &by_new},
    other_command{"gen", &by_new},
    other_command{"generate", &by_new},
    other_command{"make", &by_new},
    other_command{"init", &by_new},
    other_command{"draw", &by_plot},
    other_command{"graph", &by_plot},
    other_command{"chart", &by_plot},
    other_command{"calc", &by_radix},
    other_command{"base", &by_radix},
    other_command{"number", &by_radix},
    other_command{"fmt", &by_format},
    other_command{"tidy", &by_format},
    other_command{"pretty", &by_format},
    other_command{"reformat", &by_format},
    other_command{"server", &by_lsp},
    other_command{"language-server", &by_lsp},
};

/// Parses @p words as a command line of @p meant; nothing if they are invalid.
std::optional<arguments> parsed_for(const command& meant, std::vector<std::string> words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size());
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    try {
        return parse_arguments(meant, static_cast<int>(words.size()), pointers.data());
    } catch (const tool_error&) {
        return std::nullopt;
    }
}

/// Returns whether the operands match the usage line: all paths, then assignments or addresses.
bool have_the_form(const arguments& given) {
    const operand_words shown = operands_of(*given.which);
    if (shown.paths != any_number && given.files.size() < shown.paths) {
        return false;
    }
    const bool are_assignments = shown.others.find('=') != std::string_view::npos;
    const bool are_addresses = shown.others.starts_with("ADDRESS");
    for (std::size_t index = shown.paths; index < given.files.size(); ++index) {
        const std::string& operand = given.files[index];
        if ((are_assignments && operand.find('=') == std::string::npos) ||
            (are_addresses && !are_assignments && !read_address_range(operand))) {
            return false;
        }
    }
    return true;
}

/// Returns the options that @p way needs after the name of the command.
std::string needed_options(const our_way& way, const arguments& given) {
    std::string options(way.options);
    if (!way.new_file.empty() && !given.output) {
        const std::string extension =
            kvrimage::platform::text_of(kvrimage::platform::path_of(given.files.front()).extension());
        options += fmt::format("{}-o {}", options.empty() ? "" : " ",
                               shell_word(std::string(way.new_file) + extension));
    }
    return options;
}

/// Returns the command line @p words with the command of @p way; "" if the words do not fit.
std::string line_for(const our_way& way, std::span<const std::string> words) {
    std::vector<std::string> ours(words.begin(), words.end());
    ours.front() = way.meant->name;
    const std::optional<arguments> given = parsed_for(*way.meant, ours);
    if (!given || given->help || !have_the_form(*given)) {
        return "";
    }
    if (!way.new_file.empty() && given->files.empty()) { // which determine the new file
        return "";
    }
    std::string line = fmt::format("kvrmem {}", way.meant->name);
    const std::string options = needed_options(way, *given);
    line += options.empty() ? "" : " " + options;
    for (const std::string& word : std::span(ours).subspan(1)) {
        line += " " + shell_word(word);
    }
    return line;
}

std::string advice(const our_way& way, const std::string& line) {
    return fmt::format("{} {}; {}", way.meant->name, way.reason,
                       line.empty() ? fmt::format("see kvrmem {} --help", way.meant->name)
                                    : fmt::format("try: {}", line));
}

} // namespace

std::string advice_on_other_command(std::span<const std::string> words) {
    const auto* const found = std::ranges::find(other_commands, words.front(), &other_command::name);
    if (found == other_commands.end()) {
        return "";
    }
    for (const our_way* way : {found->first, found->second}) {
        const std::string line = way != nullptr ? line_for(*way, words) : "";
        if (!line.empty()) {
            return advice(*way, line);
        }
    }
    return advice(*found->first, "");
}

} // namespace kvrmem
