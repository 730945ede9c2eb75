#include "kvrimage/formats/srec/srec_reader.h"

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/bytes/found_byte.h"
#include "kvrimage/bytes/record_run.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/srec/srec_format.h"
#include "kvrimage/formats/srec/srec_parser.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

std::string counted_bytes(std::size_t count) {
    return fmt::format("{} byte{}", count, count == 1 ? "" : "s");
}

/// Returns the largest address of a record of @p type.
std::uint64_t largest_srec_address(unsigned type) {
    return (std::uint64_t{1} << (bits_per_byte * srec_address_bytes[type])) - 1;
}

/// Returns the address of the last byte of a record with data.
std::uint64_t last_address_of(const srec_line& line) {
    return std::uint64_t{line.address} + line.data.size() - 1;
}

/// Returns whether the record has data at valid addresses of a file.
bool has_data_of_file(const srec_line& line) {
    return line.what == srec_line::kind::record && line.fault == srec_fault::none && line.is_data() &&
           !line.data.empty() && last_address_of(line) <= largest_srec_address(3);
}

/// Returns the place that sets the byte at @p address last.
span find_srec_byte(std::string_view contents, std::uint64_t address) {
    span found;
    srec_parser parser(contents);
    while (parser.next()) {
        const srec_line& line = parser.line();
        if (has_data_of_file(line) && line.address <= address && address - line.address < line.data.size()) {
            found = line.span_of_byte(address - line.address);
        }
    }
    return found;
}

/// Returns the text of a header in readable form.
std::string shown_header(std::string_view data) {
    data = data.substr(0, data.find_last_not_of('\0') + 1);
    const bool is_text = std::ranges::all_of(data, [](char each) { return each >= ' ' && each <= '~'; });
    if (is_text) {
        return std::string(data);
    }
    std::string digits(2 * data.size(), '0');
    encode_hex(data, digits.data());
    return "0x" + digits;
}

diagnostic describe_srec_count(const srec_line& line, std::string_view contents) {
    const std::string_view digits = line.content.in(contents).substr(2);
    const std::string_view count = digits.substr(0, 2);
    unsigned char stated = 0;
    static_cast<void>(decode_hex(count, reinterpret_cast<char*>(&stated)));
    const std::size_t there = digits.size() - 2;
    const bool is_odd = there % 2 != 0;
    const std::string found = is_odd ? fmt::format("are {} digits, an odd number", there)
                                     : fmt::format("{} {}", there == 2 ? "is" : "are", there / 2);
    const bool lacks_one = !is_odd && there / 2 + 1 == stated;
    diagnostic made = diagnose::srec_count(
        line.fault_place, count, counted_bytes(stated), found,
        is_odd ? "a digit is missing or surplus" : (lacks_one ? "one byte is missing, or the checksum" : ""));
    return made;
}

diagnostic describe_srec_fields(const srec_line& line, std::string_view contents) {
    const std::size_t needed = srec_address_bytes[line.type] + 1;
    return diagnose::srec_fields(
        line.fault_place, line.fault_place.in(contents), fmt::format("S{}", line.type),
        fmt::format("{}{}", line.type <= 3 ? "at least " : "", counted_bytes(needed)));
}

/// @param is_certain the checksum may be repaired
diagnostic describe_srec_checksum(const srec_line& line, std::string_view contents, bool is_certain) {
    const std::string_view found = line.fault_place.in(contents);
    const std::string_view fields = line.content.in(contents).substr(2);
    std::string bytes(fields.size() / 2 - 1, '\0');
    static_cast<void>(decode_hex(fields.substr(0, 2 * bytes.size()), bytes.data()));
    const std::string sum = fmt::format("{:02X}", srec_checksum(bytes));
    diagnostic made =
        diagnose::checksum(line.fault_place, found, sum,
                           is_certain ? "" : "if it is repaired, the records after it are not read");
    if (is_certain) {
        made.fix = {{line.fault_place.offset, 2, sum}};
        made.repair = fmt::format("checksum {} is now {}", found, sum);
    }
    return made;
}

diagnostic describe_srec_fault(const srec_line& line, std::string_view contents, bool is_certain) {
    diagnostic made;
    switch (line.fault) {
    case srec_fault::letter:
        made = diagnose::srec_letter(line.fault_place);
        made.fix = {{line.fault_place.offset, 1, "S"}};
        made.repair = "'s' is now 'S'";
        return made;
    case srec_fault::bad_digit:
        return diagnose::bad_digit(line.fault_place, line.fault_place.in(contents), line.content.in(contents),
                                   "hexadecimal");
    case srec_fault::too_short:
        return diagnose::srec_short(line.fault_place, line.content.length == 2 ? "no digit" : "1 digit");
    case srec_fault::count:
        return describe_srec_count(line, contents);
    case srec_fault::fields:
        return describe_srec_fields(line, contents);
    case srec_fault::type:
        return diagnose::srec_type(line.fault_place);
    default: // srec_fault::checksum
        return describe_srec_checksum(line, contents, is_certain);
    }
}

class srec_reading {
public:
    srec_reading(std::string_view file, const read_options& given)
        : contents(file),
          options(given),
          list(given.most_diagnostics, given.wants_repairs),
          parser(file),
          blocks(file.size() / 2 + 1) {}

    read_result read() {
        do {
            while (!end_line && read_record_run()) {
            }
        } while (read_next_line());
        result.facts.as = &srec_format;
        if (!has_record) {
            list = diagnostic_list(options.most_diagnostics);
            list.add(foreign_content(contents).value_or(diagnose::not_srec({})));
        } else {
            report_lines();
            make_facts();
            make_words_beside_faults(
                has_fault, blocks, options,
                [this](std::uint64_t address) { return find_srec_byte(contents, address); }, list, result);
        }
        finish_byte_reading(contents, options, list, result);
        return std::move(result);
    }

private:
    /// Reads a run of neighboring data records, if there is one.
    bool read_record_run() {
        line_walk& lines = parser.to_come();
        const std::string_view rest = lines.rest();
        if (rest.size() < 2 || rest[1] < '1' || rest[1] > '3') {
            return false;
        }
        const auto type = static_cast<unsigned>(rest[1] - '0');
        const record_run run = parse_record_run(rest, srec_styles[type], blocks.next_room());
        if (run.records == 0) {
            return false;
        }
        static_cast<void>(blocks.room_for(run.address, run.bytes)); // the bytes are in place
        types_used[type] = has_record = true;
        data_records += run.records;
        lines.skip(run.size);
        return true;
    }

    bool read_next_line() {
        const bool is_there = parser.next();
        if (is_there) {
            read_line(parser.line());
        }
        return is_there;
    }

    void read_line(const srec_line& line) {
        if (line.what == srec_line::kind::text) {
            text.add(line.content);
        } else if (line.what == srec_line::kind::record) {
            read_record(line);
        }
    }

    void read_record(const srec_line& line) {
        has_record = true;
        if (end_line) {
            records_after_end.add(line.content);
            return;
        }
        data_records += line.is_data() ? 1U : 0U;
        if (line.is_end()) {
            end_line = line.content;
            end_type = line.type;
        }
        if (line.fault != srec_fault::none) {
            const bool is_last = !line.is_end() || parser.to_come().rest().find_first_not_of(" \t\r\n") ==
                                                       std::string_view::npos;
            list.add(describe_srec_fault(line, contents, is_last));
            has_fault = true;
            return;
        }
        read_good_record(line);
    }

    void read_good_record(const srec_line& line) {
        if (line.is_data()) {
            read_data(line);
        } else if (line.is_count()) {
            compare_count(line);
        } else if (line.is_end()) {
            start = fmt::format("{:0{}X}", line.address, 2 * srec_address_bytes[line.type]);
            if (line.address != 0) { // 0 is written if there is no start address
                result.facts.start_address = line.address;
            }
        } else {
            headers += 1;
            header = headers == 1 ? shown_header(line.data) : header;
        }
    }

    void read_data(const srec_line& line) {
        types_used[line.type] = true;
        if (line.data.empty()) {
            return;
        }
        if (!has_data_of_file(line)) {
            list.add(diagnose::srec_beyond(line.content, fmt::format("{:X}", largest_srec_address(3))));
            return;
        }
        if (last_address_of(line) > largest_srec_address(line.type)) { // some writers make such records
            beyond_type[line.type].add(line.content);
        }
        line.data.copy(blocks.room_for(line.address, line.data.size()), line.data.size());
    }

    void compare_count(const srec_line& line) {
        if (line.address != data_records) {
            list.add(diagnose::srec_record_count(line.content, fmt::format("S{}", line.type), line.address,
                                                 data_records));
        }
    }

    void report_lines() {
        if (!text.empty()) {
            list.add(diagnose::srec_text(text));
        }
        for (unsigned type = 1; type < beyond_type.size(); ++type) {
            if (!beyond_type[type].empty()) {
                list.add(diagnose::srec_beyond_type(beyond_type[type],
                                                    fmt::format("{:X}", largest_srec_address(type)),
                                                    fmt::format("S{}", type)));
            }
        }
        if (!records_after_end.empty()) {
            const auto line = 1 + std::ranges::count(contents.substr(0, end_line->offset), '\n');
            list.add(diagnose::record_after_end(records_after_end, line));
        }
        if (!end_line) {
            list.add(diagnose::srec_no_end({}));
        } else {
            compare_end_with_data();
        }
    }

    void compare_end_with_data() {
        constexpr unsigned types = 10; // type of a data record + type of its last record
        const unsigned its = types - end_type;
        const bool has_data = types_used[1] || types_used[2] || types_used[3];
        if (has_data && !types_used[its]) {
            const unsigned theirs = types_used[3] ? 3 : (types_used[2] ? 2 : 1);
            list.add(diagnose::srec_other_end(*end_line, fmt::format("S{}", end_type),
                                              fmt::format("S{}", its), fmt::format("S{}", theirs)));
        }
    }

    void make_facts() {
        if (headers != 0) {
            result.facts.more.push_back(
                {"header",
                 header + (headers == 1 ? "" : fmt::format(" (the first of {} headers)", headers))});
        }
        if (!start.empty()) {
            result.facts.more.push_back({"start address", start});
        }
        result.facts.has_comments = !text.empty();
    }

    std::string_view contents;
    const read_options& options;
    diagnostic_list list;
    srec_parser parser;
    byte_blocks blocks;
    read_result result;
    places text, records_after_end;
    std::array<places, 3> beyond_type; ///< by type, S1 and S2
    std::optional<span> end_line;      ///< set after the last record
    unsigned end_type = 0;
    std::array<bool, 4> types_used{}; ///< by type of the data records
    std::uint64_t data_records = 0;
    std::uint64_t headers = 0;
    std::string header; ///< the first one
    std::string start;
    bool has_record = false;
    bool has_fault = false;
};

} // namespace

read_result read_srec(std::string_view contents, const read_options& options) {
    return srec_reading(contents, options).read();
}

std::optional<place> find_srec_word(std::string_view contents, const read_options& options,
                                    std::uint64_t address) {
    return find_byte_of_word(contents, options, address,
                             [contents](std::uint64_t byte) { return find_srec_byte(contents, byte); });
}

void find_srec_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    srec_parser parser(contents);
    while (parser.next()) {
        if (parser.line().what == srec_line::kind::text) {
            take(parser.line().content);
        }
    }
}

certainty sniff_srec(std::string_view head) {
    srec_parser parser(head);
    while (parser.next()) {
        const srec_line& line = parser.line();
        if (line.what == srec_line::kind::record) {
            const bool is_likely = line.fault == srec_fault::checksum || line.fault == srec_fault::letter;
            return line.fault == srec_fault::none ? certainty::certain
                                                  : (is_likely ? certainty::likely : certainty::possible);
        }
        if (line.what == srec_line::kind::text) {
            return certainty::no;
        }
    }
    return certainty::no;
}

} // namespace kvrimage
