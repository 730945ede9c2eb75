#include "kvrimage/bytes/record_run.h"

#include "kvrimage/bytes/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// Takes one record after the other.
class record_run_reader {
public:
    record_run_reader(std::string_view all, const record_style& looks, char* to) noexcept
        : lines(all),
          style(looks),
          data(to),
          header_bytes(1 + looks.address_bytes + looks.type.size()) {}

    record_run read() noexcept {
        if (!find_data_bytes()) {
            return run;
        }
        while (take_record()) {
        }
        return run;
    }

private:
    static constexpr std::size_t most_header_bytes = 6;

    /// Reads the count of the first record, which holds for all.
    [[nodiscard]] bool find_data_bytes() noexcept {
        unsigned char count = 0;
        if (lines.size() < style.mark.size() + 2 ||
            !decode_hex(lines.substr(style.mark.size(), 2), reinterpret_cast<char*>(&count)) ||
            count <= style.counted) {
            return false;
        }
        data_bytes = count - style.counted;
        length = style.mark.size() + 2 * (header_bytes + data_bytes + 1);
        return true;
    }

    [[nodiscard]] bool take_record() noexcept {
        const std::size_t left = lines.size() - run.size;
        if (left <= length) {
            return false;
        }
        const char* const text = lines.data() + run.size;
        const char* const end = text + length;
        const std::size_t line_end =
            *end == '\n' ? 1 : (left > length + 1 && *end == '\r' && end[1] == '\n' ? 2 : 0);
        if (line_end == 0 || !std::equal(style.mark.begin(), style.mark.end(), text) ||
            !take_fields(text + style.mark.size())) {
            return false;
        }
        run.last = run.size;
        run.size += length + line_end;
        run.bytes += data_bytes;
        ++run.records;
        return true;
    }

    /// @param digits from the count to the checksum
    [[nodiscard]] bool take_fields(const char* digits) noexcept {
        std::array<char, most_header_bytes> header{};
        char checksum = 0;
        char* const bytes = data + run.bytes;
        const char* const data_digits = digits + 2 * header_bytes;
        const bool are_digits = decode_hex({digits, 2 * header_bytes}, header.data()) &&
                                decode_hex({data_digits, 2 * data_bytes}, bytes) &&
                                decode_hex({data_digits + 2 * data_bytes, 2}, &checksum);
        const std::string_view fields(header.data(), header_bytes);
        const unsigned sum =
            sum_of_bytes(fields) + sum_of_bytes({bytes, data_bytes}) + static_cast<unsigned char>(checksum);
        return are_digits && (sum & 0xFFU) == style.sum && goes_on(fields);
    }

    /// True for the length of the others, and the address after theirs.
    [[nodiscard]] bool goes_on(std::string_view header) noexcept {
        std::uint64_t address = 0;
        for (const char byte : header.substr(1, style.address_bytes)) {
            address = address << bits_per_byte | static_cast<unsigned char>(byte);
        }
        const std::uint64_t end = std::uint64_t{1} << (bits_per_byte * style.address_bytes);
        if (static_cast<unsigned char>(header.front()) != data_bytes + style.counted ||
            !header.ends_with(style.type) || address + data_bytes > end) {
            return false;
        }
        if (run.records == 0) {
            run.address = address;
        }
        return address == run.address + run.bytes;
    }

    std::string_view lines;
    const record_style& style;
    char* data;
    std::size_t header_bytes; ///< count, address and type
    std::size_t data_bytes = 0;
    std::size_t length = 0; ///< of a record, without its line end
    record_run run;
};

} // namespace

record_run take_record_run(std::string_view lines, const record_style& style, char* data) noexcept {
    return record_run_reader(lines, style, data).read();
}

} // namespace kvrimage
