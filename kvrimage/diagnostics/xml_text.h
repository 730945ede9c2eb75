#pragma once

#include <string>
#include <string_view>

namespace kvrimage {

/// @p text as it stands between the tags of an XML document or within double quotes of an attribute. What XML
/// has no characters for is not replaced.
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
