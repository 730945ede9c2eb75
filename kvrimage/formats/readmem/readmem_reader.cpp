#include "kvrimage/formats/readmem/readmem_reader.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/fast_word_lines.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/readmem/readmem_addresses.h"
#include "kvrimage/formats/readmem/readmem_findings.h"
#include "kvrimage/formats/word_list.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace kvrimage {

namespace {

using readmem_kind = readmem_piece::kind;

std::uint32_t bits_of_readmem_digit(radix digits_radix) {
    return digits_radix == radix::bin ? 1 : bits_per_hex_digit;
}

bool every_readmem_word_has_prefix(std::string_view contents, radix digits_radix) {
    bool all = true;
    for_each_readmem_piece(contents, digits_radix, [&all](const readmem_piece& piece) {
        all = all && (piece.what != readmem_kind::word || piece.prefix != 0);
    });
    return all;
}

/// The bits of the words by their digits.
struct readmem_lengths {
    std::uint64_t shortest = std::numeric_limits<std::uint64_t>::max(); ///< stays so without words
    std::uint64_t longest = 0;
};

readmem_lengths lengths_of_readmem_words(std::string_view contents, radix digits_radix) {
    const bool has_prefixes =
        digits_radix == radix::bin || every_readmem_word_has_prefix(contents, digits_radix);
    readmem_lengths found;
    for_each_readmem_piece(contents, digits_radix, [&](const readmem_piece& piece) {
        if (piece.what == readmem_kind::word && piece.fault.length == 0) {
            const std::string_view word = piece.where.in(contents).substr(has_prefixes ? piece.prefix : 0);
            const auto underscores = static_cast<std::uint64_t>(std::ranges::count(word, '_'));
            const std::uint64_t bits = (word.size() - underscores) * bits_of_readmem_digit(digits_radix);
            found = {std::min(found.shortest, bits), std::max(found.longest, bits)};
        }
    });
    return found;
}

read_options with_base_in_words(read_options options, std::uint64_t unit) {
    if (options.base) {
        options.base = *options.base / unit;
    }
    return options;
}

class readmem_reading final : public readmem_sink {
public:
    readmem_reading(std::string_view contents, const read_options& given, radix digits_radix)
        : text(contents),
          digits_are(digits_radix),
          unit(readmem_unit_bytes(contents, given, digits_radix)),
          options(with_base_in_words(given, unit)),
          list(given.most_diagnostics, given.wants_repairs),
          findings(contents, options, digits_radix),
          parser(contents, digits_radix, *this),
          addresses(unit),
          words(contents, options, digits_radix, {.address_step = unit}) {
        if (given.base && *given.base % unit != 0) {
            list.add(diagnose::readmem_address_multiple({}, fmt::format("{:X}", *given.base), unit));
        }
    }

    read_result read();
    void take(const readmem_piece& piece) override;

private:
    bool read_fast_line();
    [[nodiscard]] bool are_binary(const fast_word_line& line) const;
    void read_word(const readmem_piece& piece);
    void add_word(const readmem_piece& piece);
    [[nodiscard]] std::string_view digits_of(const readmem_piece& piece);
    [[nodiscard]] bool is_prefix(const readmem_piece& piece);
    void advance(const span& where);
    [[nodiscard]] bool is_foreign(read_result& result) const;
    void report_bytes();

    std::string_view text;
    radix digits_are;
    std::uint64_t unit;
    read_options options;
    diagnostic_list list;
    readmem_findings findings;
    readmem_parser parser;
    readmem_addresses addresses;
    word_list words;
    std::uint64_t words_seen = 0;
    std::optional<bool> all_have_prefixes;
    std::string scratch;
};

read_result readmem_reading::read() {
    while (!parser.at_end()) {
        if (!read_fast_line()) {
            parser.parse_piece();
        }
    }
    read_result result;
    result.facts.unit = options.unit.value_or(address_unit::word);
    result.facts.has_comments = findings.has_comments();
    if (is_foreign(result)) {
        return result;
    }
    findings.report(list, unit);
    report_bytes();
    words.finish(list, result);
    result.facts.diagnostics_left_out = list.left_out();
    result.diagnostics = list.finish(text);
    return result;
}

/// If addresses count bytes, single bytes are not words of several bytes.
void readmem_reading::report_bytes() {
    if (unit == 1) {
        return;
    }
    const readmem_lengths lengths = lengths_of_readmem_words(text, digits_are);
    if (lengths.shortest == bits_per_byte && lengths.longest == bits_per_byte) {
        list.add(diagnose::readmem_bytes({}, *options.width)); // without a width the unit fits the words
    }
}

/// Mostly invalid contents may be of a known kind; then only that is reported.
bool readmem_reading::is_foreign(read_result& result) const {
    if (findings.unreadable() == 0 || findings.unreadable() < words_seen / 2) {
        return false;
    }
    const auto foreign = foreign_content(text);
    if (foreign) {
        diagnostic_list only;
        only.add(*foreign);
        result.diagnostics = only.finish(text);
    }
    return foreign.has_value();
}

/// Returns false and changes nothing if no regular line begins here.
bool readmem_reading::read_fast_line() {
    const std::size_t begin = parser.position();
    if (begin != 0 && text[begin - 1] != '\n') {
        return false;
    }
    const fast_word_line line = find_fast_word_line(text, begin);
    if (line.end == 0 || (line.is_address && line.address % unit != 0) ||
        (line.count != 0 && (!addresses.peek() || !are_binary(line)))) {
        return false;
    }
    if (line.is_address) {
        readmem_piece address{readmem_kind::address, {}};
        address.address = line.address;
        addresses.take(address);
    }
    if (line.count != 0) {
        if (!words.add_spaced(*addresses.peek(),
                              {line.words, line.length, line.count, line.has_lower_case})) {
            return false;
        }
        addresses.skip(line.count);
        words_seen += line.count;
    }
    parser.skip_to(line.end);
    return true;
}

/// Returns whether all digits of the line are of the radix.
bool readmem_reading::are_binary(const fast_word_line& line) const {
    const std::string_view all(line.words, line.count * (line.length + 1) - 1);
    return digits_are == radix::hex ||
           std::ranges::all_of(all, [](char c) { return c == '0' || c == '1' || c == ' '; });
}

void readmem_reading::take(const readmem_piece& piece) {
    findings.take(piece);
    if (piece.what == readmem_kind::word) {
        read_word(piece);
    } else if (piece.what == readmem_kind::address && !addresses.take(piece)) {
        findings.add_within_word(piece);
    }
}

void readmem_reading::read_word(const readmem_piece& piece) {
    if (addresses.peek()) {
        add_word(piece);
    }
    advance(piece.where);
}

void readmem_reading::add_word(const readmem_piece& piece) {
    if (piece.fault.length != 0) {
        words.add_unreadable(*addresses.peek(), piece.where);
    } else {
        words.add(*addresses.peek(), digits_of(piece), piece.where);
    }
}

/// Advances past the word at @p where.
void readmem_reading::advance(const span& where) {
    ++words_seen;
    if (addresses.at_end()) {
        findings.add_beyond_all(where);
    }
    addresses.advance();
}

/// Returns the digits of a word for the list.
std::string_view readmem_reading::digits_of(const readmem_piece& piece) {
    std::string_view digits = piece.where.in(text);
    if (piece.prefix != 0 && is_prefix(piece)) {
        digits.remove_prefix(piece.prefix);
    }
    if (std::ranges::none_of(digits, [](char c) { return c == '_' || is_high_impedance(c); })) {
        return digits;
    }
    scratch.assign(digits);
    std::erase(scratch, '_');
    std::ranges::replace_if(scratch, is_high_impedance, 'X');
    return scratch;
}

/// Returns whether "0x" is a prefix, not digits: if all words have it, or if it makes the word too long.
/// Reports ambiguous and invalid prefixes.
bool readmem_reading::is_prefix(const readmem_piece& piece) {
    if (!all_have_prefixes) {
        all_have_prefixes = words_seen == 0 && every_readmem_word_has_prefix(text, digits_are);
    }
    const std::uint64_t bits = (piece.where.length - 1) * bits_of_readmem_digit(digits_are);
    const bool is_too_long = options.width && bits > *options.width;
    const bool is_none = digits_are == radix::bin || *all_have_prefixes || is_too_long;
    if (is_none || !options.width) {
        findings.add_prefix(piece, !is_none);
    }
    return is_none;
}

} // namespace

std::uint64_t readmem_unit_bytes(std::string_view contents, const read_options& options, radix digits_radix) {
    if (options.unit != address_unit::byte) {
        return 1;
    }
    const std::uint64_t bits =
        options.width ? *options.width : lengths_of_readmem_words(contents, digits_radix).longest;
    return std::max<std::uint64_t>((bits + bits_per_byte - 1) / bits_per_byte, 1);
}

read_result read_readmemh(std::string_view contents, const read_options& options) {
    return readmem_reading(contents, options, radix::hex).read();
}

read_result read_readmemb(std::string_view contents, const read_options& options) {
    return readmem_reading(contents, options, radix::bin).read();
}

} // namespace kvrimage
