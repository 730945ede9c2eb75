#pragma once

#include <string>
#include <string_view>

/// The allocation of a look-up that folds its text: @p text in lower case.
inline std::string folded(std::string_view text) {
    std::string result(text);
    for (char& character : result) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return result;
}
