#include "kvrimage/formats/mif/mif_formatter.h"

#include "kvr/memory/mif/mif_writer.h"
#include "kvr/util/letter_case.h"
#include "kvrimage/edit/text_lines.h"
#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/formats/mif/mif_tokens.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/layout/aligned_lines.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/source_lines.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <limits>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::string_view mif_indent = "\t";
constexpr std::string_view mif_colon = "  :   ";

bool is_decimal(radix digits_radix) {
    return digits_radix == radix::dec || digits_radix == radix::uns;
}

/// The notation of the numbers of a file.
class mif_digits {
public:
    /// @param base_of_file the file address of word 0
    mif_digits(const read_result& ours, std::uint64_t base_of_file)
        : addresses(ours.facts.address_radix.value_or(radix::hex)),
          length(length_of_address(base_of_file + ours.image->depth() - 1, addresses)),
          value_length(
              canonical_word_digits(ours.facts.data_radix.value_or(radix::hex), ours.image->width())) {}

    /// Returns the address in lower case. Hexadecimal, octal and binary addresses have as many digits as the
    /// last address of the memory.
    [[nodiscard]] std::string address(std::string_view text) const {
        return kvr::to_lower_case(canonical_number(text, is_decimal(addresses) ? 1 : length));
    }
    [[nodiscard]] std::size_t address_length() const { return length; }
    /// @param head_length characters before the first value of the line, which must also hold the value and a
    /// ";"
    [[nodiscard]] std::string value(std::string_view text, std::size_t head_length) const {
        const bool fits = head_length + value_length < longest_kvr_line;
        return canonical_number(text, fits ? value_length : digits_of_the_text);
    }

private:
    static std::size_t length_of_address(std::uint64_t address, radix in) {
        constexpr std::uint64_t largest = std::numeric_limits<std::uint32_t>::max();
        return kvr::address_length(static_cast<std::uint32_t>(std::min(address, largest)), kvr_radix(in));
    }

    radix addresses;
    std::size_t length;
    std::size_t value_length;
};

class mif_formatter final : public mif_sink {
public:
    mif_formatter(std::string_view contents, const mif_digits& of_numbers)
        : text(contents),
          digits(of_numbers),
          source(contents),
          lines(line_end_at(contents, 0), longest_kvr_line) {}

    void comment(const span& whole) override { comments.push_back(whole); }
    void setting(const mif_setting& found) override {
        begin_line(found.whole, kvr::to_upper_case(found.name.in(text)) + "=" +
                                    kvr::to_upper_case(found.value.in(text)) + ";");
        source.pass(found.name);
        place_comments(found.whole.end());
        source.pass(found.whole);
    }
    void content(const span& keyword) override { content_keyword = keyword; }
    void begin(const span& keyword) override;
    void statement(const mif_statement& found) override;
    void end(const span& keyword, const span& semicolon) override;
    void finding(const mif_finding& found) override;
    [[nodiscard]] std::string finish();

private:
    void begin_line(const span& piece, std::string line);
    void separate_content();
    void place_comments_of_lines(std::uint64_t before);
    void place_comments(std::uint64_t before);
    void place_comments_of_head(std::uint64_t first_value);
    void place(const span& comment, line_gap gap);
    void place_values(const mif_statement& found);
    void place_later_value(const span& value);
    [[nodiscard]] std::string head_of(const mif_statement& found, std::string_view colon) const;
    [[nodiscard]] std::string value_text(const span& value) const {
        return digits.value(value.in(text), head_length);
    }

    std::string_view text;
    const mif_digits& digits;
    std::size_t head_length = 0; ///< of the current statement, up to its first value
    source_lines source;
    aligned_lines lines;
    std::deque<span> comments; ///< not yet placed
    span content_keyword;
    std::string_view indent;    ///< of lines with only a comment
    bool follows_begin = false; ///< no blank line follows
    std::optional<std::uint64_t> end_at;
};

/// Begins a line for @p piece, after the comments before it.
void mif_formatter::begin_line(const span& piece, std::string line) {
    place_comments(piece.offset);
    if (source.gap_before(piece.offset) == line_gap::blank && !std::exchange(follows_begin, false)) {
        lines.separate();
    }
    follows_begin = false;
    lines.begin_line(std::move(line), indent);
}

void mif_formatter::place_comments(std::uint64_t before) {
    while (!comments.empty() && comments.front().offset < before) {
        const span& next = comments.front();
        place(next, source.gap_before(next.offset));
        comments.pop_front();
    }
}

/// Places the comments between ":" and the first value at the end of the current line, if they fit.
void mif_formatter::place_comments_of_head(std::uint64_t first_value) {
    while (!comments.empty() && comments.front().offset < first_value) {
        place(comments.front(), line_gap::none);
        comments.pop_front();
    }
}

/// Places a comment at the end of its line or on a line of its own.
/// @param gap before the comment
void mif_formatter::place(const span& comment, line_gap gap) {
    const std::string_view found = comment.in(text);
    const bool is_closed = found.size() > 1 && found.starts_with('%') && found.ends_with('%');
    // The text after a comment of several lines decides whether it is a comment.
    const bool goes_to_end = !is_closed || found.find('\n') != std::string_view::npos;
    source.pass(comment);
    if (gap == line_gap::none && lines.add_comment(found, goes_to_end)) {
        return;
    }
    if (gap == line_gap::blank && !follows_begin) {
        lines.separate();
    }
    follows_begin = false;
    lines.begin_comment_line(indent, found, goes_to_end);
}

/// Puts the blank line that precedes the content before the comments that belong to the content.
void mif_formatter::separate_content() {
    while (!comments.empty() && source.gap_before(comments.front().offset) == line_gap::none &&
           comments.front().offset < content_keyword.offset) {
        place(comments.front(), line_gap::none);
        comments.pop_front();
    }
    source_lines upwards(text);
    std::uint64_t first = content_keyword.offset;
    for (auto one = comments.rbegin(); one != comments.rend(); ++one) {
        if (one->offset >= content_keyword.offset) {
            continue;
        }
        upwards.pass(*one);
        if (upwards.gap_before(first) == line_gap::blank) {
            break;
        }
        first = one->offset;
    }
    place_comments(first);
    lines.separate();
}

/// Moves comments of several lines, and the comments before them, before CONTENT BEGIN: after it, the library
/// kvr reads their lines as statements.
void mif_formatter::place_comments_of_lines(std::uint64_t before) {
    const auto last = std::find_if(comments.rbegin(), comments.rend(), [&](const span& one) {
        return one.offset < before && one.in(text).find('\n') != std::string_view::npos;
    });
    if (last != comments.rend()) {
        place_comments(last->end());
    }
}

/// Keeps dots, which stand for words, and the text before statements without CONTENT BEGIN, with a ";" in it
/// that is not to be removed.
void mif_formatter::finding(const mif_finding& found) {
    const bool is_header_text =
        found.what == mif_syntax::header_text || (found.what == mif_syntax::empty_statement && !found.repair);
    if (!is_header_text && found.what != mif_syntax::left_out) {
        return;
    }
    begin_line(found.where, std::string(is_header_text ? "" : mif_indent).append(found.where.in(text)));
    source.pass(found.where);
    while (!comments.empty() && comments.front().offset < found.where.end()) {
        comments.pop_front(); // it is part of the text
    }
}

void mif_formatter::begin(const span& keyword) {
    if (content_keyword.length == 0) {
        return;
    }
    separate_content();
    place_comments_of_lines(keyword.offset);
    begin_line(content_keyword, "CONTENT BEGIN");
    indent = mif_indent;
    follows_begin = true;
    source.pass({content_keyword.offset, 0});
    place_comments(keyword.end());
    source.pass(keyword);
}

void mif_formatter::statement(const mif_statement& found) {
    // Comments on the line of the first value go to its end; comments on lines before it go before the
    // statement.
    source_lines inside(text);
    const std::uint64_t first_value = found.values.front().offset;
    place_comments(found.whole.offset);
    const auto later = std::ranges::find_if(comments, [&](const span& one) {
        inside.pass(one);
        return one.offset >= first_value || inside.gap_before(first_value) == line_gap::none;
    });
    place_comments(later != comments.end() ? later->offset : first_value);
    std::string head = head_of(found, mif_colon);
    if (head.size() + found.values.front().length + 1 > longest_kvr_line) {
        head = head_of(found, ":");
    }
    head_length = head.size();
    begin_line(found.whole, std::move(head));
    const span whole_head{found.whole.offset, found.colon.end() - found.whole.offset};
    source.pass(whole_head);
    place_values(found);
    place_comments(found.semicolon.offset);
    source.pass(found.semicolon);
}

/// Places the values, the last one with its ";". Comments up to the end of their line follow the ";".
void mif_formatter::place_values(const mif_statement& found) {
    const span& first = found.values.front();
    const span& last = found.values.back();
    for (const span& value : found.values) {
        const bool is_first = value.offset == first.offset;
        if (is_first) {
            lines.append(value_text(value));
        } else {
            place_comments(value.offset);
            place_later_value(value);
        }
        if (value.offset == last.offset) {
            lines.append(";");
        }
        if (is_first) {
            place_comments_of_head(value.offset);
        }
        source.pass(value);
    }
}

/// Places a value that is not the first of its statement.
void mif_formatter::place_later_value(const span& value) {
    const std::string shown = value_text(value);
    const bool has_room = lines.length() + 1 + shown.size() + 1 <= longest_kvr_line;
    if (source.gap_before(value.offset) == line_gap::none && lines.has_open_text() && has_room) {
        lines.append(" ");
    } else {
        const std::size_t room = longest_kvr_line - std::min(longest_kvr_line, shown.size() + 1);
        const std::size_t column = std::clamp(room, mif_indent.size(), head_length);
        std::string blanks(mif_indent);
        blanks.resize(column, ' ');
        lines.begin_line(blanks, indent);
    }
    lines.append(shown);
}

std::string mif_formatter::head_of(const mif_statement& found, std::string_view colon) const {
    std::string head(mif_indent);
    if (found.is_range()) {
        head.append("[").append(digits.address(found.first.in(text))).append("..");
        head.append(digits.address(found.last.in(text))).append("]");
    } else {
        head.append(digits.address(found.first.in(text)));
        head.resize(std::max(head.size(), mif_indent.size() + digits.address_length()), ' ');
    }
    return head.append(colon);
}

void mif_formatter::end(const span& keyword, const span& semicolon) {
    place_comments(keyword.offset);
    lines.begin_line("END;", indent);
    source.pass(keyword);
    place_comments(semicolon.offset);
    end_at = std::max(keyword.end(), semicolon.end());
}

/// Text after END is not part of the memory and is kept unchanged.
std::string mif_formatter::finish() {
    std::string result(byte_order_mark_of(text));
    if (!end_at) {
        place_comments(text.size());
        return result + lines.finish();
    }
    result += lines.finish();
    std::string_view rest = text.substr(*end_at);
    rest = rest.substr(0, rest.find_last_not_of(" \t\r\n") + 1);
    if (!rest.empty()) {
        const std::string_view ending = line_end_at(text, 0);
        result.resize(result.size() - ending.size());
        result.append(rest).append(ending);
    }
    return result;
}

} // namespace

std::string lay_out_mif(std::string_view contents, const read_options& options, const read_result& ours) {
    const mif_digits digits(ours, options.base.value_or(0));
    mif_formatter formatter(contents, digits);
    parse_mif(contents, formatter);
    return formatter.finish();
}

} // namespace kvrimage
