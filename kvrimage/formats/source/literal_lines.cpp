#include "kvrimage/formats/source/literal_lines.h"

#include "kvrimage/image/word_search.h"

namespace kvrimage {

namespace {

constexpr std::size_t longest_literal_line = 79;
constexpr std::string_view between_literals = ", ";
/// Followed by as many blanks as lines are indented.
constexpr std::string_view between_literal_lines = ",\n        ";
constexpr std::size_t end_of_literal_line = 2; ///< characters

} // namespace

literal_lines::literal_lines(std::size_t characters, std::size_t blanks)
    : literal_size(characters),
      indent(blanks) {
    const auto length_of = [this](std::uint64_t words) {
        return indent + words * (literal_size + between_literals.size()) - 1; // including the "," at the end
    };
    while (length_of(2 * words_per_line) <= longest_literal_line) {
        words_per_line *= 2;
    }
}

std::string_view literal_lines::before(std::uint64_t index) const {
    if (index == 0) {
        return between_literal_lines.substr(1, 1 + indent);
    }
    return index % words_per_line == 0 ? between_literal_lines.substr(0, end_of_literal_line + indent)
                                       : between_literals;
}

std::uint64_t literal_lines::size(std::uint64_t depth) const {
    const std::uint64_t lines = (depth + words_per_line - 1) / words_per_line;
    return lines * (end_of_literal_line + indent) + (depth - lines) * between_literals.size() +
           depth * literal_size;
}

bool has_dont_care_bits(const memory_image& image) {
    return find_dont_care_word(image.words()).has_value();
}

} // namespace kvrimage
