#include "kvrimage/picture/shown_text.h"

#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/files/platform.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::string_view replacement_character = "\xEF\xBF\xBD";

std::size_t characters_of(std::string_view text) noexcept {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return !is_continuation(byte); }));
}

/// Returns the byte offset of the character @p index.
std::size_t place_of_character(std::string_view text, std::size_t index) {
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
    std::string_view rest = path.substr(path.find_last_of(platform::path_separators) + 1);
    std::string name;
    while (!rest.empty()) {
        const utf8_character character = first_character(rest);
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

std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis) {
    const std::size_t count = characters_of(text);
    if (count <= most) {
        return std::string(text);
    }
    const std::size_t kept = most - std::min(most, characters_of(ellipsis));
    std::string result(text.substr(0, place_of_character(text, (kept + 1) / 2)));
    result += ellipsis;
    result += text.substr(place_of_character(text, count - kept / 2));
    return result;
}

} // namespace kvrimage
