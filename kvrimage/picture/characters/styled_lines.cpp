#include "kvrimage/picture/characters/styled_lines.h"

namespace kvrimage::characters {

namespace {

void drop_last_blanks(std::string& text) {
    text.erase(text.find_last_not_of(' ') + 1);
}

} // namespace

void styled_lines::add(character_style style, std::string_view text) {
    if (style != current) {
        flush();
        current = style;
    }
    pending += text;
}

void styled_lines::end_line() {
    drop_last_blanks(pending);
    flush();
    if (!paint) {
        drop_last_blanks(line);
    }
    lines += line + "\n";
    line.clear();
    current = character_style::plain;
}

void styled_lines::add_line(character_style style, std::string_view text) {
    add(style, text);
    end_line();
}

void styled_lines::flush() {
    if (!pending.empty()) {
        line += paint ? paint(current, pending) : pending;
        pending.clear();
    }
}

} // namespace kvrimage::characters
