#include "kvrimage/formats/hex/hex_reader.h"

#include "kvrimage/bytes/found_byte.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/edit/text_lines.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/hex/hex_address_unit.h"
#include "kvrimage/formats/hex/hex_bytes.h"
#include "kvrimage/formats/hex/hex_cells.h"
#include "kvrimage/formats/hex/hex_faults.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/formats/line_ends.h"
#include "kvrimage/formats/reading_from_base.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::size_t longest_line_of_kvr = 599;
constexpr std::size_t segment_digits = 4;

/// Returns the bytes per address according to the first records; 0 if they do not show it. Contradicting
/// records are found during reading.
std::uint32_t bytes_by_first_records(std::string_view contents) {
    width_finder finder;
    hex_offset offset;
    hex_parser parser(contents);
    while (finder.bytes() == 0 && parser.next()) {
        const hex_record& record = parser.line().record;
        if (parser.line().what != hex_line::kind::record || parser.line().fault != hex_fault::none) {
            continue;
        }
        if (record.type == hex_record_type::data) {
            finder.take(offset.value() + record.address, record.data_bytes);
        } else if (sets_offset(record.type)) {
            offset.take(record.type, record.data());
        }
    }
    return finder.bytes();
}

/// Determines why the file cannot be read with the given width, or without one.
class layout_check {
public:
    layout_check(const read_options& given, const hex_layout& used) : options(given), layout(used) {}

    void take(std::uint64_t address, std::uint32_t bytes, std::string_view digits) {
        finder.take(address, bytes);
        if (first_digits.empty()) {
            first_digits = digits;
        }
    }
    /// Returns false if no width was given and the records contradict each other or the first ones do not
    /// show it.
    [[nodiscard]] bool knows_width() const {
        return options.width || layout.counts_bytes() || finder.bytes() != 0;
    }
    void report(diagnostic_list& diagnostics) const {
        if (!knows_width()) {
            diagnostics.add(diagnose::width_unknown({}));
        } else if (!layout.counts_bytes() && options.width && options.unit != address_unit::word) {
            report_contradiction(diagnostics);
        }
    }

private:
    void report_contradiction(diagnostic_list& diagnostics) const {
        const std::uint32_t found = finder.bytes();
        if (found == 0 || found >= layout.bytes_per_word()) {
            return;
        }
        const bool are_bytes = found == 1;
        const std::string counted =
            are_bytes ? "bytes" : fmt::format("words of {} bits", found * bits_per_byte);
        const std::string other = are_bytes ? "add --address-unit byte --endian " + orders() + "; "
                                            : fmt::format("give --width {}; ", found * bits_per_byte);
        diagnostic contradiction = diagnose::address_unit({}, counted, layout.width);
        if (are_bytes) {
            contradiction.option = "--address-unit byte --endian little";
        }
        contradiction.hint = other + "or --address-unit word if words are omitted";
        diagnostics.add(std::move(contradiction));
    }
    /// Returns "little (first word 00500113) or big (13015000)".
    [[nodiscard]] std::string orders() const {
        const std::string word(first_digits.substr(0, 2 * std::size_t{layout.bytes_per_word()}));
        return fmt::format("little (first word {}) or big ({})", in_byte_order(word, byte_order::little),
                           word);
    }

    const read_options& options;
    const hex_layout& layout;
    width_finder finder;
    std::string first_digits;
};

class hex_reading {
public:
    hex_reading(std::string_view file, const read_options& given, const format& read_as)
        : contents(file),
          options(given),
          as(read_as),
          list(given.most_diagnostics, given.wants_repairs),
          layout(first_layout(file, given, read_as)),
          check(options, layout),
          parser(file) {
        if (layout.counts_bytes()) {
            bytes.emplace(contents);
        } else if (layout.width != 0) {
            cells.emplace(contents, layout, options);
        }
    }

    read_result read() {
        while (read_plain_records(), parser.next()) {
            read_line(parser.line());
        }
        if (!has_record) {
            return only_finding(as, contents, foreign_content(contents, &as).value_or(diagnose::not_hex({})));
        }
        report_lines();
        report_end();
        report_words();
        return result();
    }

private:
    static hex_layout first_layout(std::string_view file, const read_options& given, const format& read_as) {
        hex_layout found;
        const bool counts_bytes = given.unit == address_unit::byte || read_as.counts == address_unit::byte;
        found.unit = counts_bytes ? address_unit::byte : address_unit::word;
        if (!counts_bytes) {
            found.width = given.width ? *given.width : bytes_by_first_records(file) * bits_per_byte;
        }
        return found;
    }

    void read_plain_records() {
        if (end_line) {
            return;
        }
        while (bytes && read_record_run()) {
        }
        for_each_plain_record(parser, [this](const kvr::hex_record& record, const span& where) {
            if (bytes) {
                bytes->take(offset, record.word_address, record.data(), where);
            } else if (!read_plain_words(record)) {
                return false;
            }
            note_data(record.data_bytes);
            return true;
        });
    }

    /// Reads a record whose address counts words. Returns false if it needs a closer look.
    bool read_plain_words(const kvr::hex_record& record) {
        const std::uint64_t address = offset.value() + record.word_address;
        if (wraps(record.word_address, record.data_bytes) || (cells && !cells->add_plain(record, address))) {
            return false;
        }
        check.take(address, record.data_bytes, record.data());
        return true;
    }

    /// Reads a run of neighboring byte records, if there is one.
    bool read_record_run() {
        line_walk& lines = parser.to_come();
        const record_run run = bytes->add_run(offset, lines.rest());
        if (run.records == 0) {
            return false;
        }
        note_data(run.bytes);
        lines.skip(run.size);
        return true;
    }

    void read_line(const hex_line& line) {
        if (line.what == hex_line::kind::blank) {
            return;
        }
        if (end_line) {
            read_after_end(line);
        } else if (line.what == hex_line::kind::text) {
            read_text(line);
        } else {
            read_record(line);
        }
    }

    void read_text(const hex_line& line) {
        if (line.lacks_colon) {
            has_record = true;
            diagnostic found = diagnose::colon_missing(line.content, line.content.in(contents));
            found.fix = {{line.content.offset, 0, ":"}};
            found.repair = "':' is added before the record";
            report_fault(line, std::move(found));
        } else {
            (line.hides_record ? commented : text).add(line.content);
        }
    }

    void read_record(const hex_line& line) {
        const hex_record& record = line.record;
        read_what_is_before(line);
        if (line.fault == hex_fault::none) {
            report_pending_end(record.type == hex_record_type::end);
            has_record = true;
            check_length_of_line(line);
            read_good_record(line);
            return;
        }
        has_record = has_record || record.type != hex_record_type::unknown || line.fault == hex_fault::type;
        if (record.type == hex_record_type::data) {
            mark_unreadable(line);
        }
        report_fault(line, describe_hex_fault(contents, line));
    }

    /// Reports a fault of a record, that of an end record when it is known whether a record follows.
    void report_fault(const hex_line& line, diagnostic found) {
        const bool is_end = line.record.type == hex_record_type::end;
        report_pending_end(is_end);
        if (is_end) {
            pending_end = std::move(found);
        } else {
            has_faulty_record = true;
            list.add(std::move(found));
        }
    }

    void read_what_is_before(const hex_line& line) {
        if (line.before.length == 0) {
            return;
        }
        const std::string_view before = line.before.in(contents);
        if (before == "\xEF\xBB\xBF" && line.before.offset == 0) {
            diagnostic found = diagnose::mark_before_record(line.before);
            found.fix = {{0, before.size(), ""}};
            found.repair = "the byte-order mark is deleted";
            list.add(std::move(found));
        } else {
            list.add(diagnose::before_record(line.before, before));
        }
    }

    void check_length_of_line(const hex_line& line) {
        if (line.whole.length <= longest_line_of_kvr) {
            return;
        }
        const bool has_return = line.whole.in(contents).ends_with('\r');
        diagnostic found = diagnose::record_long(line.content, line.whole.length, longest_line_of_kvr);
        found.fix = {{line.whole.offset, line.whole.length,
                      fmt::format(":{}{}", line.record.digits, has_return ? "\r" : "")}};
        found.repair = "the blanks of the line are deleted";
        list.add(std::move(found));
    }

    void read_good_record(const hex_line& line) {
        const hex_record& record = line.record;
        if (record.type == hex_record_type::data) {
            read_data(line);
        } else if (record.type == hex_record_type::end) {
            read_end(record);
        } else if (sets_offset(record.type)) {
            offset.take(record.type, record.data());
        } else {
            read_start(record);
        }
    }

    void read_end(const hex_record& record) {
        end_line = record.where;
        if (record.data_bytes != 0) {
            list.add(diagnose::end_record_data(record.where, counted(record.data_bytes, "byte")));
        }
    }

    void read_start(const hex_record& record) {
        if (as.counts != address_unit::byte) {
            list.add(diagnose::start_address(record.where, record.data()));
            return;
        }
        const bool is_segment = record.type == hex_record_type::start_segment_address;
        std::string value(record.data());
        start = start_of(value, is_segment);
        if (is_segment && value.size() == 2 * segment_digits) {
            value.insert(segment_digits, 1, ':');
        }
        starts.push_back({"start address", std::move(value)});
    }
    /// Returns the byte address given by the digits of a start record; nothing if digits are missing.
    static std::optional<std::uint64_t> start_of(std::string_view digits, bool is_segment) {
        if (digits.size() != 2 * segment_digits) {
            return std::nullopt;
        }
        const std::uint64_t value = hex_value(digits);
        constexpr std::uint64_t paragraph = 16;
        return is_segment ? (value >> hex_page_shift) * paragraph + value % hex_page_size : value;
    }

    void read_data(const hex_line& line) {
        const hex_record& record = line.record;
        const hex_data data{offset.value() + record.address, record.data_bytes, record.data(), &line,
                            record.where};
        if (!bytes && wraps(record.address, record.data_bytes)) {
            list.add(diagnose::address_wraps(record.where, offset.value() + hex_page_size - 1));
            mark_unreadable(line);
            return;
        }
        note_data(data.bytes);
        if (bytes) {
            bytes->take(offset, record.address, data.digits, data.where);
        } else {
            check.take(data.address, data.bytes, data.digits);
        }
        if (cells) {
            cells->take(data);
        }
    }

    /// Returns whether a record after a segment address extends beyond 65536 addresses.
    [[nodiscard]] bool wraps(std::uint32_t address, std::uint32_t count) const {
        return offset.counts_segments() &&
               address + count / std::max(1U, layout.bytes_per_word()) > hex_page_size;
    }

    void note_data(std::size_t count) {
        has_record = true;
        has_data = has_data || count != 0;
        report_pending_end(false);
    }

    void mark_unreadable(const hex_line& line) {
        const std::uint64_t address = offset.value() + line.record.address;
        if (bytes) {
            bytes->mark_unreadable(address, line.record.data_bytes);
        } else if (cells) {
            cells->mark_unreadable(address, line.record.data_bytes);
        }
    }

    void read_after_end(const hex_line& line) {
        const bool is_data = line.what == hex_line::kind::record &&
                             (line.fault != hex_fault::none ||
                              (line.record.type == hex_record_type::data && line.record.data_bytes != 0));
        if (is_data || line.lacks_colon) {
            records_after_end.add(line.content);
        } else {
            text_after_end.add(line.content);
        }
    }

    /// Reports the fault of an end record, if there is one.
    /// @param is_last no record follows
    void report_pending_end(bool is_last) {
        if (!pending_end) {
            return;
        }
        if (!is_last) {
            pending_end->fix.clear();
            pending_end->repair.clear();
            pending_end->hint = "if it is repaired, the records after it are not read";
        }
        list.add(*std::exchange(pending_end, std::nullopt));
        has_faulty_end = is_last;
    }

    /// Reports the diagnostics that cover several lines.
    void report_lines() {
        if (!text.empty()) {
            list.add(diagnose::not_a_record(text));
        }
        if (!commented.empty()) {
            list.add(diagnose::commented_record(commented));
        }
        if (!text_after_end.empty()) {
            list.add(diagnose::after_end_record(text_after_end));
        }
        if (!records_after_end.empty()) {
            const auto line = 1 + std::ranges::count(contents.substr(0, end_line->offset), '\n');
            list.add(diagnose::record_after_end(records_after_end, line));
        }
    }

    void report_end() {
        report_pending_end(true);
        if (!end_line && !has_faulty_end) {
            const std::size_t end = contents.find_last_not_of(hex_blanks) + 1;
            diagnostic found = diagnose::missing_end_record(span{end, 0});
            found.fix = {{contents.size(), 0, as_last_line(contents, ":00000001FF")}};
            found.repair = "end record :00000001FF put after the last line";
            list.add(std::move(found));
        }
    }

    void report_words() {
        if (!has_data) {
            if (end_line && !list.has_broken() && (!options.depth || !options.width)) {
                list.add(diagnose::no_data(*end_line, !options.width
                                                          ? options.depth ? "--width" : "--width and --depth"
                                                          : "--depth"));
            }
            return;
        }
        if (!has_faulty_record) {
            check.report(list);
        }
        if (!check.knows_width()) {
            cells.reset();
        }
        if (cells) {
            cells->report(list);
        }
    }

    read_result result() {
        read_result made;
        if (bytes) {
            bytes->finish(options, list, made);
        } else if (cells) {
            made.image = cells->finish();
            if (!made.image && options.width && options.keep_going) {
                made.image.emplace(*options.width, 1); // an edit needs no existing word
            }
            made.unreadable = cells->unreadable();
        }
        made.facts.unit = layout.unit;
        made.facts.more = std::move(starts);
        made.facts.start_address = start;
        made.facts.width_source = options.width || bytes ? "" : "the records";
        made.facts.has_comments = !text.empty() || !commented.empty() || !text_after_end.empty();
        made.facts.as = &as;
        finish_byte_reading(contents, options, list, made);
        return made;
    }

    std::string_view contents;
    const read_options& options;
    const format& as;
    diagnostic_list list;
    hex_layout layout;
    layout_check check;
    hex_parser parser;
    hex_offset offset;
    std::optional<hex_bytes> bytes; ///< if addresses count bytes
    std::optional<hex_cells> cells; ///< if addresses count words of known width
    std::vector<named_fact> starts;
    std::optional<std::uint64_t> start; ///< from the last start record
    places text, commented, text_after_end, records_after_end;
    std::optional<span> end_line; ///< set after the end record
    /// Reports a faulty end record. Kept until it is known whether a record follows.
    std::optional<diagnostic> pending_end;
    bool has_record = false;
    bool has_data = false;
    bool has_faulty_record = false;
    bool has_faulty_end = false;
};

read_result read_records(std::string_view contents, const read_options& options, const format& as) {
    if (auto found = lines_without_lf(contents, options)) {
        return only_finding(as, contents, *std::move(found));
    }
    return hex_reading(contents, options, as).read();
}

read_result read_word_records(std::string_view contents, const read_options& options) {
    return read_records(contents, options, hex_format);
}

/// Implements format::find_word for word addresses.
std::optional<place> find_record_of_word(std::string_view contents, const read_options& options,
                                         std::uint64_t address) {
    const hex_layout layout = layout_of_words(contents, options);
    if (layout.width == 0) {
        return std::nullopt;
    }
    std::optional<span> found;
    hex_offset offset;
    static_cast<void>(for_each_data_record(contents, offset, [&](const hex_data& data) {
        if (!data.is_in_doubt() && data.address <= address &&
            address < data.address + data.bytes / layout.bytes_per_word()) {
            found = data.where;
        }
    }));
    if (!found) {
        return std::nullopt;
    }
    const std::string_view before = contents.substr(0, found->offset);
    const auto line_ends = static_cast<std::uint64_t>(std::ranges::count(before, '\n'));
    return place{1 + line_ends, before.size() - before.rfind('\n'), found->offset, found->length};
}

constexpr reading_from_zero words_from_zero = {read_word_records, find_record_of_word};

bool can_be_read(const read_result& result) {
    return result.image && std::ranges::none_of(result.diagnostics, [](const diagnostic& found) {
               return about(found.id).level == diagnostic_class::broken;
           });
}

} // namespace

read_result read_hex(std::string_view contents, const read_options& options) {
    if (options.unit == address_unit::byte) {
        return read_records(contents, options, hex_format);
    }
    read_result result = read_from_base(contents, options, words_from_zero);
    if (can_be_read(result)) {
        if (auto doubt = doubt_of_address_unit(contents, options)) {
            result.diagnostics.push_back(*std::move(doubt));
            result.image.reset(); // all words are ambiguous
        }
    }
    return result;
}

read_result read_hexbytes(std::string_view contents, const read_options& options) {
    return read_records(contents, options, hexbytes_format);
}

std::optional<place> find_hex_word(std::string_view contents, const read_options& options,
                                   std::uint64_t address) {
    return options.unit == address_unit::byte ? find_hexbytes_word(contents, options, address)
                                              : find_from_base(contents, options, address, words_from_zero);
}

std::optional<place> find_hexbytes_word(std::string_view contents, const read_options& options,
                                        std::uint64_t address) {
    return find_byte_of_word(contents, options, address,
                             [contents](std::uint64_t byte) { return find_hex_byte(contents, byte); });
}

certainty sniff_hex(std::string_view head) {
    hex_parser parser(head);
    certainty best = certainty::no;
    for (unsigned records = 0; records < 2 && parser.next();) {
        const hex_line& line = parser.line();
        if (line.what != hex_line::kind::record) {
            continue;
        }
        ++records;
        if (line.fault == hex_fault::none && line.before.length <= 3) {
            return certainty::certain;
        }
        const bool is_likely = line.record.type != hex_record_type::unknown;
        best = std::max(best, is_likely ? certainty::likely : certainty::possible);
    }
    return best;
}

} // namespace kvrimage
