#include "kvrimage/formats/readmem/readmem_findings.h"

#include "kvrimage/diagnostics/diagnose.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kvrimage {

namespace {

using readmem_kind = readmem_piece::kind;

constexpr std::string_view highest_readmem_address = "FFFFFFFFFFFFFFFF";
constexpr std::string_view address_after_all = "10000000000000000";

/// Returns "@1F" for an address of clear meaning.
std::string proper_readmem_address(const readmem_piece& address) {
    return fmt::format("@{:X}", address.address);
}

} // namespace

readmem_findings::readmem_findings(std::string_view contents, const read_options& options, radix digits_radix)
    : text(contents),
      wants_edits(options.wants_repairs),
      digits_are(digits_radix) {}

void readmem_findings::add(cause& to, const span& where, std::vector<text_edit> edits) const {
    to.first = to.where.empty() ? where : to.first;
    to.where.add(where);
    to.is_complete = to.is_complete && !edits.empty() && (wants_edits || to.where.count() <= places::kept);
    if (to.is_complete) {
        std::ranges::move(edits, std::back_inserter(to.edits));
    }
}

void readmem_findings::take(const readmem_piece& piece) {
    const span& where = piece.where;
    switch (piece.what) {
    case readmem_kind::byte_order_mark:
        add(mark, where, {{where.offset, where.length, ""}});
        break;
    case readmem_kind::blanks:
        break;
    case readmem_kind::word:
        on_word(piece);
        break;
    case readmem_kind::address:
        on_address(piece);
        break;
    case readmem_kind::line_comment:
    case readmem_kind::block_comment:
        any_comments = true;
        break;
    case readmem_kind::open_comment:
        any_comments = true;
        add(open_comment, {where.offset, 2});
        break;
    case readmem_kind::other_comment:
        any_comments = true;
        if (text[where.offset] == '#') {
            add(hash_comments, where, {{where.offset, 1, "//"}});
        } else {
            add(dash_comments, where, {{where.offset, 2, "//"}});
        }
        break;
    case readmem_kind::separator:
        add(separators, where, {{where.offset, 1, " "}});
        break;
    default: // readmem_kind::stray
        ++faults;
        add(stray, where);
        break;
    }
}

void readmem_findings::on_word(const readmem_piece& word) {
    const std::string_view token = word.where.in(text);
    if (word.fault.length != 0) {
        ++faults;
        cause& digit = bad_digits[text[word.fault.offset]];
        add(digit, word.fault);
        digit.first = digit.where.count() == 1 ? word.where : digit.first;
        return;
    }
    if (token.front() == '_' || token.back() == '_') {
        on_underscores(word.where);
    }
    if (std::ranges::any_of(token, is_high_impedance)) {
        add(high_impedance, word.where);
    }
}

void readmem_findings::on_underscores(const span& word) {
    const std::string_view token = word.in(text);
    const std::size_t begin = token.find_first_not_of('_');
    const std::size_t end = token.find_last_not_of('_') + 1;
    std::vector<text_edit> edits;
    if (begin != 0) {
        edits.push_back({word.offset, begin, ""});
    }
    if (end != token.size()) {
        edits.push_back({word.offset + end, token.size() - end, ""});
    }
    add(underscores, word, std::move(edits));
}

void readmem_findings::on_address(const readmem_piece& address) {
    switch (address.address_fault) {
    case readmem_address_fault::none:
        break;
    case readmem_address_fault::blanks:
    case readmem_address_fault::prefix:
    case readmem_address_fault::underscores:
        add(misspelled, address.where,
            {{address.where.offset, address.where.length, proper_readmem_address(address)}});
        break;
    case readmem_address_fault::syntax:
        add(bad_addresses, address.where);
        break;
    default: // readmem_address_fault::outside
        add(outside, address.where);
        break;
    }
}

void readmem_findings::add_prefix(const readmem_piece& word, bool may_be_digits) {
    if (may_be_digits) {
        add(doubtful_prefixes, word.where);
    } else {
        add(prefixes, word.where, {{word.where.offset, word.prefix, ""}});
    }
}

void readmem_findings::add_within_word(const readmem_piece& address) {
    add(within_word, address.where);
}

void readmem_findings::add_repairable(diagnostic_list& list, const cause& of, diagnostic shown,
                                      std::string_view repair) {
    shown.repair = repair;
    if (of.is_complete) {
        shown.fix = of.edits;
    }
    list.add(std::move(shown));
}

void readmem_findings::report(diagnostic_list& list, std::uint64_t unit_bytes) const {
    report_characters(list);
    report_comments(list);
    report_words(list);
    report_addresses(list, unit_bytes);
}

void readmem_findings::report_characters(diagnostic_list& list) const {
    if (!mark.where.empty()) {
        add_repairable(list, mark, diagnose::readmem_byte_order_mark(mark.where),
                       "the byte-order mark is removed");
    }
    if (!separators.where.empty()) {
        add_repairable(list, separators,
                       diagnose::readmem_separator(separators.where, separators.first.in(text)),
                       "words are separated by blanks now");
    }
    if (!stray.where.empty()) {
        list.add(diagnose::readmem_character(stray.where, stray.first.in(text), ""));
    }
    for (const auto& [digit, found] : bad_digits) {
        list.add(diagnose::bad_digit(found.where, std::string(1, digit), found.first.in(text),
                                     digits_are == radix::bin ? "binary" : "hexadecimal"));
    }
}

void readmem_findings::report_comments(diagnostic_list& list) const {
    for (const auto& [found, begin] : {std::pair(&hash_comments, "#"), std::pair(&dash_comments, "--")}) {
        if (!found->where.empty()) {
            add_repairable(list, *found, diagnose::readmem_comment(found->where, begin),
                           "comments begin with // now");
        }
    }
    if (!open_comment.where.empty()) {
        list.add(diagnose::readmem_open_comment(open_comment.where));
    }
}

void readmem_findings::report_words(diagnostic_list& list) const {
    constexpr std::size_t prefix_length = 2;
    if (!prefixes.where.empty()) {
        const std::string_view word = prefixes.first.in(text);
        add_repairable(list, prefixes,
                       diagnose::readmem_prefix(prefixes.where, word, word.substr(0, prefix_length),
                                                word.substr(prefix_length)),
                       "words have no prefix now");
    }
    if (!doubtful_prefixes.where.empty()) {
        const std::string_view word = doubtful_prefixes.first.in(text);
        list.add(
            diagnose::readmem_prefix_or_dont_care(doubtful_prefixes.where, word, word.substr(prefix_length)));
    }
    if (!underscores.where.empty()) {
        add_repairable(list, underscores,
                       diagnose::readmem_underscore(underscores.where, underscores.first.in(text)),
                       "'_' is between digits only now");
    }
    if (!high_impedance.where.empty()) {
        list.add(diagnose::readmem_high_impedance(high_impedance.where, high_impedance.first.in(text)));
    }
}

void readmem_findings::report_addresses(diagnostic_list& list, std::uint64_t unit_bytes) const {
    if (!misspelled.where.empty()) {
        const std::string& first = misspelled.edits.front().replacement;
        add_repairable(list, misspelled,
                       diagnose::readmem_address(misspelled.where, misspelled.first.in(text),
                                                 fmt::format("write {}", first)),
                       "addresses are '@' and digits now");
    }
    if (!bad_addresses.where.empty()) {
        list.add(diagnose::readmem_address(bad_addresses.where, bad_addresses.first.in(text), ""));
    }
    if (!outside.where.empty()) {
        list.add(diagnose::address_outside(outside.where, outside.first.in(text), highest_readmem_address));
    }
    if (!beyond_all.empty()) {
        list.add(diagnose::address_outside(beyond_all, address_after_all, highest_readmem_address));
    }
    if (!within_word.where.empty()) {
        list.add(diagnose::readmem_address_multiple(within_word.where, within_word.first.in(text).substr(1),
                                                    unit_bytes));
    }
}

} // namespace kvrimage
