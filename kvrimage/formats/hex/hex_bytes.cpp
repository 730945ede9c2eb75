#include "kvrimage/formats/hex/hex_bytes.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/hex/hex_cells.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/united_ranges.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::uint64_t last_hex_byte = 0xFFFFFFFF;
constexpr record_style hex_data_style = hex_style_of_type(std::string_view("\0", 1));

/// Returns how many of the @p bytes bytes of a record at @p address precede the end of its segment.
std::uint32_t bytes_before_wrap(const hex_offset& offset, std::uint32_t address, std::uint32_t bytes) {
    const auto left = static_cast<std::uint32_t>(hex_page_size - address);
    return offset.counts_segments() ? std::min(bytes, left) : bytes;
}

} // namespace

void hex_bytes::take(const hex_offset& offset, std::uint32_t address, std::string_view digits,
                     const span& where) {
    const auto bytes = static_cast<std::uint32_t>(digits.size() / 2);
    const std::uint32_t before = bytes_before_wrap(offset, address, bytes);
    add(offset.value() + address, digits.substr(0, 2 * std::size_t{before}), where);
    if (before != bytes) {
        first_wrapped = wrapped.empty() ? offset.value() : first_wrapped;
        wrapped.add(where);
        add(offset.value(), digits.substr(2 * std::size_t{before}), where);
    }
}

record_run hex_bytes::add_run(const hex_offset& offset, std::string_view lines) {
    // A run ends within 65536 addresses, so at the end of the segment at the latest.
    const record_run run = parse_record_run(lines, hex_data_style, blocks.next_room());
    if (run.records != 0) {
        static_cast<void>(blocks.room_for(offset.value() + run.address, run.bytes)); // the bytes are in place
    }
    return run;
}

void hex_bytes::add(std::uint64_t address, std::string_view digits, const span& where) {
    if (digits.empty()) {
        return;
    }
    const std::size_t count = digits.size() / 2;
    if (address + count - 1 > last_hex_byte) {
        first_outside = outside.empty() ? address + count - 1 : first_outside;
        outside.add(where);
    }
    static_cast<void>(decode_hex(digits, blocks.room_for(address, count))); // the digits are valid
}

void hex_bytes::mark_unreadable(std::uint64_t address, std::uint32_t bytes) {
    in_doubt.push_back({address, address + std::max(bytes, 1U) - 1});
}

void hex_bytes::finish(const read_options& options, diagnostic_list& diagnostics, read_result& result) {
    if (!wrapped.empty()) {
        diagnostics.add(diagnose::address_wrapped(wrapped, fmt::format("{:X}", first_wrapped)));
    }
    if (!outside.empty()) {
        diagnostics.add(diagnose::address_outside(outside, fmt::format("{:X}", first_outside),
                                                  fmt::format("{:X}", last_hex_byte)));
    }
    if (blocks.empty() && !options.depth) {
        return; // other diagnostics report it
    }
    make_words_of_bytes(
        blocks, options, [this](std::uint64_t address) { return find_hex_byte(contents, address); },
        diagnostics, result);
    const std::uint64_t base = options.base.value_or(0);
    const std::uint64_t bytes_per_word = bytes_of_width(options.width.value_or(bits_per_byte));
    for (const address_range& each : in_doubt) {
        const std::uint64_t first = (each.first - base) / bytes_per_word;
        if (each.first >= base && result.image && first < result.image->depth()) {
            const std::uint64_t last = (each.last - base) / bytes_per_word;
            result.unreadable.push_back({first, std::min(last, result.image->depth() - 1)});
        }
    }
    result.unreadable = united(result.unreadable);
}

span find_hex_byte(std::string_view contents, std::uint64_t address) {
    span found;
    hex_offset offset;
    static_cast<void>(for_each_data_record(contents, offset, [&](const hex_data& data) {
        if (data.is_in_doubt()) {
            return;
        }
        const auto field = static_cast<std::uint32_t>(data.address - offset.value());
        const std::uint32_t before = bytes_before_wrap(offset, field, data.bytes);
        const bool is_before = address >= data.address && address - data.address < before;
        const bool is_after = address >= offset.value() && address - offset.value() < data.bytes - before;
        if (is_before || is_after) {
            const std::uint64_t index =
                is_before ? address - data.address : before + (address - offset.value());
            found = data.span_of(contents, 2 * static_cast<std::size_t>(index), 2);
        }
    }));
    return found;
}

} // namespace kvrimage
