#pragma once

#include "kvr/memory/hex/hex_record.h"
#include "kvr/numeric/character_block.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Returns the sum of the bytes that @p count digits encode, an even number of them. Reads up to fifteen
/// characters more.
inline sixteen_sum sum_of_plain_bytes(const char* digits, std::size_t count) noexcept {
    sixteen_sum result{0, 0};
    for (std::size_t at = 0; at < count; at += 16) {
        const sixteen_sum part = sum_of_sixteen(digits + at, count - at < 16 ? count - at : 16);
        result.other |= part.other;
        result.sum += part.sum;
    }
    return result;
}

/// Does the same without reading beyond the digits.
inline sixteen_sum sum_of_last_bytes(std::string_view digits) noexcept {
    sixteen_sum result{0, 0};
    while (!digits.empty()) {
        std::array<char, 16> part{};
        const std::size_t count = digits.copy(part.data(), part.size());
        const sixteen_sum sum = sum_of_sixteen(part.data(), count);
        result.other |= sum.other;
        result.sum += sum.sum;
        digits.remove_prefix(count);
    }
    return result;
}

/// Returns the length of the line end at the front of @p text: 1 for LF, 2 for CR LF, otherwise 0.
inline std::size_t line_end_size(std::string_view text) noexcept {
    if (text.starts_with('\n')) {
        return 1;
    }
    return text.starts_with("\r\n") ? 2 : 0;
}

/// Fast path for split_hex_record() and check_hex_record(). It accepts the usual line: a record that begins
/// with the first character of @p lines, has hexadecimal digits only, a known type and a valid checksum, and
/// ends with LF or CR LF, without blanks. For any other line it returns 0, and the exact path decides. For an
/// accepted line both paths give the same record.
///
/// @param expected_bytes the likely record length. If it is correct, the next record need not wait for the
/// digits of this one
/// @return the number of bytes of the line with its LF, or 0; @p record is set only if it is not 0
[[nodiscard]] inline std::size_t parse_fast_hex_record(std::string_view lines, hex_record& record,
                                                       std::uint32_t expected_bytes = 0) noexcept {
    constexpr std::size_t shortest = 11; // the colon, eight digits of the header and two of the checksum
    if (lines.size() < shortest || lines.front() != ':') {
        return 0;
    }
    // The check of all digits below covers these too.
    const std::uint64_t fields = four_bytes(load_eight(lines.data() + 1));
    std::uint32_t data_bytes = expected_bytes;
    if ((fields & 0xFF) != expected_bytes) [[unlikely]] {
        data_bytes = static_cast<std::uint32_t>(fields & 0xFF);
    }
    const auto address = static_cast<std::uint32_t>((fields >> 16 & 0xFF) << 8 | (fields >> 32 & 0xFF));
    const auto type = static_cast<std::uint32_t>(fields >> 48);
    const std::size_t digits = shortest - 1 + 2 * std::size_t{data_bytes};
    if (lines.size() <= digits) {
        return 0;
    }
    const std::string_view text(lines.data() + 1, digits);
    const sixteen_sum bytes =
        lines.size() > digits + 16 ? sum_of_plain_bytes(text.data(), digits) : sum_of_last_bytes(text);
    if (bytes.other != 0 || (bytes.sum & 0xFF) != 0) {
        return 0;
    }
    const std::size_t line_end = line_end_size(lines.substr(1 + digits));
    if (line_end == 0 || type >= static_cast<std::uint32_t>(hex_record_type::unknown)) {
        return 0;
    }
    record.text = text;
    record.data_bytes = data_bytes;
    record.word_address = address;
    record.kind = static_cast<hex_record_type>(type);
    return 1 + digits + line_end;
}

} // namespace kvr
