#pragma once

#include <string>
#include <string_view>

/// @p text in lower case. Allocates, like a look-up that folds its text.
inline std::string folded(std::string_view text) {
    std::string result(text);
    for (char& character : result) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return result;
}
