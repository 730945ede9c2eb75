#pragma once

#include "tests/memory/number_text.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace kvr_test {

/// Digits of @p value in base 16, at least @p width of them.
inline std::string hex_digits(std::uint64_t value, std::size_t width, bool upper = true) {
    return number_text(value, 16, width, upper);
}

/// A record line with its colon and a valid checksum, without a line end.
/// @param data pairs of hexadecimal digits.
inline std::string hex_record_line(unsigned type, unsigned address, const std::string& data,
                                   bool upper = true) {
    std::string line = hex_digits(data.size() / 2, 2, upper) + hex_digits(address, 4, upper) +
                       hex_digits(type, 2, upper) + data;
    unsigned sum = 0;
    for (std::size_t i = 0; i < line.size(); i += 2) {
        sum += static_cast<unsigned>(std::stoul(line.substr(i, 2), nullptr, 16));
    }
    return ":" + line + hex_digits((256 - sum % 256) % 256, 2, upper);
}

/// Random record lines, valid and broken, from a fixed seed.
class random_record_lines {
public:
    explicit random_record_lines(std::uint32_t start) : numbers(start) {}

    std::size_t below(std::size_t limit) { return numbers() % limit; }

    std::string digits(std::size_t count) {
        std::string text;
        while (text.size() < count) {
            text += "0123456789ABCDEFabcdef"[below(22)];
        }
        return text;
    }

    std::string data_record() { return record(0); }

    /// A valid record of any known type except the end record, which would hide the following records.
    std::string good() {
        static constexpr unsigned types[] = {2, 3, 4, 5};
        return record(below(4) == 0 ? types[below(4)] : 0);
    }

    /// A record with up to three changes, some with characters that confuse number readers.
    std::string broken() {
        using namespace std::string_view_literals;
        constexpr std::string_view odd_characters = "0123456789ABCDEFabcdef:xX+-gG \t\r\v\f\0\x7F\x80\xFF"sv;
        std::string line = good();
        for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
            const std::size_t place = below(line.size() + 1);
            const std::string character(1, odd_characters[below(odd_characters.size())]);
            switch (below(4)) {
            case 0:
                line.insert(place, character);
                break;
            case 1:
                line.erase(place, 1);
                break;
            default:
                line.replace(place, 1, character);
            }
        }
        return line;
    }

private:
    std::string record(unsigned type) {
        // Separate statements: compilers evaluate arguments in different orders.
        const std::size_t bytes = below(8) == 0 ? below(256) : below(9);
        const auto address = static_cast<unsigned>(below(65536));
        const std::string data = digits(2 * bytes);
        return hex_record_line(type, address, data, below(2) == 0);
    }

    std::mt19937 numbers;
};

} // namespace kvr_test
