#include "kvr/memory/hex/fast_hex_records.h"

#include "kvr/numeric/digit_run.h"

#include <algorithm>

namespace kvr {

namespace {

/// Characters after a record that may be read but not consumed.
constexpr std::size_t slack_of_records = 32;
static_assert(slack_of_records >= predicted_address::readable && slack_of_records >= 16 &&
              word_batch::slack >= 8);

/// Returns the sum of the bytes before the data of a data record with @p data_bytes bytes of data.
std::uint32_t sum_of_header(std::uint32_t data_bytes, std::uint32_t address) noexcept {
    return data_bytes + (address >> 8U) + (address & 0xFFU);
}

} // namespace

fast_hex_records::run fast_hex_records::read(std::string_view lines, std::uint32_t address_offset) {
    const auto first = static_cast<std::uint32_t>(predicted.address());
    if (predicted.size() == 0 || lines.size() < line_size + slack_of_records) {
        return {first, 0, line_size};
    }
    const std::uint64_t first_word = std::uint64_t{first} + address_offset;
    const word_batch::word_room room = fast.room_for_some(first_word, word_digits);
    const std::size_t lines_ahead = (lines.size() - slack_of_records) / line_size;
    const std::size_t most = std::min({std::size_t{predicted.lines_at_once()}, lines_ahead, room.count});
    const std::size_t digits = word_digits + 2;
    const std::size_t line_end = line_size - predicted.size() - digits;
    std::uint32_t header_sum = sum_of_header(static_cast<std::uint32_t>(word_digits / 2), first);
    char* place = room.place;
    const std::size_t count = predicted.count_predicted(lines.data(), line_size, most, [&](const char* data) {
        const sixteen_sum bytes = sum_of_plain_bytes(data, digits);
        if (bytes.other != 0 || ((bytes.sum + header_sum) & 0xFF) != 0 ||
            line_end_size({data + digits, 2}) != line_end) {
            return false;
        }
        copy_digits(data, word_digits, false, place);
        place += word_digits;
        ++header_sum; // within lines_at_once() only the last digit of the address changes
        return true;
    });
    if (count != 0) {
        fast.take(first_word, count);
        predicted.advance(count);
    }
    return {first, static_cast<std::uint32_t>(count), line_size};
}

} // namespace kvr
