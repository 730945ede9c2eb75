#include "kvrimage/formats/rif/rif_diagnostics.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/rif/rif_characters.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

/// Returns what to write instead of invalid characters; "" if unknown.
std::string instead_of(std::string_view characters) {
    if (characters.find_first_not_of(",;|") == std::string_view::npos) {
        return "separate words by blanks";
    }
    if (characters.find_first_not_of('_') == std::string_view::npos) {
        return "write the digits of a word without '_'";
    }
    return "";
}

diagnostic illegal_text(const places& where, std::string_view characters) {
    return diagnose::illegal_character(where, characters, instead_of(characters));
}

diagnostic bad_address_text(const places& where, std::string_view address) {
    return diagnose::address_syntax(where, address, "");
}

} // namespace

std::string_view rif_line_end(std::string_view text) {
    const std::size_t newline = text.find('\n');
    const bool has_carriage_return =
        newline != std::string_view::npos && newline > 0 && text[newline - 1] == '\r';
    return has_carriage_return ? "\r\n" : "\n";
}

rif_diagnostics::rif_diagnostics(std::string_view contents, const read_options& options,
                                 diagnostic_list& found)
    : text(contents),
      wants_edits(options.wants_repairs),
      most_groups(options.most_diagnostics),
      list(found) {}

void rif_diagnostics::take(const rif_piece& piece) {
    using rif_kind = rif_piece::kind;
    switch (piece.what) {
    case rif_kind::byte_order_mark:
        add_repair({piece.where, {{piece.where.offset, piece.where.length, ""}}},
                   diagnose::rif_byte_order_mark(piece.where), "the byte-order mark is removed");
        break;
    case rif_kind::blanks:
        break;
    case rif_kind::tabs:
        on_tabs(piece.where);
        break;
    case rif_kind::line_end:
        line = {};
        break;
    case rif_kind::carriage_return:
        carriage_returns.where.add(piece.where);
        add_edit(carriage_returns, {piece.where.offset, piece.where.length, "\n"});
        line = {};
        break;
    case rif_kind::word:
    case rif_kind::address:
        on_item(piece);
        break;
    case rif_kind::comment:
        comments.where.add(piece.where);
        add_edit(comments, {piece.where.offset, piece.where.length, ""});
        break;
    default: // rif_kind::stray
        add_illegal(piece.where);
        line.blanks_begin = piece.where.end();
        break;
    }
}

void rif_diagnostics::add_edit(rif_repair& cause, text_edit edit) const {
    cause.is_complete = wants_edits || cause.edits.size() < places::kept;
    if (cause.is_complete) {
        cause.edits.push_back(std::move(edit));
    }
}

/// Adds @p where to the group of its text.
void rif_diagnostics::add_grouped(grouped_places& groups, const span& where, diagnose_text diagnose) const {
    const std::string_view found = where.in(text).substr(0, named_text::longest + 1);
    if (const auto group = groups.find(found); group != groups.end()) {
        group->second.add(where);
    } else if (groups.size() < most_groups) {
        groups.emplace(found, where);
    } else {
        list.add(diagnose(where, found));
    }
}

void rif_diagnostics::on_item(const rif_piece& piece) {
    const bool is_address = piece.what == rif_piece::kind::address;
    const bool is_sound = piece.address_fault != rif_address_fault::syntax;
    if (line.has_item && is_sound && (is_address || line.ends_with_address)) {
        add_not_alone(piece);
    }
    if (is_address) {
        on_address(piece);
        line.latest_address = piece.where;
    } else {
        on_word(piece);
    }
    line.has_item = true;
    line.ends_with_address = is_address && is_sound;
    line.blanks_begin = piece.where.end();
}

/// Reports that a line should end before @p piece.
void rif_diagnostics::add_not_alone(const rif_piece& piece) {
    const span address = piece.what == rif_piece::kind::address ? piece.where : line.latest_address;
    if (not_alone.where.empty() || address.offset != latest_not_alone.offset) {
        not_alone.where.add(address);
        latest_not_alone = address;
    }
    add_edit(not_alone,
             {line.blanks_begin, piece.where.offset - line.blanks_begin, std::string(rif_line_end(text))});
}

void rif_diagnostics::on_word(const rif_piece& piece) {
    ++words;
    const std::string_view word = piece.where.in(text);
    if (piece.fault.length == 0) {
        if (looks_prefixed(word)) {
            prefixes.where.add(piece.where);
            add_edit(prefixes, {piece.where.offset, 2, ""});
        }
    } else if (!is_unknown_digit(text[piece.fault.offset])) {
        add_illegal(piece.fault);
    } else {
        first_unknown_word = unknown_digits.empty() ? piece.where : first_unknown_word;
        unknown_digits.add(piece.fault);
    }
}

void rif_diagnostics::add_illegal(const span& where) {
    add_grouped(illegal, where, illegal_text);
}

void rif_diagnostics::on_address(const rif_piece& piece) {
    switch (piece.address_fault) {
    case rif_address_fault::none:
        break;
    case rif_address_fault::spelling:
        if (spellings.where.empty()) {
            first_spelling = fmt::format("@{}", piece.digits.in(text));
        }
        spellings.where.add(piece.where);
        add_edit(spellings, {piece.where.offset + 1, piece.digits.offset - piece.where.offset - 1, ""});
        break;
    case rif_address_fault::syntax:
        add_grouped(bad_addresses, piece.where, bad_address_text);
        break;
    default: // rif_address_fault::outside
        first_outside = outside.empty() ? piece.digits : first_outside;
        outside.add(piece.where);
        break;
    }
}

/// In a line with an "@" the library ignores tabs and all other text except the address.
void rif_diagnostics::on_tabs(const span& where) {
    if (where.offset >= tab_line_end) {
        const auto offset = static_cast<std::size_t>(where.offset);
        const std::size_t begin = text.rfind('\n', offset) + 1; // 0 in the first line
        tab_line_end = std::min(text.find('\n', offset), text.size());
        tab_line_has_address = text.substr(begin, tab_line_end - begin).find('@') != std::string_view::npos;
    }
    if (!tab_line_has_address) {
        tabs.where.add(where);
        add_edit(tabs, {where.offset, where.length, std::string(where.length, ' ')});
    }
}

void rif_diagnostics::add_repair(const rif_repair& cause, diagnostic shown, std::string_view repair) const {
    shown.repair = repair;
    if (cause.is_complete) {
        shown.fix = cause.edits;
    }
    list.add(std::move(shown));
}

void rif_diagnostics::finish() {
    for (const auto& [characters, where] : illegal) {
        list.add(illegal_text(where, characters));
    }
    for (const auto& [address, where] : bad_addresses) {
        list.add(bad_address_text(where, address));
    }
    if (!unknown_digits.empty()) {
        const char digit = text[unknown_digits.first().front().offset];
        list.add(diagnose::bad_digit(unknown_digits, std::string(1, digit), first_unknown_word.in(text),
                                     "hexadecimal"));
    }
    if (!outside.empty()) {
        list.add(diagnose::address_outside(outside, first_outside.in(text), highest_rif_address_text));
    }
    const auto first_text = [this](const rif_repair& cause) { return cause.where.first().front().in(text); };
    if (!spellings.where.empty()) {
        add_repair(
            spellings,
            diagnose::address_syntax(spellings.where, first_text(spellings), "write " + first_spelling),
            "address lines are '@' and digits now");
    }
    if (!not_alone.where.empty()) {
        add_repair(not_alone, diagnose::address_not_alone(not_alone.where, first_text(not_alone)),
                   "addresses have lines of their own now");
    }
    if (has_comments()) {
        add_repair(comments, diagnose::rif_comment(comments.where, first_text(comments)),
                   "comments are removed");
    }
    if (!tabs.where.empty()) {
        add_repair(tabs, diagnose::rif_tab(tabs.where), "tabs are blanks now");
    }
    if (!carriage_returns.where.empty()) {
        add_repair(carriage_returns, diagnose::lone_carriage_return(carriage_returns.where),
                   "lines end with LF now");
    }
    finish_prefixes();
}

void rif_diagnostics::finish_prefixes() {
    if (prefixes.where.empty()) {
        return;
    }
    const std::string_view word = prefixes.where.first().front().in(text);
    const std::string_view digits = word.substr(2);
    if (prefixes.where.count() == words) {
        add_repair(prefixes, diagnose::word_prefix(prefixes.where, word, digits), "words have no 0x now");
    } else {
        list.add(diagnose::prefix_or_dont_care(prefixes.where, word, digits,
                                               kvr::to_upper_case(word.substr(0, named_text::longest))));
    }
}

} // namespace kvrimage
