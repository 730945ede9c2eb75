#include "kvrimage/layout/list_layout.h"

#include "kvrimage/edit/text_lines.h"

#include <utility>

namespace kvrimage {

list_layout::list_layout(std::string_view of, std::string_view between)
    : contents(of),
      joint(between),
      source(of),
      lines(line_end_at(of, 0)) {}

void list_layout::add(const span& piece, std::string_view text, bool begins_line) {
    const line_gap gap = source.gap_before(piece.offset);
    source.pass(piece);
    if (gap == line_gap::none && !begins_line && lines.has_open_text()) {
        lines.append(joint);
        lines.append(text);
        return;
    }
    if (gap == line_gap::blank) {
        lines.separate();
    }
    lines.begin_line(std::string(text));
}

void list_layout::add_comment(const span& comment, bool goes_to_end) {
    const line_gap gap = source.gap_before(comment.offset);
    source.pass(comment);
    const std::string_view text = comment.in(contents);
    if (gap == line_gap::none && lines.add_comment(text, goes_to_end)) {
        return;
    }
    if (gap == line_gap::blank) {
        lines.separate();
    }
    lines.begin_comment_line("", text, goes_to_end);
}

std::string list_layout::finish() {
    return std::string(byte_order_mark_of(contents)) + lines.finish();
}

} // namespace kvrimage
