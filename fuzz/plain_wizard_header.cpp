#include "fuzz/plain_wizard_header.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <vector>

namespace kvr_fuzz {

namespace {

/// Removes the next line from the front of @p file.
std::string take_line(std::string_view& file) {
    constexpr std::size_t longest = 4095;
    const std::size_t end = std::min({file.find('\n'), file.size(), longest});
    std::string line(file.substr(0, end));
    const bool had_newline = end < file.size() && file[end] == '\n';
    file.remove_prefix(end + (had_newline ? 1 : 0));
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

/// The words of a line. If the line ends with a blank, no word follows it.
std::vector<std::string> words_of(const std::string& line) {
    std::vector<std::string> words;
    std::size_t begin = 0;
    while (begin < line.size()) {
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

bool is_word(const std::vector<std::string>& words, std::size_t index, std::string_view wanted) {
    return index < words.size() &&
           std::equal(words[index].begin(), words[index].end(), wanted.begin(), wanted.end(),
                      [](unsigned char one, unsigned char other) { return std::tolower(one) == other; });
}

void take_name(const std::vector<std::string>& words, wizard_header& header) {
    constexpr std::size_t first = 3;
    if (words.size() <= first) {
        return;
    }
    header.name = words[first].substr(words[first].starts_with('%') ? 1 : 0);
    for (std::size_t index = first + 1; index < words.size(); ++index) {
        const std::string& word = words[index];
        const bool is_last = index + 1 == words.size();
        if (is_last && (word.starts_with('v') || word.starts_with('V')) && word.ends_with('%')) {
            header.version = word.substr(1, word.size() - 2);
        } else {
            header.name += " " + word;
        }
    }
    if (header.name.ends_with('%')) {
        header.name.pop_back();
    }
}

bool is_separator(char character) {
    return std::string_view("[ (~$|:.\\_-@").find(character) != std::string_view::npos;
}

} // namespace

wizard_header read_wizard_header_plainly(std::string_view file) {
    wizard_header header;
    const std::vector<std::string> first = words_of(take_line(file));
    const std::vector<std::string> second = words_of(take_line(file));
    header.generated = is_word(first, 2, "wizard:");
    if (header.generated) {
        take_name(first, header);
    }
    header.deferred = (is_word(first, 1, "wizard:") || is_word(first, 2, "wizard:")) &&
                      is_word(second, 1, "generation:") && is_word(second, 2, "deferred");
    return header;
}

std::string legal_name_plainly(std::string_view name) {
    std::string result;
    for (std::size_t index = 0; index < name.size(); ++index) {
        const char character = name[index];
        const bool is_letter =
            (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
        if (index == 0 && !is_letter) {
            result = character == '|' ? "" : "sub_";
        } else if (is_separator(character)) {
            result += result.empty() || result.ends_with('_') ? "" : "_";
        } else if (character != ']' && character != ')') {
            result += character;
        }
    }
    return result;
}

} // namespace kvr_fuzz
