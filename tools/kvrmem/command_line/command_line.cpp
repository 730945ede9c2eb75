#include "tools/kvrmem/command_line/command_line.h"

#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/command_line/suggestion.h"
#include "tools/kvrmem/command_line/unknown_format.h"
#include "tools/kvrmem/command_line/whole_command.h"

#include <fmt/format.h>

#include <algorithm>
#include <getopt.h>
#include <optional>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

/// Greater than every character; getopt_long() returns such values for long options.
constexpr int first_long_option = 256;

/// The input of getopt_long(): the options of one command. It returns the table index of a long option and
/// the letter of a short one.
struct getopt_tables {
    std::string letters = ":";
    std::vector<option> names;
};

getopt_tables tables_for(const command& which) {
    getopt_tables tables;
    const auto table = option_table();
    for (std::size_t index = 0; index < table.size(); ++index) {
        const option_entry& entry = table[index];
        if (!takes(which, entry.id)) {
            continue;
        }
        const bool has_value = entry.value != nullptr;
        tables.names.push_back({entry.name.c_str(), has_value ? required_argument : no_argument, nullptr,
                                static_cast<int>(index) + first_long_option});
        if (entry.letter != '\0') {
            tables.letters += entry.letter;
            tables.letters += has_value ? ":" : "";
        }
    }
    tables.names.push_back({nullptr, 0, nullptr, 0});
    return tables;
}

/// Returns the option of @p which for the result @p found of getopt_long(). A letter belongs to one option
/// only.
const option_entry& entry_of(const command& which, int found) {
    const auto table = option_table();
    if (found >= first_long_option) {
        return table[static_cast<std::size_t>(found - first_long_option)];
    }
    return *std::ranges::find_if(table, [&which, found](const option_entry& entry) {
        return entry.letter == found && takes(which, entry.id);
    });
}

/// The words after the command's name. getopt_long() would parse "-5" as options, so another character
/// replaces the hyphen of such words while it runs.
class option_words {
public:
    option_words(int count, char** words) : texts(words, words + count) {
        for (std::string& text : texts) {
            if (is_negative_number(text)) {
                text[0] = stand_in;
                numbers.push_back(text.data());
            }
            found.push_back(text.data());
        }
        found.push_back(nullptr);
    }
    [[nodiscard]] char** pointers() { return found.data(); }
    [[nodiscard]] const char* operator[](int index) {
        return restored(found[static_cast<std::size_t>(index)]);
    }
    /// Returns @p word, one of the words, in its original form.
    const char* restored(char* word) const {
        if (std::find(numbers.begin(), numbers.end(), word) != numbers.end()) {
            word[0] = '-';
        }
        return word;
    }

private:
    static constexpr char stand_in = '#';

    static bool is_negative_number(std::string_view text) {
        return text.size() > 1 && text[0] == '-' && (text[1] == '.' || (text[1] >= '0' && text[1] <= '9'));
    }

    std::vector<std::string> texts;
    std::vector<char*> found;         ///< in the order of getopt_long()
    std::vector<const char*> numbers; ///< those with a replaced hyphen
};

/// Returns the option of @p which most similar to @p given, which begins with "--"; "" if there is none.
std::string nearest_option(const command& which, std::string_view given) {
    std::vector<std::string> names;
    for (const option_entry& entry : option_table()) {
        if (takes(which, entry.id)) {
            names.push_back(fmt::format("--{}", entry.name));
        }
    }
    return nearest_of(given, std::vector<std::string_view>(names.begin(), names.end()));
}

/// Returns the letter that getopt_long() has rejected. It returns one byte; the rest of a longer character is
/// in @p next, the word at which it continues.
std::string refused_letter(std::string_view next) {
    const char byte = static_cast<char>(optopt);
    const std::size_t place = next.starts_with('-') ? next.find(byte) : std::string_view::npos;
    return fmt::format("-{}", place != std::string_view::npos
                                  ? kvrimage::first_character(next.substr(place)).bytes
                                  : std::string_view(&byte, 1));
}

/// Reports an option that getopt_long() has rejected.
[[noreturn]] void refuse_option(const command& which, option_words& words, std::span<const std::string> all) {
    if (optopt >= first_long_option) {
        usage_error(fmt::format("--{} takes no value", entry_of(which, optopt).name));
    }
    std::string nearest;
    std::string given;
    if (optopt == 0) { // a long option
        const std::string_view word = words[optind - 1];
        given = word.substr(0, word.find('='));
        nearest = option_meant_by(which, given).value_or(nearest_option(which, given));
    } else {
        const char* const next = words[optind];
        given = refused_letter(next != nullptr ? next : "");
    }
    usage_error(nearest.empty()
                    ? fmt::format("{} has no option {}; see kvrmem {} --help", which.name, given, which.name)
                    : fmt::format("{} has no option {}; try: {}", which.name, given,
                                  command_with_replaced(all, given, nearest)));
}

/// Returns whether @p option, after the operations @p before, affects how a file is read.
bool says_how_to_read(option_id option, std::vector<operation>& before) {
    if (option == option_id::depth_in_order) {
        return !change_words(before);
    }
    if (option == option_id::pad_in_order) {
        return last_reshape(before) == nullptr;
    }
    return option == option_id::layout_choice ||
           std::ranges::find(reading_options, option) != reading_options.end();
}

/// The value of an option that takes a format name.
struct format_name {
    std::string option;
    std::string name;
};

bool is_unknown_format(const option_entry& entry, const char* value) {
    return (entry.id == option_id::from || entry.id == option_id::to) &&
           kvrimage::format_of_name(value) == nullptr;
}

void require_operands(const command& which, const std::vector<std::string>& operands) {
    const std::size_t count = operands.size();
    if (count < which.least_files) {
        usage_error(fmt::format("too few operands: kvrmem {} {}", which.name, which.operands));
    }
    if (count > which.most_files) {
        usage_error(fmt::format("too many operands: kvrmem {} {}", which.name, which.operands));
    }
    if (std::find(operands.begin(), operands.end(), "") != operands.end()) {
        usage_error(fmt::format("an operand is empty: kvrmem {} {}", which.name, which.operands));
    }
}

} // namespace

bool takes(const command& which, option_id option) noexcept {
    return option == option_id::help || option == option_id::color ||
           std::find(which.options.begin(), which.options.end(), option) != which.options.end();
}

arguments parse_arguments(const command& which, int count, char** words) {
    arguments parsed;
    parsed.which = &which;
    parsed.words.assign(words, words + count);
    option_words given(count, words);
    const getopt_tables tables = tables_for(which);
    std::optional<format_name> unknown_format; // reported after the operands are known
    opterr = 0;
    optind = 1;
    for (int found = 0; (found = getopt_long(count, given.pointers(), tables.letters.c_str(),
                                             tables.names.data(), nullptr)) != -1;) {
        // On Windows, ':' is the answer to a value where none belongs, too.
        const std::string_view word = given[optind - 1];
        if (found == ':' && word.find('=') == std::string_view::npos) {
            usage_error(fmt::format("{} needs a value", given[optind - 1]));
        }
        if (found == '?' || found == ':') {
            refuse_option(which, given, parsed.words);
        }
        const option_entry& entry = entry_of(which, found);
        parsed.options.push_back(entry.id);
        const char* const value = optarg != nullptr ? given.restored(optarg) : nullptr;
        if (is_unknown_format(entry, value)) {
            unknown_format = {entry.name, value};
            continue;
        }
        const bool is_for_reading = says_how_to_read(entry.id, parsed.operations);
        entry.take(parsed, entry.name, value);
        if (is_for_reading) {
            parsed.reading_options.push_back(value != nullptr ? fmt::format("--{} {}", entry.name, value)
                                                              : fmt::format("--{}", entry.name));
        }
    }
    for (int index = optind; index < count; ++index) {
        parsed.files.emplace_back(given[index]);
    }
    if (unknown_format) {
        refuse_format_name(unknown_format->option, unknown_format->name, parsed);
    }
    if (!parsed.help) {
        require_operands(which, parsed.files);
    }
    return parsed;
}

} // namespace kvrmem
