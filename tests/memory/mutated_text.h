#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Makes small random changes to regular texts: a fast path must detect these irregularities.
class text_mutator {
public:
    /// @param alphabet the characters that are inserted.
    text_mutator(std::mt19937& random_numbers, std::string_view alphabet)
        : random(random_numbers),
          characters(alphabet) {}

    /// Mutates @p text at @p count places.
    void mutate(std::string& text, std::size_t count) {
        for (std::size_t i = 0; i < count && !text.empty(); ++i) {
            const std::size_t at = below(text.size());
            switch (below(6)) {
            case 0:
            case 1:
                text[at] = character();
                break;
            case 2:
                text.insert(at, 1, character());
                break;
            case 3:
                text.erase(at, 1 + below(3));
                break;
            case 4:
                repeat_line(text, at);
                break;
            default:
                text[at] = text[below(text.size())];
                break;
            }
        }
    }

    [[nodiscard]] std::size_t below(std::size_t end) { return random() % end; }

private:
    char character() { return characters[below(characters.size())]; }

    static void repeat_line(std::string& text, std::size_t at) {
        const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
        const std::size_t end = text.find('\n', at);
        if (end != text.npos) {
            text.insert(begin, text.substr(begin, end + 1 - begin));
        }
    }

    std::mt19937& random;
    std::string_view characters;
};

/// The characters of @p text, without any memory after them: a sanitizer detects a read past the end.
inline std::vector<char> exactly(std::string_view text) {
    return {text.begin(), text.end()};
}

} // namespace kvr_test
