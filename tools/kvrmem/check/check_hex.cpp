#include "tools/kvrmem/check/check_hex.h"

#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "tools/kvrmem/check/check_gaps.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/hex_fault_place.h"
#include "tools/kvrmem/memory/hex_width.h"
#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/word_lines.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

namespace kvrmem {

namespace {

using step = kvr::hex_record_walk::step;

/// The last line with a record that is no end record; 0 when there is none. Also one at fault may have words.
std::uint64_t last_line_before_the_end(const check_source& source) {
    std::uint64_t last = 0;
    std::string buffer;
    kvr::line_source lines = source.lines(kvr::line_source::unlimited);
    for (std::uint64_t number = 1; !lines.at_end(); ++number) {
        const std::string_view record = kvr::without_blanks(lines.next_line(), buffer);
        if (record.starts_with(':') && !is_hex_end_record(record)) {
            last = number;
        }
    }
    return last;
}

class hex_error_collector : public kvr::read_observer {
public:
    hex_error_collector(const check_source& checked, fault_list& list) : source(checked), faults(list) {}

    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        fault_text told = describe_hex_fault(fault, text);
        const kvr::read_fault place = exact_hex_fault(fault, text, source.line(fault.line));
        check_fault found{severity::error, told.code,    place.line,           place.column,
                          place.length,    told.message, std::move(told.hint), std::nullopt};
        if (fault.code == kvr::fault_code::no_data && faults.count(severity::error) != 0) {
            return true; // the data records are those at fault
        }
        if (fault.code == kvr::fault_code::missing_end_record) {
            if (end_at_fault) {
                return true; // it is there, and what is wrong with it was told
            }
            take_missing_end(found);
            faults.add(std::move(found));
            return true;
        }
        const bool is_end = is_hex_end_record(text);
        const bool is_last = is_end && fault.line > last_before_the_end();
        end_at_fault = end_at_fault || is_last;
        if (fault.code == kvr::fault_code::checksum) {
            take_checksum(found, text);
            if (is_end && !is_last) {
                found.mended.reset();
                found.hint = "were it mended, the records behind it would not be read";
            }
        }
        faults.add(std::move(found));
        return true;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}

private:
    /// With a character that is no digit no checksum can be told.
    void take_checksum(check_fault& found, std::string_view record) const {
        constexpr std::size_t digits = 2;
        if (first_no_digit(record) == std::string_view::npos && found.length == digits) {
            const std::string checksum = checksum_of(record.substr(1, record.size() - 1 - digits));
            found.mended =
                repair{source.offset_of(found.line, found.column), digits, checksum,
                       fmt::format("checksum {} is now {}", record.substr(record.size() - digits), checksum)};
        }
    }
    /// The place is the last line that holds something.
    void take_missing_end(check_fault& found) const {
        found.line = source.last_line();
        const std::size_t first = source.text().find_first_not_of(kvr::hex_blanks);
        if (first != std::string::npos && source.text()[first] != ':') {
            const std::string& text = source.text();
            if (text.find("CONTENT") != std::string::npos) {
                found.hint = "this looks like MIF; --from mif checks it as that";
            } else if (text[first] == '@') {
                found.hint = "this looks like RIF; --from rif checks it as that";
            }
        }
        found.mended = repair{source.text().size(), 0, source.as_last_line(":00000001FF"),
                              "end record :00000001FF put behind the last line"};
    }

    std::uint64_t last_before_the_end() {
        if (!known_last) {
            known_last = last_line_before_the_end(source);
        }
        return *known_last;
    }

    const check_source& source;
    fault_list& faults;
    std::optional<std::uint64_t> known_last;
    bool end_at_fault = false; ///< there is an end record behind all others, which is refused
};

void find_errors(const check_source& source, const input_options& options, fault_list& faults) {
    kvr::hex_memory memory(nullptr);
    memory.word_size = options.width.value_or(memory.word_size);
    hex_error_collector collector(source, faults);
    kvr::line_source lines = source.lines(kvr::hex_record_walk::longest_line);
    static_cast<void>(kvr::find_address_space(memory, lines, &collector));
}

/// The bytes of a word; 0 when neither the person nor the records tell.
std::uint32_t bytes_per_word(const check_source& source, const input_options& options) {
    if (options.width) {
        return bytes_for(*options.width);
    }
    width_finder finder;
    kvr::line_source lines = source.lines(kvr::hex_record_walk::longest_line);
    kvr::hex_record_walk walk(lines);
    for (step found = walk.next(); found != step::end; found = walk.next()) {
        if (found == step::record && walk.record().kind == kvr::hex_record_type::data) {
            finder.take(address_of_record(walk), walk.record().data_bytes);
        }
    }
    return finder.bytes();
}

class record_checker {
public:
    record_checker(const check_source& checked, const input_options& given, fault_list& list)
        : source(checked),
          options(given),
          faults(list),
          bytes(bytes_per_word(checked, given)),
          lines(every_address) {}

    void check() {
        kvr::line_source text = source.lines(kvr::hex_record_walk::longest_line);
        kvr::hex_record_walk walk(text);
        bool ended = false;
        for (step found = walk.next(); found != step::end; found = walk.next()) {
            const bool is_end_of_file =
                found == step::fault && walk.fault().code == kvr::fault_code::missing_end_record;
            check_passed_over(line_before + 1, walk.line() - (is_end_of_file ? 0 : 1));
            line_before = walk.line();
            if (found == step::record) {
                check_record(walk);
                ended = walk.record().kind == kvr::hex_record_type::end_of_file;
            }
        }
        if (ended) {
            check_behind_end(line_before + 1);
        }
        if (faults.count(severity::error) == 0 && bytes != 0) {
            check_gaps(lines, options.depth, "the library holds 0 there", faults);
        }
    }

private:
    void add(severity level, const char* code, std::size_t column, std::size_t length, std::string message,
             std::string hint) {
        faults.add(
            {level, code, line_before, column, length, std::move(message), std::move(hint), std::nullopt});
    }

    void check_passed_over(std::uint64_t first, std::uint64_t last) {
        for (std::uint64_t number = first; number <= last && number <= source.line_count(); ++number) {
            warn_of_text(number, "not-a-record", "the line does not begin with ':' and is passed over");
        }
    }
    void check_behind_end(std::uint64_t first) {
        for (std::uint64_t number = first; number <= source.line_count(); ++number) {
            if (warn_of_text(number, "behind-end-record", "what stands behind the end record is not read")) {
                return;
            }
        }
    }
    /// True when the line holds something.
    bool warn_of_text(std::uint64_t number, const char* code, const char* message) {
        const std::string_view text = source.line(number);
        const std::size_t begin = text.find_first_not_of(kvr::hex_blanks);
        if (begin == std::string_view::npos) {
            return false;
        }
        faults.add(
            {severity::warning, code, number, begin + 1, text.size() - begin, message, "", std::nullopt});
        return true;
    }

    void check_record(const kvr::hex_record_walk& walk) {
        const kvr::hex_record& record = walk.record();
        const kvr::read_fault whole = walk.fault_of_record(kvr::fault_code::record_type);
        check_digits(record, whole);
        if (record.kind != kvr::hex_record_type::data || bytes == 0) {
            return;
        }
        if (record.data_bytes % bytes != 0) {
            add(severity::warning, "odd-bytes", whole.column, whole.length,
                fmt::format("the record holds {}, which is no whole number of words of {} bytes",
                            counted(record.data_bytes, "byte"), bytes),
                "");
        }
        check_widths(record, whole);
        check_addresses(address_of_record(walk),
                        record.data_bytes / bytes + (record.data_bytes % bytes != 0 ? 1 : 0), whole);
    }

    /// The library takes what stands before such a character for the number.
    void check_digits(const kvr::hex_record& record, const kvr::read_fault& whole) {
        const std::size_t bad = record.text.find_first_not_of(hex_digits);
        if (bad != std::string_view::npos) {
            const std::size_t column = source.line(line_before).find(record.text[bad], whole.column);
            add(severity::warning, "bad-digit", column + 1, 1,
                fmt::format("'{}' is no hexadecimal digit", visible(record.text.substr(bad, 1))),
                "the library reads the number up to there");
        }
    }

    void check_widths(const kvr::hex_record& record, const kvr::read_fault& whole) {
        const std::size_t digits = std::size_t{2} * bytes;
        if (!options.width || *options.width % bits_per_byte == 0) {
            return;
        }
        for (std::string_view data = record.data(); data.size() >= digits; data.remove_prefix(digits)) {
            const std::string_view value = data.substr(0, digits);
            const auto error = make_word(value, RADIX_HEX, *options.width, word);
            if (error && error->what == kvr::exact_word_error::kind::too_wide) {
                const std::size_t offset = static_cast<std::size_t>(value.data() - record.text.data()) + 1;
                const bool has_blanks = whole.length != record.text.size() + 1;
                add(severity::error, "too-wide", has_blanks ? whole.column : whole.column + offset,
                    has_blanks ? whole.length : digits,
                    fmt::format("word {} needs {} bits, the given width is {}", visible(value),
                                error->bits_needed, *options.width),
                    "");
            }
        }
    }

    void check_addresses(std::uint64_t first, std::uint64_t count, const kvr::read_fault& whole) {
        if (count == 0) {
            return;
        }
        const std::uint64_t last = first + count - 1;
        if (last >= every_address) {
            add(severity::warning, "address-outside", whole.column, whole.length,
                fmt::format("address {} is beyond the largest, {}", last, every_address - 1), "");
        } else if (options.depth && last >= *options.depth) {
            const std::uint64_t beyond = std::max<std::uint64_t>(first, *options.depth);
            add(severity::error, "beyond-depth", whole.column, whole.length,
                address_beyond(std::to_string(beyond), beyond, "the given depth", *options.depth), "");
        }
        const auto before = lines.set(first, last, line_before);
        if (before) {
            add(severity::warning, "set-twice", whole.column, whole.length,
                fmt::format("address {} is set twice, already at line {}", before->address, before->line),
                "the later record holds");
        }
    }

    const check_source& source;
    const input_options& options;
    fault_list& faults;
    std::uint32_t bytes;
    word_lines lines;
    std::uint64_t line_before = 0; ///< the line of the record at hand, then of the one before
    std::string word;
};

} // namespace

void check_hex(const check_source& source, const input_options& options, fault_list& faults) {
    find_errors(source, options, faults);
    record_checker(source, options, faults).check();
}

} // namespace kvrmem
