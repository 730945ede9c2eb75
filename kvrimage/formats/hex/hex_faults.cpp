#include "kvrimage/formats/hex/hex_faults.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/diagnostics/diagnose.h"

#include <fmt/format.h>

#include <string>

namespace kvrimage {

namespace {

diagnostic describe_hex_digit(std::string_view contents, const hex_line& line) {
    return diagnose::bad_digit(line.fault_place, line.fault_place.in(contents),
                               line.record.where.in(contents), "hexadecimal");
}

diagnostic describe_second_record(const hex_line& line) {
    diagnostic found = diagnose::second_record(line.fault_place);
    found.fix = {{line.fault_place.offset, 0, "\n"}};
    found.repair = "the second record is now on a line of its own";
    return found;
}

/// All digits before the checksum are present.
diagnostic describe_missing_checksum(const hex_line& line) {
    const std::string_view digits = line.record.digits;
    const std::string fields(digits.substr(0, hex_record::header));
    const std::string checksum = hex_checksum(fields);
    const std::string_view given = digits.substr(hex_record::header);
    diagnostic found = diagnose::checksum_missing(line.fault_place,
                                                  given.empty() ? "the record has no checksum"
                                                                : "the checksum has one digit, it needs 2",
                                                  fields + checksum);
    if (given.empty() || given[0] == checksum[0]) {
        found.fix = {{line.fault_place.offset, 0, checksum.substr(given.size())}};
        found.repair = fmt::format("checksum {} is added", checksum);
    }
    return found;
}

diagnostic describe_length(const hex_line& line) {
    const hex_record& record = line.record;
    const std::size_t all = record.digits.size();
    const std::size_t digits = all > hex_record::shortest ? all - hex_record::shortest : 0;
    const std::string_view length = record.digits.substr(0, 2);
    const std::string stated = counted(record.data_bytes, "byte");
    if (digits % 2 != 0) {
        return diagnose::record_length(
            line.fault_place, length, stated,
            fmt::format("{} {}, an odd number", digits == 1 ? "is" : "are", counted(digits, "digit")),
            "a digit is missing or surplus");
    }
    const char* advice = record.data_bytes == digits / 2 + 1 ? "one byte is missing, or the checksum" : "";
    return diagnose::record_length(line.fault_place, length, stated,
                                   fmt::format("{} {}", digits == 2 ? "is" : "are", digits / 2),
                                   all < hex_record::shortest ? "the checksum is missing, too" : advice);
}

diagnostic describe_checksum(std::string_view contents, const hex_line& line) {
    const std::string_view digits = line.record.digits;
    const std::string_view given = digits.substr(digits.size() - 2);
    const std::string right = hex_checksum(digits.substr(0, digits.size() - 2));
    diagnostic found = diagnose::checksum(line.fault_place, line.fault_place.in(contents), right, "");
    found.fix = {{line.fault_place.offset, line.fault_place.length, right}};
    found.repair = fmt::format("checksum {} is now {}", given, right);
    return found;
}

} // namespace

diagnostic describe_hex_fault(std::string_view contents, const hex_line& line) {
    const hex_record& record = line.record;
    switch (line.fault) {
    case hex_fault::bad_digit:
        return describe_hex_digit(contents, line);
    case hex_fault::second_record:
        return describe_second_record(line);
    case hex_fault::too_short:
        return diagnose::record_short(line.fault_place, counted(record.digits.size(), "digit"));
    case hex_fault::no_checksum:
        return describe_missing_checksum(line);
    case hex_fault::length:
        return describe_length(line);
    case hex_fault::checksum:
        return describe_checksum(contents, line);
    case hex_fault::type:
        return diagnose::record_type(line.fault_place, record.digits.substr(6, 2));
    default: // hex_fault::address_length
        return diagnose::address_record_length(line.fault_place, record.digits.substr(6, 2),
                                               counted(record.data_bytes, "byte"));
    }
}

} // namespace kvrimage
