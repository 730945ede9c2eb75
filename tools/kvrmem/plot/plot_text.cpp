#include "tools/kvrmem/plot/plot_text.h"

#include "tools/kvrmem/surroundings/utf8_character.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kvrmem {

namespace {

constexpr std::string_view replacement_character = "\xEF\xBF\xBD";

/// Where the character with the number @p index begins.
std::size_t place_of(std::string_view text, std::size_t index) {
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        if (!is_continuation(text[at]) && index-- == 0) {
            break;
        }
    }
    return at;
}

} // namespace

std::string shown_name(std::string_view path) {
    std::string_view rest = path.substr(path.rfind('/') + 1);
    std::string name;
    while (!rest.empty()) {
        const utf8_character character = first_of(rest);
        name += character.is_shown ? character.bytes : replacement_character;
        rest.remove_prefix(character.bytes.size());
    }
    return name;
}

std::string in_ascii(std::string_view text) {
    std::string result;
    for (const char byte : text) {
        if (!is_continuation(byte)) {
            result += static_cast<unsigned char>(byte) < 0x80U ? byte : '?';
        }
    }
    return result;
}

std::size_t characters_of(std::string_view text) noexcept {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !is_continuation(byte); }));
}

std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis) {
    const std::size_t count = characters_of(text);
    if (count <= most) {
        return std::string(text);
    }
    const std::size_t kept = most - std::min(most, characters_of(ellipsis));
    std::string result(text.substr(0, place_of(text, (kept + 1) / 2)));
    result += ellipsis;
    result += text.substr(place_of(text, count - kept / 2));
    return result;
}

std::string xml_escaped(std::string_view text) {
    std::string result;
    for (const char byte : text) {
        switch (byte) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += byte;
        }
    }
    return result;
}

bool locale_has_utf8() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            std::string folded;
            for (const char* at = value; *at != '\0'; ++at) {
                if (*at != '-') {
                    folded += static_cast<char>(*at | 0x20);
                }
            }
            return folded.find("utf8") != std::string::npos;
        }
    }
    return false;
}

} // namespace kvrmem
