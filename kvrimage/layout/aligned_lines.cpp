#include "kvrimage/layout/aligned_lines.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::size_t blanks_before_comment = 2;

/// Removes trailing blanks from a comment that extends to the end of its line.
std::string_view without_last_blanks(std::string_view comment) {
    return comment.substr(0, comment.find_last_not_of(" \t\r\f\v") + 1);
}

std::size_t first_line_length(std::string_view comment) {
    return std::min(comment.find('\n'), comment.size());
}

} // namespace

void aligned_lines::begin_line(std::string text, std::string_view comment_indent) {
    open({std::move(text), std::string(comment_indent), "", false, false, is_separated});
}

void aligned_lines::append(std::string_view text) {
    if (!has_open_text()) {
        begin_line("");
    }
    current.text.append(text);
}

bool aligned_lines::add_comment(std::string_view comment, bool goes_to_end) {
    if (!is_open || current.is_complete) {
        return false;
    }
    std::string& target = current.comment;
    target.append(target.empty() ? "" : " ").append(goes_to_end ? without_last_blanks(comment) : comment);
    current.is_complete = goes_to_end;
    return true;
}

void aligned_lines::begin_comment_line(std::string_view indent, std::string_view comment, bool goes_to_end) {
    open({"", std::string(indent), "", true, false, is_separated});
    static_cast<void>(add_comment(comment, goes_to_end));
}

std::string aligned_lines::finish() {
    close();
    write_run();
    return std::move(out);
}

void aligned_lines::open(line next) {
    close();
    current = std::move(next);
    is_open = true;
    is_separated = false;
}

/// The column ends at a line without a comment and at a line whose comment does not fit.
void aligned_lines::close() {
    if (!is_open) {
        return;
    }
    is_open = false;
    if (current.is_separated) {
        write_run();
        out.append(out.empty() ? "" : line_end);
    }
    if (!current.is_comment && !current.comment.empty() && fits(current, current.text.size())) {
        run.push_back(std::move(current));
        return;
    }
    write_run();
    if (!current.comment.empty()) {
        write_comment(current.comment_indent, current.comment);
    }
    if (!current.is_comment) {
        out.append(current.text).append(line_end);
    }
}

bool aligned_lines::fits(const line& one, std::size_t column) const {
    return column + blanks_before_comment + first_line_length(one.comment) <= limit;
}

void aligned_lines::write_run() {
    std::size_t column = 0;
    for (const line& one : run) {
        column = std::max(column, one.text.size());
    }
    for (const line& one : run) {
        write(one, fits(one, column) ? column : one.text.size());
    }
    run.clear();
}

void aligned_lines::write(const line& one, std::size_t column) {
    out.append(one.text).append(column + blanks_before_comment - one.text.size(), ' ');
    out.append(one.comment).append(line_end);
}

void aligned_lines::write_comment(std::string_view indent, std::string_view comment) {
    const bool has_room = indent.size() + first_line_length(comment) <= limit;
    out.append(has_room ? indent : "").append(comment).append(line_end);
}

} // namespace kvrimage
