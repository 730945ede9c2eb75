#include "kvr/memory/hex/hex_record_walk.h"

#include <optional>
#include <variant>

namespace kvr {

hex_record_walk::hex_record_walk(line_source& lines, std::uint32_t address_offset, checksums checksum_test)
    : source(lines),
      offset(address_offset),
      test(checksum_test) {}

hex_record_walk::step hex_record_walk::next() {
    while (!finished) {
        if (read_fast_line()) {
            return accept();
        }
        if (source.at_end()) {
            return finish();
        }
        take_line();
        if (source.failed() && source.at_end()) {
            return finish(); // the failure may have cut the line
        }
        if (line_text.starts_with(':')) {
            return parse_record_in_line();
        }
        // Blanks may fill the limit, with the colon after them.
        if (line_text.empty() && source.line_was_cut() && source.first_of_rest(hex_blanks) == ':') {
            return refuse({fault_code::record_too_long, 0, 0});
        }
    }
    return step::end;
}

/// Parses the next line in place if it is a plain record.
bool hex_record_walk::read_fast_line() {
    const std::string_view lines = source.whole_lines();
    const std::size_t size = parse_fast_hex_record(lines, current);
    if (size == 0) {
        return false;
    }
    source.skip(size);
    ++line_number;
    line_in_file = line_text = lines.substr(0, 1 + current.text.size());
    return true;
}

/// Reads the next line, regardless of its form.
void hex_record_walk::take_line() {
    line_in_file = source.next_line();
    line_text = without_blanks(line_in_file, buffer);
    ++line_number;
}

hex_record_walk::step hex_record_walk::parse_record_in_line() {
    if (source.line_was_cut()) {
        return refuse({fault_code::record_too_long, 0, 0});
    }
    const std::variant<hex_record, hex_record_fault> split = split_hex_record(line_text);
    if (const auto* fault = std::get_if<hex_record_fault>(&split)) {
        return refuse(*fault);
    }
    current = std::get<hex_record>(split);
    const std::optional<hex_record_fault> fault =
        test == checksums::tested ? check_hex_record(current) : check_hex_record_type(current);
    return fault ? refuse(*fault) : accept();
}

hex_record_walk::step hex_record_walk::accept() {
    if (current.kind == hex_record_type::extended_segment_address) {
        offset = hex_number(current.data()) * 16;
    } else if (current.kind == hex_record_type::extended_linear_address) {
        offset = hex_number(current.data()) * 65536;
    }
    finished = current.kind == hex_record_type::end_of_file;
    return step::record;
}

hex_record_walk::step hex_record_walk::refuse(const hex_record_fault& fault) {
    current_fault = place(fault);
    return step::fault;
}

hex_record_walk::step hex_record_walk::finish() {
    finished = true;
    if (source.failed()) {
        return step::end;
    }
    current_fault = {fault_code::missing_end_record, line_number, 0, 0};
    return step::fault;
}

read_fault hex_record_walk::fault_of_record(fault_code code) const noexcept {
    return place({code, 0, line_text.size()});
}

/// Returns the column of character @p index of the line without blanks.
std::size_t hex_record_walk::column(std::size_t index) const noexcept {
    std::size_t position = line_in_file.find_first_not_of(hex_blanks);
    for (; index > 0; --index) {
        position = line_in_file.find_first_not_of(hex_blanks, position + 1);
    }
    return position + 1;
}

read_fault hex_record_walk::place(const hex_record_fault& fault) const noexcept {
    if (fault.code == fault_code::record_too_long) {
        // The first character beyond the limit.
        return {fault.code, line_number, static_cast<std::uint32_t>(longest_line + 1), 1};
    }
    const std::size_t first = column(fault.first);
    const std::size_t last = column(fault.first + fault.length - 1);
    return {fault.code, line_number, static_cast<std::uint32_t>(first),
            static_cast<std::uint32_t>(last - first + 1)};
}

} // namespace kvr
