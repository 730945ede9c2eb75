#include "tools/kvrmem/surroundings/visible_text.h"

#include "tools/kvrmem/surroundings/utf8_character.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrmem {

namespace {

constexpr std::size_t quoted_bytes = 40;
constexpr std::size_t window_bytes = 72;
constexpr std::size_t bytes_before_place = 24;
constexpr std::string_view left_out = "...";

/// The last place at or before @p at where a character begins.
std::size_t character_start(std::string_view bytes, std::size_t at) {
    constexpr std::size_t most_continuations = 3;
    for (std::size_t back = 0;
         back < most_continuations && at > 0 && at < bytes.size() && is_continuation(bytes[at]); ++back) {
        --at;
    }
    return at;
}

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
    }
    return text;
}

} // namespace

visible_text make_visible(std::string_view bytes) {
    visible_text shown;
    while (!bytes.empty()) {
        const utf8_character character = first_of(bytes);
        if (character.is_shown || character.bytes == "\t") {
            shown.text += character.is_shown ? character.bytes : " ";
            ++shown.columns;
        } else {
            const std::string escape = escaped(character.bytes);
            shown.text += escape;
            shown.columns += escape.size();
        }
        bytes.remove_prefix(character.bytes.size());
    }
    return shown;
}

std::string visible(std::string_view bytes) {
    if (bytes.size() <= quoted_bytes) {
        return make_visible(bytes).text;
    }
    return make_visible(bytes.substr(0, character_start(bytes, quoted_bytes))).text + std::string(left_out);
}

excerpt make_excerpt(std::string_view line, std::size_t column, std::size_t length) {
    const std::size_t place = std::min(column - 1, line.size());
    std::size_t begin = 0;
    std::size_t end = line.size();
    if (line.size() > window_bytes) {
        begin = place > bytes_before_place ? place - bytes_before_place : 0;
        begin = character_start(line, std::min(begin, line.size() - window_bytes));
        end = character_start(line, std::min(begin + window_bytes, line.size()));
    }
    const std::size_t marked_end = std::min(place + std::max<std::size_t>(length, 1), std::max(end, place));
    const visible_text before = make_visible(line.substr(begin, place - begin));
    const visible_text marked = make_visible(line.substr(place, marked_end - place));
    const visible_text after = make_visible(line.substr(marked_end, end - marked_end));
    const std::string front(begin > 0 ? left_out : "");
    excerpt result;
    result.line = front + before.text + marked.text + after.text;
    result.line += end < line.size() ? left_out : "";
    result.mark = std::string(front.size() + before.columns, ' ') + '^';
    result.mark += std::string(marked.columns > 0 ? marked.columns - 1 : 0, '~');
    return result;
}

} // namespace kvrmem
