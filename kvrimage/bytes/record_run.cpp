#include "kvrimage/bytes/record_run.h"

#include "kvr/numeric/character_block.h"
#include "kvrimage/image/hex_block.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <array>

namespace kvrimage {

namespace {

/// Returns the length of the line end, LF or CR LF, at @p text, or 0 if there is none. @p left, at least 1,
/// is the number of characters left.
std::size_t length_of_line_end(const char* text, std::size_t left) noexcept {
    if (*text == '\n') {
        return 1;
    }
    return left > 1 && text[0] == '\r' && text[1] == '\n' ? 2 : 0;
}

/// The layout of the records of a run, taken from the header of the first one.
struct run_shape {
    std::uint64_t most = 0; ///< the most records within the address range; 0 if there is no record
    std::size_t data_bytes = 0;
    std::uint64_t address = 0;
};

run_shape shape_of_run(std::string_view lines, const record_style& style) noexcept {
    const std::size_t digits = 2 * style.header_bytes();
    std::array<char, 2 * sizeof(std::uint64_t)> bytes{}; // zero-padded, since the bytes after the count are
                                                         // loaded as a limb
    if (lines.size() < style.mark.size() + digits ||
        !decode_hex(lines.substr(style.mark.size(), digits), bytes.data())) {
        return {};
    }
    const std::size_t count = static_cast<unsigned char>(bytes.front());
    if (count <= style.counted) {
        return {};
    }
    const std::size_t data_bytes = count - style.counted;
    const std::uint64_t end = std::uint64_t{1} << (bits_per_byte * style.address_bytes);
    const std::uint64_t address = kvr::reversed_bytes(kvr::load_eight(bytes.data() + 1)) >>
                                  (bits_per_limb - bits_per_byte * style.address_bytes);
    return {(end - address) / data_bytes, data_bytes, address};
}

/// Parses the records of a run. Its members are values, so that a loop can hold them in registers.
class record_reader {
public:
    record_reader(const record_style& style, std::size_t data_bytes) noexcept
        : first_of_mark(style.mark.front()),
          last_of_mark(style.mark.back()),
          mark_size(style.mark.size()),
          header_bytes(style.header_bytes()),
          length(style.length(data_bytes)),
          sum(style.sum) {}

    /// Parses the record at @p text, with @p left characters left, if it begins with @p header.
    /// @param data receives its bytes and one more
    /// @return its length with the line end, or 0 if it is another kind of record
    [[nodiscard]] std::size_t read(const char* text, std::size_t left, std::uint64_t header,
                                   char* data) const noexcept {
        if (left <= length || text[0] != first_of_mark || text[mark_size - 1] != last_of_mark) {
            return 0;
        }
        const std::size_t line_end = length_of_line_end(text + length, left - length);
        return line_end != 0 && read_fields({text + mark_size, length - mark_size}, header, data)
                   ? length + line_end
                   : 0;
    }

private:
    static constexpr std::size_t block_digits = 16;

    /// @param digits from the count to the checksum
    [[nodiscard]] bool read_fields(std::string_view digits, std::uint64_t header, char* data) const noexcept {
        const std::string_view rest = digits.substr(2 * header_bytes);
        const bool is_long = rest.size() >= block_digits;
        if (header != (is_long ? header_of_long(digits.data()) : header_of_short(digits))) {
            return false;
        }
        const decoded_hex spelt = is_long ? decode_blocks(rest, data) : decode_and_sum(rest, data);
        constexpr unsigned byte_values = 256;
        return spelt.are_digits && (sum_of_limb(header) + spelt.sum) % byte_values == sum;
    }
    /// Returns a value that no header has if a character is no digit.
    [[nodiscard]] std::uint64_t header_of_long(const char* digits) const noexcept {
        std::uint64_t value = 0;
        return kvr::read_sixteen(digits, value) ? value >> surplus_bits() : ~std::uint64_t{0};
    }
    [[nodiscard]] std::uint64_t header_of_short(std::string_view digits) const noexcept {
        std::array<char, sizeof(std::uint64_t)> bytes{};
        return decode_hex(digits.substr(0, 2 * header_bytes), bytes.data())
                   ? kvr::reversed_bytes(kvr::load_eight(bytes.data())) >> surplus_bits()
                   : ~std::uint64_t{0};
    }
    [[nodiscard]] std::size_t surplus_bits() const noexcept {
        return bits_per_limb - bits_per_byte * header_bytes;
    }

    char first_of_mark;
    char last_of_mark;
    std::size_t mark_size;
    std::size_t header_bytes;
    std::size_t length; ///< of a record without its line end
    unsigned sum;       ///< required sum of all bytes
};

} // namespace

record_run parse_record_run(std::string_view lines, const record_style& style, char* data) noexcept {
    record_run run;
    const run_shape shape = shape_of_run(lines, style);
    const record_reader reader(style, shape.data_bytes);
    std::uint64_t header = style.header(shape.data_bytes, shape.address);
    const std::uint64_t step = style.header(shape.data_bytes, shape.address + shape.data_bytes) - header;
    const char* const begin = lines.data();
    const char* const end = begin + lines.size();
    const char* place = begin;
    std::size_t records = 0;
    for (; records < shape.most; ++records) {
        const std::size_t next = reader.read(place, static_cast<std::size_t>(end - place), header,
                                             data + records * shape.data_bytes);
        if (next == 0) {
            break;
        }
        place += next;
        header += step;
    }
    run.address = shape.address;
    run.records = records;
    run.bytes = records * shape.data_bytes;
    run.size = static_cast<std::size_t>(place - begin);
    return run;
}

} // namespace kvrimage
