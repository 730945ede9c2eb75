#include "kvr/util/letter_case.h"

#include <algorithm>

namespace kvr {

namespace {

constexpr char lower_case_of(char character) {
    return static_cast<char>(fold_case(character));
}

constexpr char upper_case_of(char character) {
    const bool lower = character >= 'a' && character <= 'z';
    return static_cast<char>(lower ? character - 'a' + 'A' : character);
}

template <typename Convert>
std::string converted(std::string_view text, Convert convert) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), convert);
    return result;
}

} // namespace

bool equal_ignoring_case(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return fold_case(one) == fold_case(other); });
}

std::string to_lower_case(std::string_view text) {
    return converted(text, lower_case_of);
}

std::string to_upper_case(std::string_view text) {
    return converted(text, upper_case_of);
}

} // namespace kvr
