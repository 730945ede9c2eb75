#include "kvrimage/formats/hex/hex_cells.h"

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/numeric/digit_value.h"
#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/image/united_ranges.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

hex_cells::hex_cells(std::string_view file, const hex_layout& of, const read_options& options)
    : contents(file),
      layout(of),
      given_depth(options.depth),
      base(options.base.value_or(0)),
      cell_bytes(of.bytes_per_word()),
      cell_digits(2 * std::size_t{cell_bytes}),
      stored_digits((of.width + bits_per_hex_digit - 1) / bits_per_hex_digit),
      limit(std::min(given_depth.value_or(deepest_memory), deepest_memory)),
      words(limit),
      batch(words.lower_half()) {}

bool hex_cells::add_plain(const kvr::hex_record& record, std::uint64_t address) {
    const std::uint32_t count = record.data_bytes == cell_bytes ? 1 : record.data_bytes / cell_bytes;
    const std::uint64_t after = address + count;
    const bool is_regular = address >= end && after <= std::min(limit, image_words::half()) && count != 0 &&
                            count * std::size_t{cell_bytes} == record.data_bytes;
    if (!is_regular || !store_plain(record.data(), address, count)) {
        return false;
    }
    end = after;
    return true;
}

bool hex_cells::store_plain(std::string_view digits, std::uint64_t address, std::uint32_t count) {
    if (!kvr::are_upper_hex_digits(digits)) {
        static_cast<void>(kvr::copy_hex_digits(digits, kvr::letter_case::upper, upper));
        digits = {upper.digits.data(), digits.size()};
    }
    const auto first = static_cast<std::uint32_t>(address);
    if (layout.width % bits_per_byte != 0) {
        return store_cut(digits, first, count);
    }
    if (count == 1) {
        batch.set(first, digits);
    } else {
        batch.set_side_by_side(first, digits, cell_digits);
    }
    return true;
}

/// Stores words without their surplus leading bits. Returns false if one of these bits is not 0.
bool hex_cells::store_cut(std::string_view digits, std::uint32_t first, std::uint32_t count) {
    const std::size_t surplus = cell_digits - stored_digits;
    const unsigned top_bits = (layout.width - 1) % bits_per_hex_digit + 1;
    for (std::uint32_t index = 0; index < count; ++index, digits.remove_prefix(cell_digits)) {
        if ((surplus != 0 && digits.front() != '0') || kvr::digit_value(digits[surplus]) >> top_bits != 0) {
            return false;
        }
        batch.set(first + index, digits.substr(surplus, stored_digits));
    }
    return true;
}

void hex_cells::take(const hex_data& data) {
    const std::uint32_t count = data.bytes / cell_bytes;
    if (data.bytes % cell_bytes != 0) {
        odd_bytes.add(data.where, data.bytes);
        mark_unreadable(data.address, data.bytes);
        return;
    }
    if (count == 0) {
        return;
    }
    batch.flush();
    note_addresses(data, count);
    for (std::uint32_t index = 0; index < count && data.address + index < limit; ++index) {
        store(data, data.address + index, index);
    }
    end = std::max(end, std::min(data.address + count, limit));
}

void hex_cells::note_addresses(const hex_data& data, std::uint32_t count) {
    const std::uint64_t last = data.address + count - 1;
    if (last >= deepest_memory) {
        outside.add(data.where, last);
    } else if (last >= limit) {
        beyond_depth.add(data.where, std::max(data.address, limit), last);
    }
    for (std::uint64_t address = data.address; address <= last && address < std::min(end, limit); ++address) {
        if (!words[address].empty()) {
            set_twice.add(data.where, address);
            return;
        }
    }
}

void hex_cells::store(const hex_data& data, std::uint64_t address, std::uint32_t index) {
    const std::string_view digits = data.digits.substr(index * cell_digits, cell_digits);
    if (const auto fault = make_word(digits, radix::hex, layout.width, word)) {
        if (too_wide.empty()) {
            first_too_wide = digits;
        }
        too_wide.add(data.span_of(contents, index * cell_digits, cell_digits), fault->bits_needed);
        mark_unreadable(address, cell_bytes);
        return;
    }
    words.set(address, word);
}

void hex_cells::mark_unreadable(std::uint64_t address, std::uint32_t bytes) {
    const std::uint64_t count = std::max<std::uint64_t>(1, (bytes + cell_bytes - 1) / cell_bytes);
    if (address < limit) {
        const std::uint64_t last = std::min(address + count, limit) - 1;
        in_doubt.push_back({address, last});
    }
}

void hex_cells::report(diagnostic_list& diagnostics) {
    if (!odd_bytes.empty()) {
        diagnostics.add(diagnose::odd_bytes(odd_bytes.where, counted(odd_bytes.first, "byte"),
                                            counted(cell_bytes, "byte")));
    }
    report_too_wide(diagnostics);
    report_addresses(diagnostics);
    if (!set_twice.empty()) {
        diagnostics.add(
            diagnose::overwritten_word(set_twice.where, set_twice.first, line_that_sets(set_twice.first)));
    }
}

void hex_cells::report_too_wide(diagnostic_list& diagnostics) const {
    if (!too_wide.empty()) {
        diagnostics.add(diagnose::too_wide(too_wide.where, first_too_wide, too_wide.first, layout.width,
                                           "--width", too_wide.most));
    }
}

void hex_cells::report_addresses(diagnostic_list& diagnostics) const {
    if (!outside.empty()) {
        diagnostics.add(diagnose::address_outside(outside.where, outside.first, deepest_memory - 1));
    }
    if (!beyond_depth.empty()) {
        const std::uint64_t depth = limit - base;
        const std::uint64_t needed = beyond_depth.most + 1 - base;
        diagnostics.add(diagnose::beyond_depth(beyond_depth.where, beyond_depth.first - base, depth,
                                               depth - 1, "--depth", needed));
    }
}

/// Returns the line that first sets @p cell.
std::uint64_t hex_cells::line_that_sets(std::uint64_t cell) const {
    std::size_t offset = std::string_view::npos;
    hex_offset page;
    static_cast<void>(for_each_data_record(contents, page, [&](const hex_data& data) {
        if (offset == std::string_view::npos && !data.is_in_doubt() && data.address <= cell &&
            cell < data.address + data.bytes / cell_bytes) {
            offset = data.where.offset;
        }
    }));
    return 1 + static_cast<std::uint64_t>(std::ranges::count(contents.substr(0, offset), '\n'));
}

std::uint64_t hex_cells::depth_of_image() const {
    std::uint64_t depth = end;
    for (const address_range& range : in_doubt) {
        depth = std::max(depth, range.last + 1);
    }
    return given_depth ? limit : depth;
}

std::optional<memory_image> hex_cells::finish() {
    batch.flush();
    const std::uint64_t depth = depth_of_image();
    if (depth == 0) {
        return std::nullopt;
    }
    words.resize(depth);
    return memory_image(layout.width, std::make_unique<image_words>(std::move(words)));
}

std::vector<address_range> hex_cells::unreadable() const {
    return united(in_doubt);
}

} // namespace kvrimage
