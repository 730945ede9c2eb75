#include "kvrimage/formats/mif/mif_tokens.h"

#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvrimage/diagnostics/utf8_character.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// Characters that end a word; "-" only before another "-".
constexpr std::string_view word_ends = " \t\r\n=;:[],.%";

constexpr std::array<bool, 256> ends_word = [] {
    std::array<bool, 256> table{};
    for (const char c : word_ends) {
        table[static_cast<unsigned char>(c)] = true;
    }
    table[static_cast<unsigned char>('-')] = true;
    return table;
}();

mif_token::kind kind_of(char character) noexcept {
    switch (character) {
    case '=':
        return mif_token::kind::equals;
    case ';':
        return mif_token::kind::semicolon;
    case ':':
        return mif_token::kind::colon;
    case '[':
        return mif_token::kind::open;
    case ']':
        return mif_token::kind::close;
    case ',':
        return mif_token::kind::comma;
    case '.':
        return mif_token::kind::dots;
    default:
        return mif_token::kind::word;
    }
}

/// Returns @p line in upper case without blanks, as the library searches it for header keywords.
std::string squeezed(std::string_view line) {
    std::string result = kvr::to_upper_case(kvr::without_comments(line));
    kvr::strip_blanks(result);
    return result;
}

/// Splits @p comment into lines short enough for the library. Returns nothing if a line without "--" looks
/// like a statement or a setting.
std::optional<std::string> lines_of_comment(std::string_view comment, bool has_marks) {
    const std::string_view mark = has_marks ? "--" : "";
    const std::size_t most = longest_kvr_line - mark.size();
    std::string lines;
    while (!comment.empty()) {
        const std::size_t blank =
            comment.size() <= most ? comment.size() : comment.find_last_of(" \t", most - 1);
        const std::size_t end =
            blank == 0 || blank == std::string_view::npos ? character_start(comment, most) : blank;
        lines.append(mark).append(comment.substr(0, end));
        comment.remove_prefix(end);
        lines.append(comment.empty() ? "" : "\n");
        if (!has_marks && looks_like_mif(comment)) {
            return std::nullopt;
        }
    }
    return lines;
}

} // namespace

bool is_read_as_header(std::string_view line) {
    const std::string found = squeezed(line);
    return kvr::contains(found, "CONTENT") ||
           std::ranges::any_of(kvr::header_keywords,
                               [&found](const auto& entry) { return kvr::contains(found, entry.keyword); });
}

bool looks_like_mif(std::string_view line) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t\r"), line.size());
    std::size_t end = begin;
    while (end < line.size() && word_ends.find(line[end]) == std::string_view::npos) {
        ++end;
    }
    const std::string_view word = line.substr(begin, end - begin);
    const std::size_t next = line.find_first_not_of(" \t", end);
    const char follows = next != std::string_view::npos ? line[next] : '\0';
    if (word.empty()) {
        return follows == '[';
    }
    const auto is_word = [word](std::string_view one) { return kvr::equal_ignoring_case(word, one); };
    constexpr std::array<std::string_view, 4> settings = {"WIDTH", "DEPTH", "ADDRESS_RADIX", "DATA_RADIX"};
    constexpr std::array<std::string_view, 3> others = {"CONTENT", "BEGIN", "END"};
    return (follows == ':' && std::ranges::all_of(word, kvr::is_value_character)) ||
           (follows == '=' && std::ranges::any_of(settings, is_word)) || std::ranges::any_of(others, is_word);
}

const mif_token& mif_tokens::peek() {
    if (!has_ahead) {
        before_ahead = here;
        ahead = read();
        has_ahead = true;
    }
    return ahead;
}

mif_token mif_tokens::take() {
    if (has_ahead) {
        has_ahead = false;
        return ahead;
    }
    return read();
}

void mif_tokens::go_back_to(const cursor& earlier) {
    here = earlier;
    has_ahead = false;
}

mif_token mif_tokens::read() {
    skip_blanks();
    mif_token token;
    token.at = {here.at, 0};
    token.starts_line = !here.token_in_line;
    token.after_comment = here.percent_in_line;
    if (here.at == text.size()) {
        measure_line(here.at);
        return token;
    }
    token.what = kind_of(text[here.at]);
    token.is_glued =
        token.is(mif_token::kind::word) && token.starts_line && here.after_word && !here.separated;
    std::size_t end = here.at + 1;
    if (token.is(mif_token::kind::word)) {
        end = end_of_word(here.at);
    } else if (token.is(mif_token::kind::dots)) {
        end = std::min(text.find_first_not_of('.', here.at), text.size());
    }
    token.at.length = end - here.at;
    here.at = end;
    here.token_in_line = true;
    here.separated = false;
    here.after_word = token.is(mif_token::kind::word);
    return token;
}

std::size_t mif_tokens::end_of_word(std::size_t from) const {
    std::size_t end = from + 1;
    while (end < text.size() && (!ends_word[static_cast<unsigned char>(text[end])] ||
                                 (text[end] == '-' && (end + 1 == text.size() || text[end + 1] != '-')))) {
        ++end;
    }
    return end;
}

void mif_tokens::skip_blanks() {
    for (; here.at < text.size(); ++here.at) {
        const char c = text[here.at];
        if (c == '\n') {
            skip_line_end();
        } else if (c == ' ' || c == '\t') {
            here.separated = here.separated || !here.percent_in_line;
        } else if (c == '\r') {
            here.separated = here.separated || here.at + 1 == text.size() || text[here.at + 1] != '\n';
        } else if (c == '-' && here.at + 1 < text.size() && text[here.at + 1] == '-') {
            take_comment(end_of_line(here.at));
        } else if (c == '%') {
            skip_percent_comment();
        } else if (const std::size_t mark = other_comment_mark(); mark != 0) {
            find_once(mif_syntax::other_comment, {here.at, mark}, text_edit{here.at, mark, "--"});
            take_comment(end_of_line(here.at));
        } else {
            return;
        }
    }
}

/// Returns the length of a "//" or "#" here that begins a comment of another language; 0 if there is none.
std::size_t mif_tokens::other_comment_mark() const {
    const char c = text[here.at];
    if ((c != '/' && c != '#') || section == mif_section::after_end) {
        return 0;
    }
    const std::string_view before = text.substr(here.line_begin, here.at - here.line_begin);
    if (c == '/') {
        return text.substr(here.at).starts_with("//") && !before.ends_with(':') ? 2 : 0;
    }
    const std::size_t last = before.find_last_not_of(" \t");
    const bool is_apart = here.at + 1 == text.size() || text[here.at + 1] == ' ' || text[here.at + 1] == '\t';
    return !here.token_in_line || is_apart || before[last] == ';' ? 1 : 0;
}

/// Ends the line at @p end, at its LF or at the end of the file.
void mif_tokens::measure_line(std::size_t end) {
    if (here.line_begin < measured_lines) {
        return;
    }
    measured_lines = here.line_begin + 1;
    const std::size_t length = end - here.line_begin;
    const std::size_t carriage_return = length != 0 && end != text.size() && text[end - 1] == '\r' ? 1 : 0;
    if (length - carriage_return > longest_kvr_line) {
        const span line{here.line_begin, length - carriage_return};
        sink.finding(
            {mif_syntax::line_too_long, {line.offset + longest_kvr_line, 1}, line, {}, shortened(line)});
    }
}

/// Removes trailing blanks, or breaks the line if that does not change its meaning.
std::optional<text_edit> mif_tokens::shortened(const span& line) const {
    const std::string_view whole = line.in(text);
    const std::size_t used = whole.find_last_not_of(" \t") + 1;
    if (used <= longest_kvr_line) {
        return text_edit{line.offset + used, line.length - used, ""};
    }
    const bool has_comment =
        line.offset < latest_lines.end() || kvr::without_comments(whole).size() != whole.size();
    return has_comment ? comment_in_lines({line.offset, used}) : statement_in_lines(line);
}

/// Breaks a line at the blanks between values.
std::optional<text_edit> mif_tokens::statement_in_lines(const span& line) const {
    const std::string_view whole = line.in(text);
    const std::size_t colon = whole.find(':');
    if (section != mif_section::content) {
        return std::nullopt;
    }
    const std::size_t earliest = colon != std::string_view::npos ? colon : 0;
    std::string lines;
    std::size_t begin = 0;
    while (whole.size() - begin > longest_kvr_line) {
        const std::size_t blank = whole.find_last_of(" \t", begin + longest_kvr_line - 1);
        if (blank == std::string_view::npos || blank < begin || blank < earliest) {
            return std::nullopt;
        }
        lines.append(whole.substr(begin, blank + 1 - begin)).append("\n");
        begin = blank + 1;
    }
    return text_edit{line.offset, line.length, lines.append(whole.substr(begin))};
}

/// Breaks the comment at the end of a line. A comment alone on its line or after a statement becomes lines
/// that begin with "--".
std::optional<text_edit> mif_tokens::comment_in_lines(const span& line) const {
    const bool is_inner = line.offset < latest_lines.end();
    std::size_t begin = is_inner ? std::max(latest_lines.offset, line.offset)
                                 : line.offset + kvr::without_comments(line.in(text)).size();
    std::string_view comment = text.substr(begin, line.end() - begin);
    if (is_inner && latest_lines.end() < line.end()) {
        return std::nullopt;
    }
    if (!is_inner && comment.starts_with('%')) {
        const std::size_t close = comment.find('%', 1);
        if (close != comment.size() - 1 && close != std::string_view::npos) {
            return std::nullopt;
        }
        comment = comment.substr(1, close - 1);
    } else if (!is_inner) {
        comment.remove_prefix(2);
    }
    const auto lines = lines_of_comment(comment, !is_inner);
    if (!lines) {
        return std::nullopt;
    }
    return text_edit{begin, line.end() - begin, (begin == line.offset ? "" : "\n") + *lines};
}

/// Leaves the position at the line end.
void mif_tokens::skip_line_end() {
    measure_line(here.at);
    here.line_begin = here.at + 1;
    here.percent_in_line = false;
    here.token_in_line = false;
}

/// Leaves the position at the last byte of a comment that extends to @p end.
void mif_tokens::take_comment(std::size_t end) {
    if (here.at >= reported) {
        sink.comment({here.at, end - here.at});
        reported = here.at + 1;
    }
    here.at = end - 1;
}

void mif_tokens::find_once(mif_syntax what, const span& where, std::optional<text_edit> repair) {
    if (where.offset >= reported) {
        sink.finding({what, where, where, {}, std::move(repair)});
    }
}

/// Returns the end of the characters of the line at @p from, before its LF or CR LF.
std::size_t mif_tokens::end_of_line(std::size_t from) const {
    const std::size_t end = std::min(text.find('\n', from), text.size());
    return end > from && end < text.size() && text[end - 1] == '\r' ? end - 1 : end;
}

/// Skips the comment that a "%" opens. Without a second "%" on its line it extends over several lines to the
/// next "%", if a line end or a valid continuation of a MIF follows that. Otherwise the comment ends with the
/// line, and the next "%" opens another one.
void mif_tokens::skip_percent_comment() {
    const std::size_t line_end = end_of_line(here.at);
    const std::size_t close = text.find('%', here.at + 1);
    if (close < line_end) {
        take_comment(close + 1);
        here.percent_in_line = true;
        return;
    }
    const std::size_t rest = std::min(close, text.size() - 1) + 1;
    const std::string_view follows = text.substr(rest, end_of_line(rest) - rest);
    const bool closes =
        close != std::string_view::npos &&
        (follows.find_first_not_of(" \t") == std::string_view::npos ||
         follows.substr(std::min(follows.find_first_not_of(" \t"), follows.size())).starts_with("--") ||
         follows.starts_with(';') || looks_like_mif(follows));
    if (closes) {
        skip_comment_of_lines(close);
        return;
    }
    find_once(mif_syntax::open_comment, {here.at, 1}, text_edit{line_end, 0, " %"});
    take_comment(line_end);
    here.percent_in_line = true;
}

void mif_tokens::skip_comment_of_lines(std::size_t close) {
    const std::size_t begin = here.at;
    const bool is_new = begin >= reported;
    latest_lines = {begin, close + 1 - begin};
    take_comment(close + 1);
    std::string lines = "--";
    bool is_read = false;
    bool gives_words = false;
    std::size_t line = begin + 1;
    for (std::size_t end = text.find('\n', line); end < close; end = text.find('\n', line)) {
        const std::string_view next = text.substr(end + 1, std::min(end_of_line(end + 1), close) - end - 1);
        lines.append(text.substr(line, end + 1 - line)).append("--");
        is_read = is_read || is_read_by_kvr(next);
        gives_words = gives_words || looks_like_mif(next);
        line = end + 1;
        const cursor saved = here;
        here.at = end;
        skip_line_end();
        here.at = saved.at;
    }
    const std::string_view follows = text.substr(close + 1, end_of_line(close + 1) - close - 1);
    const bool is_doubtful = gives_words && looks_like_mif(follows);
    here.percent_in_line = !is_doubtful; // faults in the following text are not reported
    if (!is_new || (!is_read && !is_doubtful)) {
        return;
    }
    lines.append(text.substr(line, close - line));
    const bool has_more = follows.find_first_not_of(" \t") != std::string_view::npos;
    const span whole{begin, close + 1 - begin};
    if (is_doubtful) {
        sink.finding({mif_syntax::doubtful_comment, whole, {begin, end_of_line(begin) - begin}, {}, {}});
    } else {
        sink.finding({mif_syntax::comment_of_lines,
                      whole,
                      {begin, end_of_line(begin) - begin},
                      {},
                      text_edit{begin, whole.length, lines + (has_more ? "\n" : "")}});
    }
}

/// Returns whether the library interprets @p line. To the library a "%" hides only the rest of its line.
bool mif_tokens::is_read_by_kvr(std::string_view line) const {
    switch (section) {
    case mif_section::header:
        return is_read_as_header(line);
    case mif_section::content:
        return kvr::without_comments(line).find_first_not_of(" \t\r") != std::string_view::npos;
    default: // mif_section::after_end
        break;
    }
    return false;
}

span mif_tokens::skip_statement() {
    const std::size_t begin = place().at;
    std::size_t end = begin;
    while (!peek().is(mif_token::kind::end) && !peek().starts_line) {
        end = ahead.at.end();
        if (take().is(mif_token::kind::semicolon)) {
            break;
        }
    }
    const std::size_t first = std::min(text.find_first_not_of(" \t", begin), end);
    return {first, end - first};
}

std::optional<std::size_t> mif_tokens::line_without_tokens() {
    if (has_ahead) {
        go_back_to(before_ahead);
    }
    skip_blanks();
    if (here.token_in_line || here.percent_in_line) {
        return std::nullopt;
    }
    return here.line_begin;
}

void mif_tokens::skip_lines(std::size_t bytes) {
    if (bytes != 0) {
        here = {here.line_begin + bytes, here.line_begin + bytes, false, false, true, false};
        reported = std::max(reported, here.at);
    }
}

bool mif_tokens::has_line_end(std::uint64_t from, std::uint64_t to) const {
    return text.substr(from, to - from).find('\n') != std::string_view::npos;
}

} // namespace kvrimage
