#include "kvrimage/formats/mif/mif_content_parser.h"

#include "kvr/memory/mif/mif_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

/// Limits the search for regular lines where they are rare.
constexpr std::uint32_t most_lines_alone = 64;

/// Returns whether @p text may be an address in some radix.
bool is_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

/// Returns whether @p left is less than @p right, in any radix.
bool precedes(std::string_view left, std::string_view right) {
    const auto significant = [](std::string_view digits) {
        return kvr::to_upper_case(digits.substr(std::min(digits.find_first_not_of('0'), digits.size())));
    };
    const std::string a = significant(left);
    const std::string b = significant(right);
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

span between(std::uint64_t begin, std::uint64_t end) {
    return {begin, end - begin};
}

} // namespace

void mif_content_parser::read() {
    do {
        read_regular_lines();
    } while (read_one());
}

void mif_content_parser::find(mif_syntax what, const span& where, std::optional<text_edit> repair,
                              std::string instead) {
    sink.finding({what, where, where, std::move(instead), std::move(repair)});
}

void mif_content_parser::find_in_statement(mif_syntax what, const span& where,
                                           std::optional<text_edit> repair, std::string instead) {
    statement.sound = false;
    find(what, where, std::move(repair), std::move(instead));
}

void mif_content_parser::read_regular_lines() {
    if (lines_alone != 0) {
        --lines_alone;
        return;
    }
    const std::optional<std::size_t> line = tokens.line_without_tokens();
    if (!line) {
        return;
    }
    const std::size_t bytes = sink.read_lines(*line);
    tokens.skip_lines(bytes);
    line_has = bytes != 0 ? before::statement : line_has;
    next_alone = bytes != 0 ? 1 : std::min(next_alone * 2, most_lines_alone);
    lines_alone = next_alone;
}

/// Parses one statement. Returns false at the end of the content.
bool mif_content_parser::read_one() {
    const mif_token& next = tokens.peek();
    switch (next.what) {
    case mif_token::kind::end:
        find_missing_end();
        return false;
    case mif_token::kind::colon:
        parse_without_address();
        return true;
    case mif_token::kind::semicolon:
        parse_semicolon();
        return true;
    case mif_token::kind::dots:
        parse_left_out();
        return true;
    case mif_token::kind::open:
        parse_statement();
        return true;
    case mif_token::kind::word:
        if (kvr::equal_ignoring_case(tokens.in(next.at), "END")) {
            parse_end();
            return false;
        }
        parse_statement();
        return true;
    default:
        parse_stray();
        return true;
    }
}

/// The library ignores a ";" after a statement on the same line, and rejects one on a line of its own.
void mif_content_parser::parse_semicolon() {
    const mif_token token = tokens.take();
    line_has = token.starts_line ? before::statement : line_has;
    find(token.starts_line ? mif_syntax::lone_semicolon : mif_syntax::empty_statement, token.at,
         text_edit{token.at.offset, 1, ""});
}

/// Parses a line of dots, which stands for omitted words.
void mif_content_parser::parse_left_out() {
    const mif_token first = tokens.take();
    std::uint64_t end = first.at.end();
    while (tokens.peek().is(mif_token::kind::dots) && !tokens.peek().starts_line) {
        end = tokens.take().at.end();
    }
    const mif_token& next = tokens.peek();
    if (first.starts_line && (next.starts_line || next.is(mif_token::kind::end))) {
        find(mif_syntax::left_out, between(first.at.offset, end));
    } else {
        find(mif_syntax::stray_text, between(first.at.offset, std::max(end, tokens.skip_statement().end())));
    }
}

void mif_content_parser::parse_stray() {
    const mif_token first = tokens.take();
    const span rest = tokens.skip_statement();
    find(mif_syntax::stray_text, between(first.at.offset, std::max(first.at.end(), rest.end())));
}

/// Parses a statement without an address: ": 1;".
void mif_content_parser::parse_without_address() {
    const mif_token first = tokens.take();
    const span rest = tokens.skip_statement();
    find(mif_syntax::missing_address, between(first.at.offset, std::max(first.at.end(), rest.end())));
}

/// Reports a missing END, for the file as a whole.
void mif_content_parser::find_missing_end() {
    const std::string_view contents = tokens.contents();
    find(mif_syntax::missing_end, {},
         insertion_at(contents.size(), contents.ends_with('\n') ? "END;\n" : "\nEND;\n"));
}

/// Reports text that the library does not see: a second statement on a line, and text after a comment.
void mif_content_parser::find_line_faults(const mif_token& first) {
    if (!first.starts_line) {
        line_with_comment = tokens.line();
        find(line_has == before::begin ? mif_syntax::after_begin : mif_syntax::after_semicolon, first.at,
             insertion_at(first.at.offset, "\n"));
    } else if (first.after_comment) {
        line_with_comment = tokens.line();
        find(mif_syntax::after_comment, first.at, insertion_at(first.at.offset, "\n"));
    }
}

/// Consumes the next token of a statement.
mif_token mif_content_parser::take() {
    const mif_token token = tokens.take();
    if (token.after_comment && line_with_comment != tokens.line()) {
        line_with_comment = tokens.line();
        find(mif_syntax::after_comment, token.at, insertion_at(token.at.offset, "\n "));
    }
    last_end = token.at.end();
    return token;
}

void mif_content_parser::parse_statement() {
    statement.whole = {tokens.peek().at.offset, 0};
    statement.first = statement.last = statement.open = statement.close = {};
    statement.colon = statement.semicolon = {};
    statement.values.clear();
    statement.sound = true;
    value_places.clear();
    glued.clear();
    const mif_token first = tokens.peek();
    find_line_faults(first);
    line_has = before::statement;
    last_end = first.at.offset;
    if (parse_address() && parse_colon()) {
        parse_values();
    }
    for (const span& value : glued) {
        find(mif_syntax::split_value, value, insertion_at(value.offset, " "));
    }
    statement.whole.length = last_end - statement.whole.offset;
    if (statement.first.length != 0) {
        sink.statement(statement);
    }
}

/// Skips text that cannot be parsed.
void mif_content_parser::give_up() {
    statement.sound = false;
    last_end = std::max(last_end, tokens.skip_statement().end());
}

bool mif_content_parser::parse_address() {
    if (tokens.peek().is(mif_token::kind::open)) {
        return parse_range();
    }
    statement.first = take().at;
    if (tokens.peek().is(mif_token::kind::dots) && !tokens.peek().starts_line) {
        parse_range_without_brackets();
    }
    return true;
}

/// Parses "0..7 : 1;".
void mif_content_parser::parse_range_without_brackets() {
    take();
    if (tokens.peek().is(mif_token::kind::word)) {
        statement.last = take().at;
    }
    const span range = between(statement.first.offset, last_end);
    const std::string instead =
        fmt::format("[{}..{}]", tokens.in(statement.first), tokens.in(statement.last));
    find(mif_syntax::range_separator, range,
         statement.last.length != 0 ? std::optional(text_edit{range.offset, range.length, instead})
                                    : std::nullopt,
         instead);
}

/// Parses "[0..7]" and its common misspellings.
bool mif_content_parser::parse_range() {
    statement.open = take().at;
    std::vector<span> words;
    bool has_dots = false;
    bool has_other = false;
    const auto goes_on = [this] {
        const mif_token& next = tokens.peek();
        return !next.is(mif_token::kind::close) && !next.is(mif_token::kind::semicolon) &&
               !next.is(mif_token::kind::end) && !next.is(mif_token::kind::open) &&
               !kvr::equal_ignoring_case(tokens.in(next.at), "END");
    };
    while (goes_on()) {
        const mif_token token = tokens.peek();
        if (token.is(mif_token::kind::word)) {
            words.push_back(take().at);
            continue;
        }
        const bool is_first_dots =
            token.is(mif_token::kind::dots) && token.at.length == 2 && words.size() == 1 && !has_dots;
        // ":" ends a range without "]", unless a "]" follows on the line.
        if (token.is(mif_token::kind::colon) && has_dots) {
            break;
        }
        take();
        has_dots = has_dots || is_first_dots;
        has_other = has_other || !is_first_dots;
    }
    const span inside = between(statement.open.offset, last_end);
    const bool is_closed = tokens.peek().is(mif_token::kind::close);
    if (is_closed) {
        statement.close = take().at;
    }
    const span whole = between(statement.open.offset, last_end);
    const auto text = [this](const span& where) { return std::string(tokens.in(where)); };
    if (words.size() == 2 && has_dots && !has_other) {
        statement.first = words[0];
        statement.last = words[1];
        if (!is_closed) {
            find_in_statement(mif_syntax::missing_bracket, whole, insertion_at(inside.end(), "]"),
                              text(whole) + "]");
        }
        return true;
    }
    const bool has_separator = has_dots || has_other;
    if (words.size() == 1 && is_closed && !has_separator && is_digits(text(words[0]))) {
        statement.first = words[0];
        find(mif_syntax::one_in_brackets, whole, text_edit{whole.offset, whole.length, text(words[0])},
             text(words[0]));
        return true;
    }
    if (is_closed && find_misspelt_range(words, has_separator)) {
        const bool is_down = precedes(text(statement.last), text(statement.first));
        if (is_down) {
            std::swap(statement.first, statement.last);
        }
        const std::string instead = text(statement.first) == text(statement.last)
                                        ? text(statement.first)
                                        : "[" + text(statement.first) + ".." + text(statement.last) + "]";
        find_in_statement(mif_syntax::range_separator, whole, text_edit{whole.offset, whole.length, instead},
                          instead);
        return true;
    }
    give_up();
    find_in_statement(mif_syntax::range_syntax, between(statement.whole.offset, last_end));
    return false;
}

/// Finds the two addresses among the words in brackets: "0-7", "0 - 7", "0 -7", "0 to 7", "0,7".
bool mif_content_parser::find_misspelt_range(const std::vector<span>& words, bool has_separator) {
    const auto text = [&](std::size_t i) { return tokens.in(words[i]); };
    if (words.size() == 1) {
        const std::size_t dash = text(0).find('-');
        if (dash == std::string_view::npos || has_separator) {
            return false;
        }
        statement.first = {words[0].offset, dash};
        statement.last = between(words[0].offset + dash + 1, words[0].end());
    } else if (words.size() == 2 && !has_separator && text(1).starts_with('-')) {
        statement.first = words[0];
        statement.last = between(words[1].offset + 1, words[1].end());
    } else if (words.size() == 2 && has_separator) {
        statement.first = words[0];
        statement.last = words[1];
    } else if (words.size() == 3 && !has_separator && !is_digits(text(1))) {
        statement.first = words[0];
        statement.last = words[2];
    } else {
        return false;
    }
    if (is_digits(tokens.in(statement.first)) && is_digits(tokens.in(statement.last))) {
        return true;
    }
    statement.first = statement.last = {};
    return false;
}

bool mif_content_parser::parse_colon() {
    const span address = between(statement.whole.offset, last_end);
    span stray;
    while (tokens.peek().is(mif_token::kind::word) && !tokens.peek().starts_line) {
        const span at = take().at;
        stray = stray.length == 0 ? at : between(stray.offset, at.end());
    }
    // A remaining word begins a line.
    if (tokens.peek().is(mif_token::kind::word) && stray.length == 0 &&
        kvr::equal_ignoring_case(tokens.in(statement.first), "BEGIN")) {
        find_in_statement(mif_syntax::stray_text, address);
        statement.first = {};
        return false;
    }
    if (!tokens.peek().is(mif_token::kind::colon)) {
        give_up();
        find_in_statement(mif_syntax::missing_colon, between(statement.whole.offset, last_end));
        return false;
    }
    if (stray.length != 0) {
        find_in_statement(mif_syntax::stray_text, stray);
    }
    statement.colon = take().at;
    return true;
}

void mif_content_parser::parse_values() {
    while (parse_value_or_end()) {
    }
}

/// Returns false at the end of the statement.
bool mif_content_parser::parse_value_or_end() {
    const mif_tokens::cursor place = tokens.place();
    const mif_token next = tokens.peek();
    switch (next.what) {
    case mif_token::kind::word:
        if (kvr::equal_ignoring_case(tokens.in(next.at), "END")) {
            end_without_semicolon(next.at.offset);
            return false;
        }
        take();
        last_starts_line = next.starts_line;
        statement.values.push_back(next.at);
        value_places.push_back(place);
        // After a comment the required line break also separates it.
        if (next.is_glued && !next.after_comment) {
            glued.push_back(next.at);
        }
        return true;
    case mif_token::kind::comma:
        take();
        find(mif_syntax::comma, next.at, text_edit{next.at.offset, 1, " "});
        return true;
    case mif_token::kind::semicolon:
        take();
        statement.semicolon = next.at;
        if (statement.values.empty()) {
            find_in_statement(mif_syntax::missing_value, between(statement.whole.offset, last_end));
        }
        return false;
    case mif_token::kind::colon:
        if (begins_another_statement()) {
            return false;
        }
        break;
    case mif_token::kind::end:
    case mif_token::kind::open:
        end_without_semicolon(next.at.offset);
        return false;
    default:
        break;
    }
    take();
    give_up();
    find_in_statement(mif_syntax::stray_text, between(next.at.offset, last_end));
    return false;
}

/// At a ":" among the values, the last value is the address of the next statement. Goes back to before that
/// address.
bool mif_content_parser::begins_another_statement() {
    if (statement.values.empty() || (statement.values.size() == 1 && !last_starts_line)) {
        return false;
    }
    const span next = statement.values.back();
    tokens.go_back_to(value_places.back());
    statement.values.pop_back();
    if (!glued.empty() && glued.back().offset == next.offset) {
        glued.pop_back();
    }
    last_end = statement.values.empty() ? statement.colon.end() : statement.values.back().end();
    end_without_semicolon(next.offset);
    return true;
}

/// Returns the start of the last line of the text from @p begin to @p end, without blanks.
std::uint64_t mif_content_parser::last_line_begin(std::uint64_t begin, std::uint64_t end) const {
    const std::string_view text = between(begin, end).in(tokens.contents());
    const std::size_t newline = text.find_last_of('\n');
    return newline == std::string_view::npos ? begin : begin + text.find_first_not_of(" \t\r\n", newline);
}

/// @p next is the start of the following text.
void mif_content_parser::end_without_semicolon(std::uint64_t next) {
    if (statement.values.empty()) {
        find_in_statement(mif_syntax::missing_value, between(statement.whole.offset, last_end));
        return;
    }
    const bool is_at_line_end = tokens.has_line_end(last_end, next) || next == tokens.contents().size() ||
                                kvr::equal_ignoring_case(tokens.contents().substr(next).substr(0, 3), "END");
    sink.finding({mif_syntax::missing_semicolon,
                  {last_end, 1},
                  between(last_line_begin(statement.whole.offset, last_end), last_end),
                  {},
                  is_at_line_end ? std::optional(insertion_at(last_end, ";")) : std::nullopt});
    statement.semicolon = {last_end, 0};
}

void mif_content_parser::parse_end() {
    const mif_token word = tokens.take();
    if (!word.starts_line) {
        const bool is_begin = line_has == before::begin;
        find(is_begin ? mif_syntax::after_begin : mif_syntax::before_end, word.at,
             insertion_at(word.at.offset, "\n"));
    } else if (word.after_comment) {
        find(mif_syntax::after_comment, word.at, insertion_at(word.at.offset, "\n"));
    }
    tokens.enter(mif_section::after_end);
    span semicolon{word.at.end(), 0};
    if (tokens.peek().is(mif_token::kind::semicolon)) {
        semicolon = tokens.take().at;
    } else {
        find(mif_syntax::end_semicolon, word.at, insertion_at(word.at.end(), ";"));
    }
    sink.end(word.at, semicolon);
    parse_after_end();
}

void mif_content_parser::parse_after_end() {
    while (!tokens.peek().is(mif_token::kind::end)) {
        const std::uint64_t begin = tokens.peek().at.offset;
        const mif_token first = tokens.take();
        const span rest = tokens.skip_statement();
        if (!first.is(mif_token::kind::semicolon)) {
            const span text = between(begin, std::max(rest.end(), first.at.end()));
            find(looks_like_mif(tokens.in(text)) ? mif_syntax::after_end : mif_syntax::text_after_end, text);
        }
    }
}

} // namespace kvrimage
