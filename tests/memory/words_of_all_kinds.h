#pragma once

#include "tests/memory/random_numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kvr_test {

/// The words of a memory in stretches of all kinds, from a fixed seed: of one length, of many lengths,
/// repeated, with characters that are not digits, and empty.
inline std::vector<std::string> words_of_all_kinds(random_numbers& numbers, std::size_t count,
                                                   std::size_t length) {
    const auto digits = [&numbers](std::size_t size) {
        std::string text;
        while (text.size() < size) {
            text += "0123456789ABCDEFabcdef"[numbers() % 22];
        }
        return text;
    };
    std::vector<std::string> words;
    while (words.size() < count) {
        const unsigned kind = numbers() % 8;
        const std::size_t end = std::min(count, words.size() + 1 + numbers() % 3000);
        std::string word = digits(length);
        while (words.size() < end) {
            if (kind == 0 || (kind > 3 && numbers() % 20 == 0)) {
                words.push_back(word);
                continue;
            }
            word = digits(kind == 1 ? numbers() % 12 : length);
            if (kind > 5 && !word.empty() && numbers() % 300 == 0) {
                word[numbers() % word.size()] = "XxG+ \xFF"[numbers() % 6];
            }
            words.push_back(kind > 6 && numbers() % 100 == 0 ? std::string() : word);
        }
    }
    return words;
}

} // namespace kvr_test
