#include "kvrimage/diagnostics/visible_text.h"

#include "kvrimage/diagnostics/character_width.h"
#include "kvrimage/diagnostics/utf8_character.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::size_t quoted_bytes = 40;
constexpr std::size_t window_columns = 72;
constexpr std::size_t columns_before_place = 24;
/// Limits the window if most characters have width 0.
constexpr std::size_t most_window_bytes = 1024;
constexpr std::size_t columns_of_escape = 4; // \xNN
constexpr std::string_view omission = "...";

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
    }
    return text;
}

std::size_t columns_of(const utf8_character& character) {
    if (character.bytes == "\t") {
        return 1;
    }
    return character.is_shown ? columns_of_character(character.code)
                              : character.bytes.size() * columns_of_escape;
}

/// Returns how many leading bytes of @p bytes fit in @p columns.
std::size_t front_within(std::string_view bytes, std::size_t columns) {
    std::size_t end = 0;
    while (end < bytes.size() && end < most_window_bytes) {
        const utf8_character next = first_character(bytes.substr(end));
        const std::size_t width = columns_of(next);
        if (width > columns) {
            break;
        }
        columns -= width;
        end += next.bytes.size();
    }
    return end;
}

/// Returns how many trailing bytes of @p bytes fit in @p columns.
std::size_t back_within(std::string_view bytes, std::size_t columns) {
    std::size_t begin = bytes.size();
    while (begin > 0 && bytes.size() - begin < most_window_bytes) {
        const std::size_t start = character_start(bytes, begin - 1);
        const std::size_t width = make_visible(bytes.substr(start, begin - start)).columns;
        if (width > columns) {
            break;
        }
        columns -= width;
        begin = start;
    }
    return bytes.size() - begin;
}

struct byte_window {
    std::size_t begin;
    std::size_t end;
};

/// Returns the part of @p line to show around the byte @p place.
byte_window window_around(std::string_view line, std::size_t place) {
    if (front_within(line, window_columns) == line.size()) {
        return {0, line.size()};
    }
    const std::size_t last_begin = line.size() - back_within(line, window_columns);
    const std::size_t wanted_begin = place - back_within(line.substr(0, place), columns_before_place);
    const std::size_t begin = std::min(wanted_begin, last_begin);
    return {begin, begin + front_within(line.substr(begin), window_columns)};
}

} // namespace

visible_text make_visible(std::string_view bytes) {
    visible_text shown;
    while (!bytes.empty()) {
        const utf8_character character = first_character(bytes);
        if (character.bytes == "\t") {
            shown.text += ' ';
        } else {
            shown.text += character.is_shown ? std::string(character.bytes) : escaped(character.bytes);
        }
        shown.columns += columns_of(character);
        bytes.remove_prefix(character.bytes.size());
    }
    return shown;
}

std::string visible(std::string_view bytes) {
    if (bytes.size() <= quoted_bytes) {
        return make_visible(bytes).text;
    }
    return make_visible(bytes.substr(0, character_start(bytes, quoted_bytes))).text + std::string(omission);
}

source_excerpt make_excerpt(std::string_view line, std::size_t column, std::size_t length) {
    const std::size_t place = std::min(column - 1, line.size());
    const byte_window window = window_around(line, place);
    const std::size_t end = std::max(window.end, place);
    const std::size_t marked_end = place + std::min(std::max<std::size_t>(length, 1), end - place);
    const visible_text before = make_visible(line.substr(window.begin, place - window.begin));
    const visible_text marked = make_visible(line.substr(place, marked_end - place));
    const visible_text after = make_visible(line.substr(marked_end, end - marked_end));
    const std::string front(window.begin > 0 ? omission : "");
    source_excerpt result;
    result.line = front + before.text + marked.text + after.text;
    result.line += end < line.size() ? omission : "";
    result.blanks = std::string(front.size() + before.columns, ' ');
    result.mark = '^' + std::string(std::max<std::size_t>(marked.columns, 1) - 1, '~');
    return result;
}

} // namespace kvrimage
