#include "kvr/util/generated_files.h"

#include "kvr/util/letter_case.h"
#include "kvr/util/text_lines.h"
#include "kvr/util/tokenizer.h"

#include <cstddef>
#include <string_view>

namespace kvr {

namespace {

constexpr std::size_t longest_header_line = 4095;

std::string read_header_line(text_lines& lines) {
    std::string line;
    lines.next(line, longest_header_line);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

std::string take_word(std::string& line) {
    return kvr_get_token(line, " ", false);
}

bool next_word_is(std::string& line, std::string_view wanted) {
    return equal_ignoring_case(take_word(line), wanted);
}

bool looks_like_version(std::string_view word) {
    return !word.empty() && fold_case(word.front()) == 'v' && word.back() == '%';
}

// The text of a header line after "wizard:".
struct wizard {
    std::string name;
    std::string version;
};

wizard parse_wizard(std::string& line) {
    wizard found;
    found.name = take_word(line);
    if (!found.name.empty() && found.name.front() == '%') {
        found.name.erase(0, 1);
    }
    while (!line.empty()) {
        const std::string word = take_word(line);
        if (line.empty() && looks_like_version(word)) {
            found.version = word.substr(1, word.size() - 2);
        } else {
            found.name += ' ' + word;
        }
    }
    if (!found.name.empty() && found.name.back() == '%') {
        found.name.pop_back();
    }
    return found;
}

bool names_a_wizard_early(std::string line) {
    take_word(line);
    return next_word_is(line, "wizard:") || next_word_is(line, "wizard:");
}

bool defers_generation(std::string line) {
    take_word(line);
    return next_word_is(line, "generation:") && next_word_is(line, "deferred");
}

constexpr std::string_view name_separators = "[ (~$|:.\\_-@";
constexpr std::string_view dropped_in_names = "])";

bool is_in(std::string_view set, char character) {
    return set.find(character) != std::string_view::npos;
}

void append_to_name(std::string& name, char character) {
    if (is_in(name_separators, character)) {
        if (!name.empty() && name.back() != '_') {
            name += '_';
        }
    } else if (!is_in(dropped_in_names, character)) {
        name += character;
    }
}

} // namespace

} // namespace kvr

bool is_wizard_generated_file(const char* path, std::string& wizard_name, std::string& wizard_version) {
    wizard_name.clear();
    wizard_version.clear();
    kvr::text_lines lines(path);
    std::string line = kvr::read_header_line(lines);
    kvr::take_word(line);
    kvr::take_word(line);
    if (!kvr::next_word_is(line, "wizard:")) {
        return false;
    }
    const kvr::wizard found = kvr::parse_wizard(line);
    wizard_name = found.name;
    wizard_version = found.version;
    return true;
}

bool is_wizard_deferred_generation_file(const char* path) {
    kvr::text_lines lines(path);
    if (!kvr::names_a_wizard_early(kvr::read_header_line(lines))) {
        return false;
    }
    return kvr::defers_generation(kvr::read_header_line(lines));
}

std::string convert_name_to_kvr_form(const std::string& name) {
    std::string converted;
    std::string_view rest = name;
    if (!rest.empty() && !kvr::is_lower_case(kvr::lower_case_of(rest.front()))) {
        converted = rest.front() == '|' ? "" : "sub_";
        rest.remove_prefix(1);
    }
    for (const char character : rest) {
        kvr::append_to_name(converted, character);
    }
    return converted;
}
