#include "tools/kvrmem/memory/fault_text.h"

#include "kvr/memory/memory_state.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/scanned_number.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/hex_fault_place.h"
#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/line_text.h"
#include "tools/kvrmem/memory/mif_statement_faults.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace kvrmem {

namespace {

using kvr::fault_code;

/// @p line: upper-case and without blanks, with the keyword in it.
fault_text describe_size(const char* code, std::string_view keyword, std::string_view line) {
    const std::size_t digits = line.find_first_of("0123456789");
    if (digits == std::string_view::npos) {
        return {code, fmt::format("{} has no number; it can be 1 to 2147483647", keyword), ""};
    }
    const std::size_t behind = std::min(line.find_first_not_of("0123456789", digits), line.size());
    const std::string_view number = line.substr(digits, behind - digits);
    const kvr::scanned_number size = kvr::scan_number(number, 10);
    if (!size.fits || size.magnitude == 0 || size.magnitude > 0x7FFFFFFF) {
        const std::size_t value = line.find('=') + 1; // 0 without a "="
        const std::string_view given = line.substr(value, std::max(line.find(';', value), value) - value);
        return {code,
                fmt::format("{} is {}; it can be 1 to 2147483647", keyword,
                            visible(value != 0 && given.find(number) == 0 ? given : number)),
                ""};
    }
    return {code, fmt::format("no ';' behind {}={}", keyword, number), ""};
}

fault_text describe_radix(const char* code, std::string_view keyword, std::string_view line) {
    if (line.find(';') != std::string_view::npos) {
        return {code, fmt::format("the first ';' stands before the radix that the line gives {}", keyword),
                "give each header line a line of its own"};
    }
    return {code, fmt::format("no ';' behind the name of the {}", keyword),
            fmt::format("write {}=HEX; (or BIN, OCT, DEC, UNS)", keyword)};
}

/// The two addresses of a range, or the one of any other statement.
std::array<std::string_view, 2> addresses_of(std::string_view text) {
    const kvr::text_span first = kvr::find_token(text, 0);
    if (!first.found()) {
        return {};
    }
    const std::size_t dot = text.find('.', first.end);
    const bool is_range = text.find('[') != std::string_view::npos && dot != std::string_view::npos;
    const kvr::text_span last = is_range ? kvr::find_token(text, dot) : kvr::text_span();
    return {first.in(text), last.found() ? last.in(text) : std::string_view()};
}

/// The address of @p text that is not below the depth; the first one when that is none of them.
std::string_view address_at_fault(std::string_view text, const mif_limits& limits) {
    const auto [first, last] = addresses_of(text);
    const kvr::scanned_number number = kvr::scan_number(first, kvr::radix_base(limits.address_radix));
    const bool first_is_fine = number.is_address() && number.magnitude < limits.depth;
    return first_is_fine && !last.empty() ? last : first;
}

fault_text describe_address(std::string_view text, const mif_limits& limits) {
    constexpr const char* code = "address-range";
    const std::string_view digits = address_at_fault(text, limits);
    const kvr::scanned_number address = kvr::scan_number(digits, kvr::radix_base(limits.address_radix));
    if (!address.fits) {
        return {code,
                fmt::format("address {} is beyond DEPTH {} (0 to {})", visible(digits), limits.depth,
                            limits.depth - 1),
                ""};
    }
    if (!address.is_address()) {
        return {code,
                fmt::format("address {} is negative, DEPTH is {} (0 to {})", visible(digits), limits.depth,
                            limits.depth - 1),
                ""};
    }
    if (address.magnitude >= limits.depth) {
        return {code, address_beyond(digits, address.magnitude, "DEPTH", limits.depth), ""};
    }
    const std::size_t values = kvr::count_tokens(text.substr(text.find(':')));
    return {code,
            fmt::format("the {} from address {} on reach address {}, beyond DEPTH {} (0 to {})",
                        counted(values, "value"), address.magnitude, address.magnitude + values - 1,
                        limits.depth, limits.depth - 1),
            values_behind_semicolon(text)
                ? "what stands behind a ';' counts as values; give it a line of its own"
                : ""};
}

fault_text describe_content(std::string_view text) {
    constexpr const char* code = "content-syntax";
    const std::size_t colon = text.find(':');
    const kvr::text_span address = kvr::find_token(text, 0);
    if (colon == std::string_view::npos) {
        return {code, fmt::format("'{}' has no ':' between address and values", visible(trimmed(text))),
                text.find('=') != std::string_view::npos ? "header lines stand before CONTENT" : ""};
    }
    if (!address.found() || address.end > colon) {
        return {code, fmt::format("'{}' has no address before ':'", visible(trimmed(text))), ""};
    }
    return {code, fmt::format("'{}' has no value behind ':'", visible(trimmed(text))), ""};
}

/// "[3 - 0]", which is no range yet, for one that the library reads.
fault_text describe_misspelt_range(std::string_view text, const misspelt_range& range,
                                   const mif_limits& limits) {
    const unsigned base = kvr::radix_base(limits.address_radix);
    std::string_view low = range.first.in(text);
    std::string_view high = range.last.in(text);
    const std::uint64_t first = kvr::scan_number(low, base).magnitude;
    const std::uint64_t last = kvr::scan_number(high, base).magnitude;
    if (first > last) {
        std::swap(low, high);
    }
    const std::string what =
        first == last ? fmt::format("one address stands without brackets: {} : <value>;", visible(low))
                      : fmt::format("a range is written [{}..{}]", visible(low), visible(high));
    return {"range-syntax",
            fmt::format("'{}': {}", visible(text.substr(range.begin, range.end - range.begin)), what), ""};
}

fault_text describe_range(std::string_view text, const mif_limits& limits) {
    constexpr const char* code = "range-syntax";
    const auto range = find_misspelt_range(text);
    if (range) {
        return describe_misspelt_range(text, *range, limits);
    }
    const std::size_t bracket = text.find(']');
    if (bracket == std::string_view::npos) {
        return {code, fmt::format("'{}' has no ']' behind the range", visible(trimmed(text))), ""};
    }
    const std::size_t colon = text.find(':', bracket);
    if (colon == std::string_view::npos) {
        return {code, fmt::format("'{}' has no ':' between range and values", visible(trimmed(text))), ""};
    }
    if (!kvr::find_token(text, colon).found()) {
        return {code, fmt::format("'{}' has no value behind ':'", visible(trimmed(text))), ""};
    }
    return {code, fmt::format("'{}' is no '[<first>..<last>] : <values>;'", visible(trimmed(text))), ""};
}

fault_text describe_order(std::string_view text, const mif_limits& limits) {
    constexpr const char* code = "range-order";
    const auto [first, last] = addresses_of(text);
    const unsigned base = kvr::radix_base(limits.address_radix);
    const std::string from = visible(first);
    const std::string to = visible(last);
    if (kvr::scan_number(first, base).magnitude == kvr::scan_number(last, base).magnitude) {
        return {code, fmt::format("the range {}..{} is one address", from, to),
                fmt::format("one address stands without brackets: {} : <value>;", from)};
    }
    return {code, fmt::format("the range {}..{} goes down", from, to),
            fmt::format("a range goes up: [{}..{}]", to, from)};
}

/// A fault of an address may come from a digit that its radix does not have.
fault_text with_digit_hint(fault_text told, std::string_view text, const mif_limits& limits) {
    const unsigned base = kvr::radix_base(limits.address_radix);
    for (const std::string_view address : addresses_of(text)) {
        const auto is_digit = [base](char c) { return kvr::digit_value(c) < base || c == '-'; };
        if (!std::all_of(address.begin(), address.end(), is_digit)) {
            told.hint = fmt::format("{} is no number in ADDRESS_RADIX {}", visible(address),
                                    radix_title(limits.address_radix));
            break;
        }
    }
    return told;
}

/// "record length 04 means 4 bytes of data, there are 3"
fault_text describe_length(std::string_view record) {
    constexpr const char* code = "record-length";
    constexpr std::size_t fields = 11; // colon, length, address, type, checksum
    if (const std::size_t missing = missing_checksum_digits(record)) {
        return {code, missing == 1 ? "the checksum has one digit, it needs 2" : "the record has no checksum",
                ""};
    }
    const std::size_t digits = record.size() > fields ? record.size() - fields : 0;
    const std::uint32_t bytes = kvr::hex_number(record.substr(1, 2));
    if (digits % 2 != 0) {
        return {code,
                fmt::format("record length {} means {} of data, there {} {}, an odd number",
                            visible(record.substr(1, 2)), counted(bytes, "byte"), is_or_are(digits),
                            counted(digits, "digit")),
                "a digit is missing or too much"};
    }
    const char* hint = bytes == digits / 2 + 1 ? "one byte is missing, or the checksum" : "";
    return {code,
            fmt::format("record length {} means {} of data, there {} {}", visible(record.substr(1, 2)),
                        counted(bytes, "byte"), is_or_are(digits / 2), digits / 2),
            record.size() < fields ? "the checksum is missing, too" : hint};
}

fault_text describe_checksum(std::string_view record) {
    const std::size_t bad = first_no_digit(record);
    if (bad != std::string_view::npos) {
        return {"bad-digit", fmt::format("'{}' is no hexadecimal digit", visible(record.substr(bad, 1))), ""};
    }
    return {"checksum",
            fmt::format("checksum is {}, the record adds up to {}", record.substr(record.size() - 2),
                        checksum_of(record.substr(1, record.size() - 3))),
            ""};
}

} // namespace

std::string address_beyond(std::string_view digits, std::uint64_t address, std::string_view depth_name,
                           std::uint32_t depth) {
    const std::string decimal = std::to_string(address);
    std::string shown = decimal;
    if (digits != decimal) {
        shown = fmt::format("{} (decimal {})", visible(digits), decimal);
    }
    return fmt::format("address {} is beyond {} {} (0 to {})", shown, depth_name, depth, depth - 1);
}

fault_text describe_mif_fault(const kvr::read_fault& fault, std::string_view text, const mif_limits& limits) {
    switch (fault.code) {
    case fault_code::line_too_long:
        return {"line-too-long",
                fmt::format("the line is longer than {} characters", kvr::mif_reader::line_limit),
                "a statement may go on in the next line; break this one at a blank"};
    case fault_code::width_syntax:
        return describe_size("width", "WIDTH", text);
    case fault_code::depth_syntax:
        return describe_size("depth", "DEPTH", text);
    case fault_code::address_radix_syntax:
        return describe_radix("address-radix", "ADDRESS_RADIX", text);
    case fault_code::data_radix_syntax:
        return describe_radix("data-radix", "DATA_RADIX", text);
    case fault_code::content_syntax:
        return describe_content(text);
    case fault_code::range_syntax:
        return describe_range(text, limits);
    case fault_code::range_not_ascending:
        return with_digit_hint(describe_order(text, limits), text, limits);
    case fault_code::address_out_of_range:
        return with_digit_hint(describe_address(text, limits), text, limits);
    case fault_code::address_set_twice:
        return with_digit_hint(
            {"set-twice", fmt::format("address {} is set twice", visible(addresses_of(text)[0])), ""}, text,
            limits);
    case fault_code::end_before_begin:
        return {"end-before-begin", "END stands before BEGIN",
                "write CONTENT BEGIN before the first statement"};
    case fault_code::missing_end:
        return {"missing-end", "there is no END;", "write END; behind the last statement"};
    default:
        return {"content-syntax", "the line cannot be understood", ""};
    }
}

fault_text describe_hex_fault(const kvr::read_fault& fault, std::string_view record) {
    switch (fault.code) {
    case fault_code::record_too_short:
        return {"record-short",
                fmt::format("the record has {}; its length, address and type need 8, its checksum 2",
                            counted(record.size() - 1, "digit")),
                ""};
    case fault_code::record_length:
        return describe_length(record);
    case fault_code::checksum:
        return describe_checksum(record);
    case fault_code::record_type:
        return {"record-type",
                fmt::format("record type {} is none of 00 to 05", visible(record.substr(7, 2))), ""};
    case fault_code::record_too_long:
        return {"record-long",
                fmt::format("the record is longer than {} characters", kvr::hex_record_walk::longest_line),
                ""};
    case fault_code::missing_end_record:
        return {"missing-end-record", "there is no end record", "the last line should be :00000001FF"};
    case fault_code::no_data:
        return {"no-data", "the end record stands before any data", ""};
    default:
        return {"record-length", "the record cannot be understood", ""};
    }
}

fault_text describe_rif_fault(const kvr::read_fault& fault, std::string_view line) {
    const std::string_view found =
        line.substr(std::min<std::size_t>(fault.column - 1, line.size()), fault.length);
    constexpr const char* code = "illegal-character";
    if (found.find_first_not_of('\t') == std::string_view::npos) {
        return {code, "a tab cannot stand between words", "separate words by blanks"};
    }
    return {code, fmt::format("'{}' is no hexadecimal digit", visible(found)),
            found.find("0x") != std::string_view::npos ? "words stand without 0x" : ""};
}

} // namespace kvrmem
