#include "kvrimage/formats/hex/hex_layout.h"

#include "kvrimage/formats/hex/hex_records.h"

namespace kvrimage {

namespace {

/// Returns the bytes per word according to all records; 0 if they do not show it.
std::uint32_t bytes_by_records(std::string_view contents) {
    width_finder finder;
    hex_offset offset;
    static_cast<void>(for_each_data_record(contents, offset, [&finder](const hex_data& data) {
        if (!data.is_in_doubt()) {
            finder.take(data.address, data.bytes);
        }
    }));
    return finder.bytes();
}

} // namespace

std::string in_byte_order(std::string_view digits, byte_order order) {
    std::string result(digits);
    if (order == byte_order::little) {
        for (std::size_t at = 0; at < digits.size(); at += 2) {
            result.replace(at, 2, digits.substr(digits.size() - 2 - at, 2));
        }
    }
    return result;
}

hex_layout layout_of(const read_result& ours) {
    return {.width = ours.image->width(),
            .unit = ours.facts.unit.value_or(address_unit::word),
            .order = ours.facts.order.value_or(byte_order::big)};
}

hex_layout layout_of_words(std::string_view contents, const read_options& options) {
    return {.width = options.width ? *options.width : bytes_by_records(contents) * bits_per_byte};
}

} // namespace kvrimage
