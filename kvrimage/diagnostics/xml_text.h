#pragma once

#include <string>
#include <string_view>

namespace kvrimage {

/// Escapes @p text for XML content or a double-quoted attribute. Characters that XML does not allow stay.
[[nodiscard]] inline std::string xml_text(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

} // namespace kvrimage
