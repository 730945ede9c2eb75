#include "kvrimage/formats/source/source_name.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/files/platform.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::string_view blanks_between_names = " \n";

bool is_letter_of_name(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool is_letter_or_digit_of_name(char c) {
    return is_letter_of_name(c) || (c >= '0' && c <= '9');
}

/// Returns whether @p name is one of @p words, which are separated by blanks_between_names.
bool is_one_of(std::string_view name, std::string_view words, bool ignores_case) {
    for (std::size_t begin = words.find_first_not_of(blanks_between_names); begin < words.size();) {
        const std::size_t end = std::min(words.find_first_of(blanks_between_names, begin), words.size());
        const std::string_view word = words.substr(begin, end - begin);
        if (ignores_case ? kvr::equal_ignoring_case(word, name) : word == name) {
            return true;
        }
        begin = words.find_first_not_of(blanks_between_names, end);
    }
    return false;
}

bool is_name(std::string_view text, const naming& rules) {
    const auto may_be_in_it = [](char c) { return is_letter_or_digit_of_name(c) || c == '_'; };
    if (text.empty() || !std::ranges::all_of(text, may_be_in_it)) {
        return false;
    }
    if (rules.parts_with_words) {
        return is_letter_of_name(text.front()) && text.back() != '_' &&
               text.find("__") == std::string_view::npos;
    }
    return is_letter_of_name(text.front()) || text.front() == '_';
}

bool is_taken(std::string_view name, const naming& rules) {
    if (rules.reserves_underscores && (name.starts_with('_') || name.find("__") != std::string_view::npos)) {
        return true;
    }
    return is_one_of(name, rules.reserved, rules.ignores_case) || is_one_of(name, rules.library, false) ||
           is_one_of(name, rules.taken, true);
}

/// Returns the file name without folders and extension.
std::string_view stem_of(std::string_view path) {
    path.remove_prefix(path.find_last_of(platform::path_separators) + 1);
    return path.substr(0, path.find_last_of('.'));
}

/// Returns a name valid under @p rules and as close to @p text as possible.
std::string possible_name(std::string_view text, const naming& rules) {
    std::string name;
    for (const char c : text) {
        if (is_letter_or_digit_of_name(c)) {
            name += c;
        } else if (!name.empty() && name.back() != '_') {
            name += '_';
        }
    }
    name.erase(name.find_last_not_of('_') + 1);
    if (name.empty()) {
        return "rom";
    }
    if (!is_letter_of_name(name.front()) || is_taken(name, rules)) {
        name.insert(0, "rom_");
    }
    return name;
}

} // namespace

std::string source_name(const write_options& options, const naming& rules, std::string_view usual) {
    if (const auto given = chosen(options.choices, "name")) {
        return std::string(*given);
    }
    if (!usual.empty()) {
        return std::string(usual);
    }
    return possible_name(stem_of(options.file_name), rules);
}

void refuse_source_name(const write_options& options, const naming& rules, std::vector<diagnostic>& found) {
    const auto given = chosen(options.choices, "name");
    if (!given) {
        return;
    }
    if (!is_name(*given, rules)) {
        found.push_back(diagnose::source_name({}, *given, rules.language, possible_name(*given, rules)));
    } else if (is_taken(*given, rules)) {
        found.push_back(
            diagnose::source_name_taken({}, *given, rules.language, possible_name(*given, rules)));
    }
}

} // namespace kvrimage
