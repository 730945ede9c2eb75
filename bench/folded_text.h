#pragma once

#include <string>
#include <string_view>

/// What a look-up that folds its text would allocate: @p text in lower case.
inline std::string folded(std::string_view text) {
    std::string result(text);
    for (char& character : result) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return result;
}
