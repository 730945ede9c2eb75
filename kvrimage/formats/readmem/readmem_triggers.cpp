#include "kvrimage/formats/readmem/readmem_triggers.h"

#include "kvrimage/formats/readmem/readmem_addresses.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/readmem/readmem_parser.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

using readmem_kind = readmem_piece::kind;
bool is_readmem_blank(char character) {
    return readmem_blanks.find(character) != std::string_view::npos;
}

class readmem_trigger_finder final : public readmem_sink {
public:
    readmem_trigger_finder(std::string_view contents, const read_options& given, radix digits_radix)
        : text(contents),
          digits_are(digits_radix),
          wants_edits(given.wants_repairs),
          counts_bytes(readmem_unit_bytes(contents, given, digits_radix) > 1) {
        readmem_parser(contents, digits_radix, *this).parse();
        if (before == readmem_kind::word) {
            add(readmem_trigger::word_at_end, last_word, {{contents.size(), 0, "\n"}});
        }
    }

    void take(const readmem_piece& piece) override;
    void add(readmem_trigger trigger, const span& where, std::vector<text_edit> edits = {});
    [[nodiscard]] readmem_triggers take_all() { return std::move(found); }

private:
    void on_mark(const span& where);
    void on_blanks(const span& where);
    void on_word(const readmem_piece& word);
    void on_fault(const span& fault);
    void on_address(const readmem_piece& address);
    void on_line_comment(const span& where);
    void on_separator(const span& where);
    [[nodiscard]] char at(std::uint64_t offset) const { return offset < text.size() ? text[offset] : ' '; }
    [[nodiscard]] bool is_digit_at(std::uint64_t offset) const {
        return is_readmem_digit(at(offset), digits_are);
    }

    std::string_view text;
    radix digits_are;
    bool wants_edits;
    bool counts_bytes;
    readmem_triggers found;
    readmem_kind before = readmem_kind::blanks; ///< the piece before this one
    span last_word;
};

void readmem_trigger_finder::add(readmem_trigger trigger, const span& where, std::vector<text_edit> edits) {
    readmem_trigger_places& to = found[static_cast<std::size_t>(trigger)];
    to.where.add(where);
    if (wants_edits || to.where.count() <= places::kept) {
        std::ranges::move(edits, std::back_inserter(to.edits));
    }
}

void readmem_trigger_finder::take(const readmem_piece& piece) {
    switch (piece.what) {
    case readmem_kind::byte_order_mark:
        on_mark(piece.where);
        break;
    case readmem_kind::blanks:
        on_blanks(piece.where);
        break;
    case readmem_kind::word:
        on_word(piece);
        break;
    case readmem_kind::address:
        on_address(piece);
        break;
    case readmem_kind::line_comment:
        on_line_comment(piece.where);
        break;
    case readmem_kind::block_comment:
        if (piece.where.in(text).starts_with("/*/")) {
            add(readmem_trigger::short_comment_begin, piece.where);
        }
        break;
    case readmem_kind::open_comment:
        break;
    case readmem_kind::other_comment:
        add(at(piece.where.offset) == '#' ? readmem_trigger::hash_comment : readmem_trigger::dash_comment,
            piece.where);
        break;
    case readmem_kind::separator:
        on_separator(piece.where);
        break;
    default: // readmem_kind::stray
        on_fault(piece.where);
        break;
    }
    before = piece.what;
}

void readmem_trigger_finder::on_mark(const span& where) {
    add(readmem_trigger::byte_order_mark, where);
    if (!is_digit_at(where.end())) {
        add(readmem_trigger::mark_before_text, where);
    }
}

/// A form feed is harmless at the front of a word that a blank comes before.
void readmem_trigger_finder::on_blanks(const span& where) {
    const std::string_view blanks = where.in(text);
    for (std::size_t offset = blanks.find('\f'); offset != std::string_view::npos;
         offset = blanks.find('\f', offset + 1)) {
        const bool is_first = offset == 0 && where.offset != 0;
        const bool is_before_digit = offset + 1 == blanks.size() && is_digit_at(where.end());
        if (is_first || !is_before_digit) {
            add(readmem_trigger::form_feed, {where.offset + offset, 1}, {{where.offset + offset, 1, " "}});
        }
    }
}

void readmem_trigger_finder::on_word(const readmem_piece& word) {
    last_word = word.where;
    if (word.fault.length != 0) {
        on_fault(word.fault);
        return;
    }
    const std::string_view digits = word.where.in(text).substr(word.prefix);
    if (std::ranges::any_of(digits, is_high_impedance)) {
        add(readmem_trigger::high_impedance, word.where);
    }
    if (digits.find_first_of("xX") != std::string_view::npos) {
        add(readmem_trigger::dont_care, word.where);
    }
}

void readmem_trigger_finder::on_fault(const span& fault) {
    const bool has_slash = fault.in(text).find('/') != std::string_view::npos;
    add(has_slash ? readmem_trigger::slash : readmem_trigger::bad_character, fault);
}

void readmem_trigger_finder::on_address(const readmem_piece& address) {
    const span& where = address.where;
    if (before == readmem_kind::word || before == readmem_kind::address) {
        add(readmem_trigger::joined_address, where, {{where.offset, 0, " "}});
    }
    switch (address.address_fault) {
    case readmem_address_fault::none:
    case readmem_address_fault::outside:
        break;
    case readmem_address_fault::blanks:
        add(readmem_trigger::spaced_address, where);
        break;
    case readmem_address_fault::prefix:
        add(readmem_trigger::prefixed_address, where);
        break;
    case readmem_address_fault::underscores:
        add(readmem_trigger::underscored_address, where);
        break;
    default: // readmem_address_fault::syntax
        add(readmem_trigger::bad_address, where);
        break;
    }
    if (counts_bytes && address.address != 0) {
        add(readmem_trigger::byte_address, where);
    }
}

void readmem_trigger_finder::on_line_comment(const span& where) {
    const std::string_view comment = where.in(text);
    const std::vector<text_edit> blank_before = {{where.offset, 0, " "}};
    if (before == readmem_kind::address) {
        add(readmem_trigger::comment_after_address, where, blank_before);
    } else if (before == readmem_kind::word &&
               comment.find_first_not_of(readmem_blanks, 2) != std::string_view::npos) {
        add(readmem_trigger::joined_comment, where, blank_before);
    }
    std::size_t begin = comment.find("/*");
    const bool is_at_front = begin == 1;
    while (begin != std::string_view::npos && !is_at_front) {
        const std::size_t end = comment.find("*/", begin);
        if (end == std::string_view::npos) {
            break;
        }
        begin = comment.find("/*", end + 2);
    }
    if (begin != std::string_view::npos) {
        add(readmem_trigger::comment_in_comment, where);
    }
}

void readmem_trigger_finder::on_separator(const span& where) {
    add(readmem_trigger::separator, where);
    const bool blank_before = where.offset == 0 || is_readmem_blank(at(where.offset - 1));
    const bool blank_after = is_readmem_blank(at(where.end()));
    if (blank_before && blank_after) {
        add(readmem_trigger::separator_alone, where);
    } else if (!blank_before && !blank_after) {
        add(readmem_trigger::separator_within, where);
    }
}

span span_of_readmem(const place& where) {
    return {where.offset, where.length};
}

/// What our reader has found already.
void add_readmem_diagnostics(const read_result& ours, diagnostic_id id, readmem_trigger trigger,
                             readmem_trigger_finder& finder) {
    for (const diagnostic& each : ours.diagnostics) {
        if (each.id == id) {
            finder.add(trigger, span_of_readmem(each.where));
            std::ranges::for_each(each.more,
                                  [&](const place& where) { finder.add(trigger, span_of_readmem(where)); });
        }
    }
}

} // namespace

readmem_triggers find_readmem_triggers(std::string_view contents, const read_options& options,
                                       const read_result& ours) {
    readmem_trigger_finder finder(contents, options,
                                  ours.facts.as == &readmemb_format ? radix::bin : radix::hex);
    add_readmem_diagnostics(ours, diagnostic_id::too_wide, readmem_trigger::too_wide, finder);
    add_readmem_diagnostics(ours, diagnostic_id::beyond_depth, readmem_trigger::beyond_depth, finder);
    return finder.take_all();
}

} // namespace kvrimage
