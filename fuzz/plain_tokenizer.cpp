#include "fuzz/plain_tokenizer.h"

#include <cstddef>

namespace kvr_fuzz {

plain_token token_before_any_of(const std::string& text, const std::string& delimiters) {
    plain_token result;
    bool found = false;
    for (const char character : text) {
        if (found) {
            result.rest += character;
        } else if (delimiters.find(character) != delimiters.npos) {
            found = true;
            result.delimiter = character;
        } else {
            result.token += character;
        }
    }
    return result;
}

plain_token token_before_whole(const std::string& text, const std::string& delimiter) {
    plain_token whole{text, "", ""};
    if (delimiter.empty()) {
        return whole;
    }
    const char first = delimiter.front();
    const std::string after_first = delimiter.substr(1);
    std::string work = text;
    std::string prefix;
    while (!work.empty()) {
        const std::size_t place = work.find(first);
        if (place == work.npos) {
            return whole;
        }
        const std::string piece = work.substr(0, place);
        work.erase(0, place + 1);
        if (work.compare(0, after_first.size(), after_first) == 0) {
            return {prefix + piece, work.substr(after_first.size()), ""};
        }
        prefix = piece + first;
    }
    return whole;
}

} // namespace kvr_fuzz
