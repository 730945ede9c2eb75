#include "kvrimage/formats/hex/hex_rows.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::uint32_t characters_around_data = 12;

} // namespace

hex_rows::hex_rows(std::uint32_t bytes_per_word, text_sink& to)
    : output(to),
      begin(buffer.room(0)),
      limit(begin + kvr::output_file::block_size - kvr::output_file::room_limit),
      record_size(characters_around_data + 2 * bytes_per_word),
      rows(bytes_per_word, kvr::letter_case::upper) {}

char* hex_rows::room() {
    if (buffer.room(0) >= limit) {
        flush();
    }
    return buffer.room(0);
}

std::uint32_t hex_rows::write(const kvr::word_row& row, std::uint32_t address) {
    const auto free = static_cast<std::size_t>(limit - room());
    const auto most = static_cast<std::uint32_t>(free / record_size + 1);
    return rows.write(row.part(0, std::min(row.count, most)), address, buffer);
}

void hex_rows::add(std::string_view text) {
    text.copy(room(), text.size());
    buffer.used(text.size());
}

void hex_rows::flush() {
    char* const end = buffer.room(0);
    output.write({begin, static_cast<std::size_t>(end - begin)});
    // The buffer restarts when it is full.
    buffer.used(kvr::output_file::block_size - static_cast<std::size_t>(end - begin));
    begin = buffer.room(1);
}

} // namespace kvrimage
