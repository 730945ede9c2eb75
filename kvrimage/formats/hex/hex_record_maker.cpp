#include "kvrimage/formats/hex/hex_record_maker.h"

#include "kvrimage/edit/digit_style.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::uint32_t usual_data_bytes = 16;

/// Returns the cells of the largest record, rounded down to whole words, at least one word.
std::uint64_t cells_of_record(const hex_layout& layout, std::uint32_t largest_record) {
    const std::uint32_t bytes = largest_record != 0 ? largest_record : usual_data_bytes;
    return std::max(1U, bytes / layout.bytes_per_word()) * std::uint64_t{layout.cells_per_word()};
}

} // namespace

hex_record_maker::hex_record_maker(const hex_layout& of, const hex_record_style& like,
                                   std::uint64_t offset_there)
    : layout(of),
      style(like),
      offset(offset_there),
      cells_a_record(cells_of_record(of, like.largest_record)) {}

void hex_record_maker::add(const edit_piece& piece) {
    for (std::uint64_t address = piece.first; address <= piece.last;) {
        select_page(address);
        const std::uint64_t end =
            std::min({piece.last + 1, offset + hex_page_size, address + cells_a_record});
        add_data(piece, address, end);
        address = end;
    }
}

std::string hex_record_maker::take_records() {
    return std::exchange(records, {});
}

void hex_record_maker::select_page(std::uint64_t address) {
    if (address < offset || address - offset >= hex_page_size) {
        offset = address / hex_page_size * hex_page_size;
        add_record(fmt::format("02000004{:04X}", offset >> hex_page_shift));
    }
}

void hex_record_maker::add_data(const edit_piece& piece, std::uint64_t address, std::uint64_t end) {
    std::string fields =
        fmt::format("{:02X}{:04X}00", (end - address) * layout.bytes_per_cell(), address - offset);
    for (; address < end; ++address) {
        fields += in_style(piece.text_at(address), {2 * std::size_t{layout.bytes_per_cell()}, false});
    }
    add_record(fields);
}

void hex_record_maker::add_record(const std::string& fields) {
    const std::string record = fields + hex_checksum(fields);
    records.append(":").append(in_style(record, {record.size(), style.lower_case})).append(style.line_end);
}

} // namespace kvrimage
