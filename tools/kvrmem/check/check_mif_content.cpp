#include "tools/kvrmem/check/check_mif_content.h"

#include "kvr/memory/mif/mif_reader.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/numeric/scanned_number.h"
#include "tools/kvrmem/check/check_gaps.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/memory/mif_statement_faults.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/memory/word_lines.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

namespace kvrmem {

namespace {

/// A ";" that is missing at the end of a line can be put nowhere else.
bool is_certain_repair(const inner_statement& inner) {
    return inner.has_value && inner.at_line_end;
}

/// Judges what the library's reader finds, and what it reads without a word.
class mif_checker : public kvr::mif_observer {
public:
    /// @param line_shift is added to the reader's line numbers to get those of the file.
    mif_checker(mif_check& checked, const kvr::mif_memory& target, std::int64_t line_shift)
        : check(checked),
          memory(target),
          shift(line_shift),
          lines(0) {}

    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        if (fault.code == kvr::fault_code::missing_end) {
            check.saw_missing_end = true;
        } else {
            take_fault(fault, text);
        }
        return true;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const kvr::mif_content& content) override;
    void cut_at_percent(std::string_view rest, std::uint64_t line) override;
    void end_statement(const kvr::mif_content& statement) override;
    void behind_end(std::string_view rest, std::uint64_t line) override;

    void check_gaps();

private:
    [[nodiscard]] std::uint64_t file_line(std::uint64_t line) const {
        return static_cast<std::uint64_t>(static_cast<std::int64_t>(line) + shift);
    }
    [[nodiscard]] std::uint32_t width() const { return check.options.width.value_or(memory.word_size); }
    [[nodiscard]] severity level_of_width() const {
        return check.options.width ? severity::error : severity::warning;
    }

    void add(severity level, const char* code, const kvr::line_place& place, std::size_t length,
             std::string message, std::string hint = "", std::optional<repair> mended = std::nullopt) {
        check.faults.add({level, code, file_line(place.line), place.column, length, std::move(message),
                          std::move(hint), std::move(mended)});
    }
    void warn(const kvr::mif_content& content, const char* code, std::size_t offset, std::size_t length,
              std::string message, std::string hint = "") {
        add(severity::warning, code, place_in(content, offset), length, std::move(message), std::move(hint));
    }

    void take_fault(const kvr::read_fault& fault, std::string_view text);
    void take_size_fault(check_fault& found, const kvr::read_fault& fault) const;
    void take_trimmed_place(check_fault& found) const;
    kvr::mif_content statement_at(std::uint64_t line, std::string& text) const;
    void take_range_fault(check_fault& found, const kvr::mif_content& content) const;
    word_lines& set_words();

    void check_statement_before_end(const kvr::mif_content& statement, const kvr::text_span& end);
    [[nodiscard]] std::optional<repair>
    repair_before_end(const kvr::mif_content& statement, std::size_t behind, const kvr::text_span& end) const;
    void add_behind_end(std::string_view text, const kvr::line_place& place);
    void check_address(const kvr::mif_content& content, const kvr::text_span& token);
    void check_depth(const kvr::mif_content& content);
    void check_surplus(const kvr::mif_content& content);
    void check_rest(const kvr::mif_content& content);
    void check_characters(const kvr::mif_content& content);
    void check_line_breaks(const kvr::mif_content& content);
    void check_values(const kvr::mif_content& content);
    void check_value(const kvr::mif_content& content, std::string_view value);
    std::optional<word_lines::earlier> note_words(const kvr::mif_content& content);
    void check_set_twice(const kvr::mif_content& content, const std::optional<word_lines::earlier>& before);
    [[nodiscard]] std::string what_the_library_cuts(std::string_view value) const;

    mif_check& check;
    const kvr::mif_memory& memory;
    std::int64_t shift;
    word_lines lines;
    bool sized = false;
    bool behind_end_told = false;
    std::uint64_t header_fault_line = 0; ///< the last header line at fault
    std::string word;
};

/// The statement that begins in the line that the reader numbers @p line, without comments, in @p text.
kvr::mif_content mif_checker::statement_at(std::uint64_t line, std::string& text) const {
    kvr::mif_content content;
    const std::uint64_t last = check.source.line_count();
    std::size_t searched = 0;
    for (std::uint64_t number = line;
         file_line(number) <= last && text.find(';', searched) == std::string::npos; ++number) {
        searched = text.size();
        content.pieces.push_back({searched, number});
        text.append(kvr::without_comments(check.source.line(file_line(number))));
    }
    kvr::to_upper(text);
    content.text = text;
    return content;
}

void mif_checker::take_fault(const kvr::read_fault& fault, std::string_view text) {
    const std::uint64_t line = file_line(fault.line);
    fault_text told = describe_mif_fault(fault, text, {memory.number_of_words, memory.address_radix});
    check_fault found{severity::error,      told.code,    line,
                      fault.column,         fault.length, std::move(told.message),
                      std::move(told.hint), std::nullopt};
    std::string statement_text;
    switch (fault.code) {
    case kvr::fault_code::width_syntax:
    case kvr::fault_code::depth_syntax:
    case kvr::fault_code::address_radix_syntax:
    case kvr::fault_code::data_radix_syntax:
        if (std::exchange(header_fault_line, line) == line) {
            return; // a line with two keywords is refused twice
        }
        take_size_fault(found, fault);
        break;
    case kvr::fault_code::content_syntax:
    case kvr::fault_code::range_syntax:
    case kvr::fault_code::range_not_ascending:
    case kvr::fault_code::address_out_of_range: {
        check.saw_bad_address = true;
        const kvr::mif_content statement = statement_at(fault.line, statement_text);
        const bool same_text = text.ends_with(statement.text);
        if (same_text && add_inner_statements(check, statement, severity::error, shift)) {
            return;
        }
        take_trimmed_place(found);
        if (same_text && fault.code == kvr::fault_code::range_syntax) {
            take_range_fault(found, statement);
        }
        break;
    }
    case kvr::fault_code::address_set_twice: {
        check.saw_bad_address = true;
        const kvr::scanned_number address = kvr::scan_number(text.substr(kvr::find_token(text, 0).begin),
                                                             kvr::radix_base(memory.address_radix));
        const std::uint64_t before = set_words().line_of(address.magnitude);
        take_trimmed_place(found);
        if (before != 0) {
            found.message += fmt::format(", already at line {}", before);
        }
        if (found.hint.empty()) {
            found.hint = "leave one of the two out";
        }
        break;
    }
    case kvr::fault_code::line_too_long:
        found.message = fmt::format("the line has {} characters, {} are allowed",
                                    check.source.line(line).size(), kvr::mif_reader::line_limit);
        break;
    default:
        break;
    }
    check.faults.add(std::move(found));
}

/// The reader marks whole statements, from the blanks before them to their last line.
void mif_checker::take_trimmed_place(check_fault& found) const {
    const std::string_view line = kvr::without_comments(check.source.line(found.line));
    const std::size_t begin = line.find_first_not_of(mif_blanks, found.column - 1);
    if (begin != std::string_view::npos) {
        const std::size_t end =
            std::min<std::size_t>(found.column - 1 + found.length, line.find_last_not_of(mif_blanks) + 1);
        found.column = begin + 1;
        found.length = std::max(end, begin + 1) - begin;
    }
}

/// A header line without ";" is mended where nothing but blanks and comments follow.
void mif_checker::take_size_fault(check_fault& found, const kvr::read_fault& fault) const {
    const std::string_view line = check.source.line(found.line);
    const std::string_view text = kvr::without_comments(line);
    const line_stretch value = header_value(line);
    found.column = value.column;
    found.length = std::max<std::size_t>(value.text.size(), 1);
    if (found.message.starts_with("the first ';'")) {
        found.column = text.find(';') + 1;
        found.length = 1;
    }
    if (text.find(';') != std::string_view::npos || value.text.empty() ||
        !found.message.starts_with("no ';'")) {
        return;
    }
    const bool is_size =
        fault.code == kvr::fault_code::width_syntax || fault.code == kvr::fault_code::depth_syntax;
    const bool is_certain =
        is_size ? is_number_in(value.text, RADIX_UNS) : radix_of_name(value.text).has_value();
    found.column += value.text.size();
    found.length = 1;
    if (is_certain) {
        found.mended = repair{check.source.offset_of(found.line, found.column), 0, ";",
                              fmt::format("';' put behind {}", visible(value.text))};
    }
}

/// "[0 - 15]" is marked, and mended when it stands in one line.
void mif_checker::take_range_fault(check_fault& found, const kvr::mif_content& content) const {
    const auto range = find_misspelt_range(content.text);
    if (!range) {
        return;
    }
    const kvr::line_place open = place_in(content, range->begin);
    const kvr::line_place first = place_behind(content, range->first.end);
    const kvr::line_place last = place_in(content, range->last.begin);
    found.line = file_line(open.line);
    found.column = open.column;
    found.length = range->end - range->begin;
    const unsigned base = kvr::radix_base(memory.address_radix);
    const bool ascends = kvr::scan_number(range->first.in(content.text), base).magnitude <
                         kvr::scan_number(range->last.in(content.text), base).magnitude;
    if (!range->certain || first.line != last.line || !ascends) {
        return;
    }
    found.mended =
        repair{check.source.offset_of(file_line(first.line), first.column), last.column - first.column, "..",
               fmt::format("{} is now [{}..{}]",
                           visible(content.text.substr(range->begin, range->end - range->begin)),
                           range->first.in(content.text), range->last.in(content.text))};
}

void mif_checker::content_line(const kvr::mif_content& content) {
    const bool merged = add_inner_statements(check, content, severity::warning, shift);
    check_address(content, content.first_address);
    if (content.last_address.found()) {
        check_address(content, content.last_address);
    }
    check_depth(content);
    const auto before = note_words(content);
    if (merged) {
        return; // what else looks wrong comes from that
    }
    check_surplus(content);
    check_set_twice(content, before);
    check_rest(content);
    check_characters(content);
    check_line_breaks(content);
    check_values(content);
}

void mif_checker::cut_at_percent(std::string_view rest, std::uint64_t line) {
    const std::uint64_t number = file_line(line);
    const std::string_view whole = check.source.line(number);
    const std::size_t opening = whole.find('%');
    const auto open_column = static_cast<std::uint32_t>(std::min(opening, whole.size()) + 1);
    if (rest.find('%') == std::string_view::npos) {
        add(severity::warning, "open-comment", {line, open_column}, 1,
            "the '%' comment does not close on its line",
            "it ends with the line, and the next line is read; close each line's comment");
        return;
    }
    const kvr::text_span behind = find_text_behind_comment(rest);
    if (behind.found()) {
        add(severity::warning, "behind-comment",
            {line, static_cast<std::uint32_t>(open_column + behind.begin + 1)}, behind.end - behind.begin,
            fmt::format("'{}' stands behind a comment and is not read", visible(behind.in(rest))),
            "give it a line of its own");
    }
}

void mif_checker::end_statement(const kvr::mif_content& statement) {
    constexpr std::string_view keyword = "END";
    const std::size_t end = statement.text.find(keyword);
    const std::size_t behind = end + keyword.size();
    check_statement_before_end(statement, {end, behind});
    const std::string_view rest = statement.text.substr(behind);
    const kvr::text_span text = find_text_behind_end(rest);
    if (text.found()) {
        add_behind_end(text.in(rest), place_in(statement, behind + text.begin));
    }
}

/// The library passes over what END ends: a statement without ";", or one that ends in the same line.
void mif_checker::check_statement_before_end(const kvr::mif_content& statement, const kvr::text_span& end) {
    const kvr::text_span before = trimmed_span(statement.text.substr(0, end.begin));
    if (check.header.begin == 0 || !before.found() || before.in(statement.text) == "BEGIN") {
        return;
    }
    const kvr::mif_content left_out = text_before(statement, before.end);
    add_inner_statements(check, left_out, severity::warning, shift);
    const kvr::line_place first = place_in(statement, before.begin);
    const bool ends_in_line = kvr::contains(left_out.text, ";");
    std::string hint =
        !is_whole_word(statement, end) ? "the library takes the END within it for the end of the content"
        : ends_in_line                 ? "give END a line of its own"
                       : fmt::format("the library drops the statement of line {}", file_line(first.line));
    std::optional<repair> mended = repair_before_end(statement, before.end, end);
    if (ends_in_line) {
        add(severity::warning, "before-end", first, before.end - before.begin,
            fmt::format("'{}' stands before END in its line and is not read",
                        visible(before.in(statement.text))),
            std::move(hint), std::move(mended));
    } else {
        add(severity::warning, "missing-semicolon", place_behind(statement, before.end), 1,
            "no ';' before END", std::move(hint), std::move(mended));
    }
}

/// A ";" where there is none, and a line of its own for END, where END is a word and what is before it is one
/// statement, or becomes one when the lines before it get their ";".
std::optional<repair> mif_checker::repair_before_end(const kvr::mif_content& statement, std::size_t behind,
                                                     const kvr::text_span& end) const {
    const kvr::mif_content left_out = text_before(statement, behind);
    const std::string_view before = left_out.text;
    const std::vector<inner_statement> inner = find_inner_statements(left_out);
    const bool are_mended = std::all_of(inner.begin(), inner.end(), is_certain_repair);
    if (!kvr::contains(before, ":") || !is_whole_word(statement, end) || !are_mended ||
        find_text_behind_semicolon(before).found()) {
        return std::nullopt;
    }
    const kvr::line_place place = place_behind(statement, behind);
    const bool has_semicolon = kvr::contains(before, ";");
    std::string inserted = has_semicolon ? "" : ";";
    if (place.line == place_in(statement, end.begin).line) {
        inserted += check.source.line_end();
    }
    return repair{check.source.offset_of(file_line(place.line), place.column), 0, std::move(inserted),
                  has_semicolon ? "END put into a line of its own" : "';' put before END"};
}

void mif_checker::behind_end(std::string_view rest, std::uint64_t line) {
    const kvr::text_span text = find_text_behind_end(rest);
    if (text.found() && !(check.blocked && is_header_line(text.in(rest)))) {
        add_behind_end(text.in(rest), {line, static_cast<std::uint32_t>(text.begin + 1)});
    }
}

/// Told once: what follows the first such text is not read either.
void mif_checker::add_behind_end(std::string_view text, const kvr::line_place& place) {
    if (!std::exchange(behind_end_told, true)) {
        add(severity::warning, "behind-end", place, text.size(),
            fmt::format("'{}' stands behind END and is not read", visible(text)),
            is_header_line(text) ? "header lines stand before CONTENT"
                                 : "move it before END, or make it a comment");
    }
}

void mif_checker::check_address(const kvr::mif_content& content, const kvr::text_span& token) {
    const std::string_view digits = token.in(content.text);
    if (memory.address_radix != RADIX_NONE && !is_number_in(digits, memory.address_radix)) {
        check.saw_bad_address = true;
        const std::string message = fmt::format("address {} is no number in ADDRESS_RADIX {}",
                                                visible(digits), radix_title(memory.address_radix));
        warn(content, address_digit_code, token.begin, digits.size(), message,
             fmt::format("the library reads it as address {}",
                         kvr::scan_number(digits, kvr::radix_base(memory.address_radix)).as_strtoul()));
    }
}

/// Against a depth that the person gave, which may be less than the file's own.
void mif_checker::check_depth(const kvr::mif_content& content) {
    if (check.options.depth && content.last >= *check.options.depth) {
        const kvr::text_span& token =
            content.last_address.found() ? content.last_address : content.first_address;
        const std::string address = std::to_string(content.last);
        add(severity::error, "beyond-depth", place_in(content, token.begin), token.end - token.begin,
            address_beyond(address, content.last, "the given depth", *check.options.depth));
    }
}

void mif_checker::check_surplus(const kvr::mif_content& content) {
    const kvr::text_span surplus =
        content.last_address.found() ? find_surplus_value(content) : kvr::text_span();
    if (surplus.found()) {
        const std::uint64_t addresses = std::uint64_t{content.last} - content.first + 1;
        const std::string message =
            fmt::format("{} values for the {} addresses of the range", content.values.size(), addresses);
        warn(content, "surplus-values", surplus.begin, surplus.end - surplus.begin, message,
             fmt::format("the library drops the values from {} on", visible(surplus.in(content.text))));
    }
}

void mif_checker::check_rest(const kvr::mif_content& content) {
    const kvr::text_span rest = find_text_behind_semicolon(content.text);
    if (rest.found()) {
        const std::string_view text = rest.in(content.text);
        const char* const effect = kvr::find_token(text, 0).found()
                                       ? "the library takes it for more values; give it a line of its own"
                                       : "the library passes over it";
        warn(content, "behind-semicolon", rest.begin, text.size(),
             fmt::format("'{}' stands behind a ';'", visible(text)), effect);
    }
}

void mif_checker::check_characters(const kvr::mif_content& content) {
    for (const kvr::text_span& stray : find_stray_characters(content)) {
        warn(content, "stray-character", stray.begin, stray.end - stray.begin,
             fmt::format("'{}' belongs to no address and no value", visible(stray.in(content.text))),
             "the library takes it for a blank");
    }
}

void mif_checker::check_line_breaks(const kvr::mif_content& content) {
    for (std::size_t index = 0; index < content.pieces.size(); ++index) {
        const kvr::line_piece& piece = content.pieces[index];
        if (continues_a_value(content, piece)) {
            // What the line has of the value: all of it again and again would be the square of a long
            // statement.
            const std::size_t line_end =
                index + 1 < content.pieces.size() ? content.pieces[index + 1].offset : content.text.size();
            const std::size_t length =
                kvr::find_token(content.text.substr(0, line_end), piece.offset).end - piece.offset;
            add(severity::warning, "split-value", {piece.line, 1}, length,
                "the line goes on with the value of the line before", "put a blank before it");
        }
    }
}

void mif_checker::check_values(const kvr::mif_content& content) {
    if (width() == 0 || width() > widest_word || memory.memory_radix == RADIX_NONE) {
        return;
    }
    for (const std::string_view value : content.values) {
        check_value(content, value);
    }
}

void mif_checker::check_value(const kvr::mif_content& content, std::string_view value) {
    const auto error = make_word(value, memory.memory_radix, width(), word);
    if (!error) {
        return;
    }
    const auto offset = static_cast<std::size_t>(value.data() - content.text.data());
    if (error->what == kvr::exact_word_error::kind::too_wide) {
        const char* limit = check.options.width ? "the given width" : "WIDTH";
        check.saw_bad_value = true;
        add(level_of_width(), too_wide_code, place_in(content, offset), value.size(),
            fmt::format("value {} needs {} bits, {} is {}", visible(value), error->bits_needed, limit,
                        width()),
            what_the_library_cuts(value));
        return;
    }
    check.saw_bad_value = true;
    std::string message = fmt::format("value '{}' has no digit", visible(value));
    if (error->what == kvr::exact_word_error::kind::invalid_digit) {
        message = fmt::format("'{}' in {} is no {} digit", value[error->position], visible(value),
                              radix_title(memory.memory_radix));
    }
    warn(content, bad_digit_code, offset, value.size(), std::move(message), "the library reads it unchecked");
}

/// What becomes of a word that is too wide. Of a decimal one the bits are told.
std::string mif_checker::what_the_library_cuts(std::string_view value) const {
    constexpr std::size_t longest_shown = 32;
    constexpr std::uint32_t widest_shown = 64;
    if (check.options.width || value.size() > longest_shown || width() > widest_shown) {
        return "";
    }
    const KVR_MEMORY_RADIXES radix = kvr::is_decimal(memory.memory_radix) ? RADIX_BIN : memory.memory_radix;
    std::string cut;
    static_cast<void>(kvr_radix_conversion(std::string(value), &cut, memory.memory_radix, radix, width()));
    return fmt::format("the library keeps {} ({}) of it when it converts it", cut, radix_title(radix));
}

word_lines& mif_checker::set_words() {
    if (!sized) {
        lines = word_lines(memory.number_of_words);
        sized = true;
    }
    return lines;
}

std::optional<word_lines::earlier> mif_checker::note_words(const kvr::mif_content& content) {
    const std::uint64_t line = place_in(content, content.first_address.begin).line;
    return set_words().set(content.first, content.last, file_line(line));
}

void mif_checker::check_set_twice(const kvr::mif_content& content,
                                  const std::optional<word_lines::earlier>& before) {
    if (before) {
        const std::size_t end =
            content.last_address.found() ? content.last_address.end : content.first_address.end;
        warn(content, "set-twice", content.first_address.begin, end - content.first_address.begin,
             fmt::format("address {} is set twice, already at line {}", before->address, before->line),
             "the later line holds");
    }
}

void mif_checker::check_gaps() {
    const std::uint32_t depth =
        std::min(memory.number_of_words, check.options.depth.value_or(memory.number_of_words));
    kvrmem::check_gaps(set_words(), depth, "the library holds 0 there", check.faults);
}

} // namespace

bool add_inner_statements(mif_check& check, const kvr::mif_content& content, severity level,
                          std::int64_t shift) {
    const std::vector<inner_statement> found = find_inner_statements(content);
    for (const inner_statement& each : found) {
        const kvr::line_place place = place_behind(content, each.behind);
        const auto line = static_cast<std::uint64_t>(static_cast<std::int64_t>(place.line) + shift);
        std::optional<repair> mended;
        if (is_certain_repair(each)) {
            mended =
                repair{check.source.offset_of(line, place.column), 0, ";", "';' put before the next address"};
        }
        check.faults.add(
            {level, each.has_value ? "missing-semicolon" : "missing-value", line, place.column, 1,
             each.has_value ? "no ';' before the next address" : "no value before the next address",
             fmt::format("'{}' begins a new statement",
                         visible(content.text.substr(each.address, each.end - each.address))),
             std::move(mended)});
    }
    return !found.empty();
}

bool check_mif_content(mif_check& check, std::string_view text, std::int64_t line_shift,
                       kvr::mif_memory& memory) {
    kvr::fill_radix_names(memory);
    mif_checker checker(check, memory, line_shift);
    kvr::line_source lines(text, kvr::mif_reader::source_limit);
    const bool complete = kvr::mif_reader(memory, &checker).read(lines);
    if (complete && check.faults.count(severity::error) == 0) {
        checker.check_gaps();
    }
    return complete;
}

} // namespace kvrmem
