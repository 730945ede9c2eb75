#include "kvrimage/formats/mif/mif_header_parser.h"

#include "kvr/memory/mif/mif_line.h"
#include "kvrimage/formats/mif/mif_numbers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, mif_keyword_count> keyword_names = {"WIDTH", "DEPTH", "ADDRESS_RADIX",
                                                                           "DATA_RADIX"};

/// Returns the edit distance of @p left and @p right.
std::size_t letters_apart(std::string_view left, std::string_view right) {
    std::vector<std::size_t> costs(right.size() + 1);
    for (std::size_t i = 0; i < costs.size(); ++i) {
        costs[i] = i;
    }
    for (std::size_t row = 0; row < left.size(); ++row) {
        std::size_t diagonal = std::exchange(costs[0], row + 1);
        for (std::size_t i = 0; i < right.size(); ++i) {
            const std::size_t changed = diagonal + (left[row] == right[i] ? 0 : 1);
            diagonal = costs[i + 1];
            costs[i + 1] = std::min({changed, costs[i] + 1, diagonal + 1});
        }
    }
    return costs.back();
}

/// Returns the keyword most similar to @p name, if any is similar.
std::optional<mif_keyword> nearest_keyword(std::string_view name) {
    constexpr std::size_t longest = 20;
    constexpr std::size_t most_apart = 2;
    std::string upper = kvr::to_upper_case(name.substr(0, longest));
    kvr::strip_blanks(upper);
    std::optional<mif_keyword> nearest;
    std::size_t least = most_apart + 1;
    for (std::size_t i = 0; i < keyword_names.size(); ++i) {
        const std::size_t apart = letters_apart(upper, keyword_names[i]);
        if (apart < least) {
            least = apart;
            nearest = static_cast<mif_keyword>(i);
        }
    }
    return nearest;
}

/// A spelling of CONTENT, with or without BEGIN.
struct content_spelling {
    std::string_view text;
    std::string_view meant; ///< "" if it is correct
};
constexpr std::array<content_spelling, 6> content_spellings = {{
    {"CONTENT", ""},
    {"CONTENTS", "CONTENT"},
    {"CONTENT_BEGIN", "CONTENT BEGIN"},
    {"CONTENTS_BEGIN", "CONTENT BEGIN"},
    {"CONTENTBEGIN", "CONTENT BEGIN"},
    {"CONTENTSBEGIN", "CONTENT BEGIN"},
}};

const content_spelling* find_content_spelling(std::string_view word) {
    const auto* const found = std::ranges::find_if(content_spellings, [word](const content_spelling& each) {
        return kvr::equal_ignoring_case(word, each.text);
    });
    return found != content_spellings.end() ? found : nullptr;
}

/// Returns whether @p value can only be the value of the setting.
bool is_value_of(mif_keyword keyword, std::string_view value) {
    return keyword == mif_keyword::width || keyword == mif_keyword::depth
               ? value.find_first_not_of("0123456789") == std::string_view::npos
               : mif_radix_of(value).has_value();
}

/// Returns the keyword of a word that is a keyword followed by digits: "WIDTH8".
std::optional<mif_keyword> keyword_with_digits(std::string_view word) {
    const std::size_t digits = word.find_last_not_of("0123456789") + 1;
    return digits < word.size() ? mif_keyword_of(word.substr(0, digits)) : std::nullopt;
}

} // namespace

std::optional<mif_keyword> mif_keyword_of(std::string_view name) noexcept {
    for (std::size_t i = 0; i < keyword_names.size(); ++i) {
        if (kvr::equal_ignoring_case(name, keyword_names[i])) {
            return static_cast<mif_keyword>(i);
        }
    }
    return std::nullopt;
}

std::string_view name_of(mif_keyword keyword) noexcept {
    return keyword_names[static_cast<std::size_t>(keyword)];
}

/// Comments after BEGIN belong to the content.
void mif_header_parser::begin(const span& keyword) {
    tokens.enter(mif_section::content);
    sink.begin(keyword);
}

bool mif_header_parser::read() {
    while (!tokens.peek().is(mif_token::kind::end)) {
        if (!read_one()) {
            return true;
        }
    }
    return false;
}

/// Returns false at the end of the header.
bool mif_header_parser::read_one() {
    const mif_token& next = tokens.peek();
    const std::string_view text = tokens.in(next.at);
    if (next.is(mif_token::kind::semicolon)) {
        parse_semicolons();
    } else if (const content_spelling* const known = find_content_spelling(text);
               next.is(mif_token::kind::word) && known != nullptr) {
        parse_content({next.at, known->meant});
        return false;
    } else if (next.is(mif_token::kind::word) && kvr::equal_ignoring_case(text, "BEGIN")) {
        sink.finding(
            {mif_syntax::missing_content, next.at, next.at, {}, insertion_at(next.at.offset, "CONTENT ")});
        sink.content({next.at.offset, 0});
        parse_begin();
        return false;
    } else if (const auto spelt = keyword_with_blanks(); !spelt.meant.empty()) {
        if (spelt.meant == "BEGIN") {
            parse_begin_with_blanks(spelt.where);
        } else {
            parse_content(spelt);
        }
        return false;
    } else if (is_statement_ahead()) {
        const mif_token first = tokens.peek();
        sink.finding({mif_syntax::missing_content,
                      first.at,
                      first.at,
                      {},
                      first.starts_line ? std::optional(insertion_at(first.at.offset, "CONTENT BEGIN\n"))
                                        : std::nullopt});
        sink.content({first.at.offset, 0});
        begin({first.at.offset, 0});
        return false;
    } else if (const auto keyword = mif_keyword_of(text); next.is(mif_token::kind::word) && keyword) {
        parse_setting(*keyword);
    } else if (const auto glued = keyword_with_digits(text);
               next.is(mif_token::kind::word) && glued && ends_after_word()) {
        parse_glued_setting(*glued, name_of(*glued).size());
    } else {
        parse_unknown();
    }
    return true;
}

/// Parses ";" after nothing, any number of them. Before ":", they are not removed: with a word above, it
/// would become a statement.
void mif_header_parser::parse_semicolons() {
    const mif_tokens::cursor first = tokens.place();
    while (tokens.peek().is(mif_token::kind::semicolon)) {
        tokens.take();
    }
    const bool is_removed = !tokens.peek().is(mif_token::kind::colon);
    tokens.go_back_to(first);
    while (tokens.peek().is(mif_token::kind::semicolon)) {
        const span at = tokens.take().at;
        sink.finding({mif_syntax::empty_statement,
                      at,
                      at,
                      {},
                      is_removed ? std::optional(text_edit{at.offset, 1, ""}) : std::nullopt});
    }
}

/// Returns whether "0 :", "[" or END follows.
bool mif_header_parser::is_statement_ahead() {
    const mif_token& next = tokens.peek();
    if (next.is(mif_token::kind::open)) {
        return true;
    }
    const std::string_view text = tokens.in(next.at);
    if (!next.is(mif_token::kind::word) || kvr::equal_ignoring_case(text, "END")) {
        return next.is(mif_token::kind::word);
    }
    if (!std::ranges::all_of(text, kvr::is_value_character)) {
        return false;
    }
    const mif_tokens::cursor place = tokens.place();
    tokens.take();
    const bool found = tokens.peek().is(mif_token::kind::colon);
    tokens.go_back_to(place);
    return found;
}

/// Returns whether the next word is followed by ";" or a line end.
bool mif_header_parser::ends_after_word() {
    const mif_tokens::cursor place = tokens.place();
    tokens.take();
    const mif_token& next = tokens.peek();
    const bool found =
        next.is(mif_token::kind::semicolon) || next.is(mif_token::kind::end) || next.starts_line;
    tokens.go_back_to(place);
    return found;
}

void mif_header_parser::parse_setting(mif_keyword keyword) {
    const mif_token first_token = tokens.peek();
    mif_setting found{keyword, {}, tokens.take().at, {}};
    const bool has_equals = tokens.peek().is(mif_token::kind::equals);
    if (has_equals || (tokens.peek().is(mif_token::kind::colon) && !tokens.peek().starts_line)) {
        tokens.take();
    }
    const mif_token& first = tokens.peek();
    const bool has_value =
        !first.is(mif_token::kind::semicolon) && !first.is(mif_token::kind::end) &&
        (!first.starts_line || (has_equals && first.is(mif_token::kind::word) &&
                                !looks_like_mif(tokens.contents().substr(first.at.offset))));
    if (has_value) {
        const std::uint64_t begin = tokens.take().at.offset;
        std::uint64_t end = tokens.place().at;
        while (!tokens.peek().is(mif_token::kind::semicolon) && !tokens.peek().is(mif_token::kind::end) &&
               !tokens.peek().starts_line) {
            end = tokens.take().at.end();
        }
        found.value = {begin, end - begin};
        if (!has_equals && !is_value_of(keyword, tokens.in(found.value))) {
            find_header_text(first_token,
                             tokens.peek().is(mif_token::kind::semicolon) ? tokens.take().at.end() : end);
            return;
        }
        if (!has_equals) {
            find_missing_equals(found);
        }
    } else {
        const span where{found.name.offset, tokens.place().at - found.name.offset};
        sink.finding({mif_syntax::missing_value_of_setting, where, found.name, {}, {}});
    }
    find_end_of_setting(found);
}

/// Parses "WIDTH8;".
void mif_header_parser::parse_glued_setting(mif_keyword keyword, std::size_t name_length) {
    const span word = tokens.take().at;
    mif_setting found{
        keyword, {}, {word.offset, name_length}, {word.offset + name_length, word.length - name_length}};
    find_missing_equals(found);
    find_end_of_setting(found);
}

void mif_header_parser::find_missing_equals(const mif_setting& found) {
    const std::string_view value = tokens.in(found.value);
    sink.finding({mif_syntax::missing_equals,
                  {found.name.offset, found.value.end() - found.name.offset},
                  found.name,
                  std::string(tokens.in(found.name)) + "=" + std::string(value) + ";",
                  text_edit{found.name.end(), found.value.offset - found.name.end(), "="}});
}

void mif_header_parser::find_end_of_setting(mif_setting& found) {
    const std::uint64_t end = std::max(found.value.end(), found.name.end());
    if (tokens.peek().is(mif_token::kind::semicolon)) {
        found.whole = {found.name.offset, tokens.take().at.end() - found.name.offset};
    } else {
        found.whole = {found.name.offset, end - found.name.offset};
        if (found.value.length != 0) {
            sink.finding({mif_syntax::missing_semicolon_of_setting,
                          {end, 1},
                          found.whole,
                          {},
                          insertion_at(end, ";")});
        }
    }
    sink.setting(found);
}

/// Parses a misspelled setting or other text.
void mif_header_parser::parse_unknown() {
    const mif_token first = tokens.peek();
    std::uint64_t name_end = first.at.offset;
    while (tokens.peek().is(mif_token::kind::word) &&
           (tokens.peek().at.offset == first.at.offset || !tokens.peek().starts_line)) {
        name_end = tokens.take().at.end();
    }
    const span name{first.at.offset, name_end - first.at.offset};
    const auto meant = nearest_keyword(tokens.in(name));
    if (name.length != 0 && tokens.peek().is(mif_token::kind::equals) && !tokens.peek().starts_line) {
        sink.finding({mif_syntax::unknown_setting,
                      name,
                      name,
                      meant ? "did you mean " + std::string(name_of(*meant)) + "?" : std::string(),
                      {}});
        tokens.take();
        const span rest = tokens.skip_statement();
        const std::uint64_t semicolon = tokens.in(rest).ends_with(';') ? 1 : 0;
        if (meant) {
            sink.setting({*meant,
                          {name.offset, rest.end() - name.offset},
                          name,
                          {rest.offset, rest.length - semicolon}});
        }
        return;
    }
    if (name.length == 0) {
        tokens.take();
    }
    const span rest = tokens.skip_statement();
    find_header_text(first, std::max({rest.end(), name.end(), first.at.end()}));
}

/// Reports text from @p first to @p end, where the next token begins.
void mif_header_parser::find_header_text(const mif_token& first, std::uint64_t end) {
    const span whole{first.at.offset, end - first.at.offset};
    const bool is_line =
        first.starts_line && (tokens.peek().starts_line || tokens.peek().is(mif_token::kind::end));
    std::optional<text_edit> fix;
    if (is_line && !is_read_as_header(tokens.in(whole))) {
        fix = insertion_at(whole.offset, "-- ");
    }
    sink.finding({mif_syntax::header_text, whole, whole, {}, std::move(fix)});
}

/// Returns the keywords that the following words form together, as many as possible: "CON TENT BE GIN".
mif_header_parser::spelling mif_header_parser::keyword_with_blanks() {
    constexpr std::size_t longest = std::string_view("CONTENTSBEGIN").size();
    const mif_tokens::cursor place = tokens.place();
    spelling found;
    std::string joined;
    std::uint64_t begin = 0;
    while (tokens.peek().is(mif_token::kind::word) && joined.size() < longest &&
           (joined.empty() || !tokens.peek().starts_line)) {
        const bool is_first = joined.empty();
        const span at = tokens.take().at;
        begin = is_first ? at.offset : begin;
        joined += tokens.in(at).substr(0, longest);
        const content_spelling* const known = find_content_spelling(joined);
        if (!is_first && known != nullptr) {
            found = {{begin, at.end() - begin}, known->meant.empty() ? known->text : known->meant};
        } else if (!is_first && kvr::equal_ignoring_case(joined, "BEGIN")) {
            found = {{begin, at.end() - begin}, "BEGIN"};
        }
    }
    tokens.go_back_to(place);
    return found;
}

/// Parses CONTENT, BEGIN or both.
void mif_header_parser::parse_content(const spelling& found) {
    while (!tokens.peek().is(mif_token::kind::end) && tokens.peek().at.offset < found.where.end()) {
        tokens.take();
    }
    if (!found.meant.empty()) {
        sink.finding({mif_syntax::content_spelling, found.where, found.where, std::string(found.meant),
                      text_edit{found.where.offset, found.where.length, std::string(found.meant)}});
    }
    if (found.meant == "BEGIN") {
        begin(found.where);
        return;
    }
    sink.content(found.where);
    if (found.meant.ends_with("BEGIN")) {
        begin({found.where.end(), 0});
    } else {
        find_begin(found.where);
    }
}

/// Skips the text between CONTENT and BEGIN.
void mif_header_parser::find_begin(const span& content) {
    while (!tokens.peek().is(mif_token::kind::end) && !is_statement_ahead()) {
        const mif_token& next = tokens.peek();
        if (next.is(mif_token::kind::word) && kvr::equal_ignoring_case(tokens.in(next.at), "BEGIN")) {
            parse_begin();
            return;
        }
        if (const auto spelt = keyword_with_blanks(); spelt.meant == "BEGIN") {
            parse_content(spelt);
            return;
        }
        const span at = tokens.take().at;
        if (tokens.in(at) == ";") {
            sink.finding({mif_syntax::content_semicolon, at, content, {}, text_edit{at.offset, 1, ""}});
        } else {
            sink.finding({mif_syntax::text_before_begin, at, at, {}, {}});
        }
    }
    sink.finding({mif_syntax::missing_begin, content, content, {}, insertion_at(content.end(), " BEGIN")});
    begin({content.end(), 0});
}

/// Parses "BE GIN" without CONTENT: both faults have one diagnostic and one repair.
void mif_header_parser::parse_begin_with_blanks(const span& where) {
    sink.finding({mif_syntax::missing_content,
                  where,
                  where,
                  {},
                  text_edit{where.offset, where.length, "CONTENT BEGIN"}});
    sink.content({where.offset, 0});
    while (tokens.peek().at.offset < where.end()) {
        tokens.take();
    }
    begin(where);
}

void mif_header_parser::parse_begin() {
    const span word = tokens.take().at;
    begin(word);
    if (tokens.peek().is(mif_token::kind::semicolon) && !tokens.peek().starts_line) {
        const span at = tokens.take().at;
        sink.finding({mif_syntax::content_semicolon, at, word, {}, text_edit{at.offset, 1, ""}});
    }
}

} // namespace kvrimage
