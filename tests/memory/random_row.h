#pragma once

#include "kvr/memory/store/word_row.h"
#include "tests/memory/random_numbers.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr_test {

/// Contiguous words of one length, as a page stores them, from a fixed seed. Some words equal the previous
/// one; @p spoilt of 1000 characters are not digits.
class random_row {
public:
    random_row(random_numbers& numbers, std::uint32_t length, std::uint32_t count, unsigned spoilt = 0) {
        using namespace std::string_view_literals;
        constexpr std::string_view digits = "0123456789ABCDEFabcdef"sv;
        constexpr std::string_view others = "xXgG: +-;\0\n\x7F\x80\xFF"sv;
        row.length = length;
        row.count = count;
        for (std::uint32_t i = 0; i < count; ++i) {
            if (i > 0 && numbers() % 8 == 0) {
                texts += texts.substr(texts.size() - length);
                continue;
            }
            for (std::uint32_t j = 0; j < length; ++j) {
                const bool is_digit = numbers() % 1000 >= spoilt;
                texts += is_digit ? digits[numbers() % digits.size()] : others[numbers() % others.size()];
            }
        }
        row.texts = texts.data();
    }
    random_row(const random_row&) = delete;
    random_row& operator=(const random_row&) = delete;

    [[nodiscard]] const kvr::word_row& words() const noexcept { return row; }

private:
    std::string texts;
    kvr::word_row row;
};

} // namespace kvr_test
