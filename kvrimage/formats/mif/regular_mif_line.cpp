#include "kvrimage/formats/mif/regular_mif_line.h"

#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>
#include <limits>

namespace kvrimage {

namespace {

constexpr std::array<bool, 256> is_value_digit = [] {
    std::array<bool, 256> table{};
    for (const char c : std::string_view("0123456789abcdefABCDEFxX")) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

/// Goes over one line, character by character.
class line_scan {
public:
    line_scan(std::string_view contents, std::size_t offset) : text(contents), at(offset) {}

    [[nodiscard]] std::size_t place() const noexcept { return at; }
    void skip_blanks() noexcept {
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) {
            ++at;
        }
    }
    bool take(char expected) noexcept {
        const bool is_there = at < text.size() && text[at] == expected;
        at += is_there ? 1 : 0;
        return is_there;
    }
    /// The number; nothing without a digit, and from 2^32 on.
    std::optional<std::uint64_t> parse_number(unsigned base) noexcept {
        const std::size_t begin = at;
        std::uint64_t number = 0;
        for (; at < text.size(); ++at) {
            const unsigned digit = kvr::digit_value(text[at]);
            if (digit >= base) {
                break;
            }
            number = number * base + digit;
            if (number > std::numeric_limits<std::uint32_t>::max()) {
                return std::nullopt;
            }
        }
        return at != begin ? std::optional(number) : std::nullopt;
    }
    /// A value, and the blanks that end it unless a ";" does.
    bool parse_value(regular_mif_line& line) noexcept {
        take('-');
        const std::size_t begin = at;
        while (at < text.size() && is_value_digit[static_cast<unsigned char>(text[at])]) {
            ++at;
        }
        const std::size_t end = at;
        skip_blanks();
        if (end == begin || at == text.size() || (at == end && text[at] != ';')) {
            return false;
        }
        line.values_end = end;
        ++line.value_count;
        return true;
    }
    /// Goes to the next line. False when something but a comment precedes it.
    bool parse_line_end() noexcept {
        skip_blanks();
        if (text.substr(at, 2) == "--") {
            at = std::min(text.find('\n', at), text.size());
            return take('\n');
        }
        take('\r');
        return take('\n');
    }

private:
    std::string_view text;
    std::size_t at;
};

/// Values up to the ";".
bool parse_regular_values(line_scan& scan, regular_mif_line& line) noexcept {
    scan.skip_blanks();
    line.values_begin = scan.place();
    do {
        if (!scan.parse_value(line)) {
            return false;
        }
    } while (!scan.take(';'));
    return true;
}

} // namespace

std::optional<regular_mif_line> regular_mif_line_at(std::string_view contents, std::size_t offset,
                                                    unsigned address_base) noexcept {
    line_scan scan(contents, offset);
    regular_mif_line line{};
    scan.skip_blanks();
    line.address_begin = scan.place();
    const auto address = scan.parse_number(address_base);
    if (!address) {
        return std::nullopt;
    }
    line.address = *address;
    line.address_end = scan.place();
    scan.skip_blanks();
    if (!scan.take(':') || !parse_regular_values(scan, line) || !scan.parse_line_end()) {
        return std::nullopt;
    }
    line.next_line = scan.place();
    return line;
}

} // namespace kvrimage
