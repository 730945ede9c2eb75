#include "kvr/util/letter_case.h"

#include <algorithm>

namespace kvr {

bool equal_ignoring_case(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return fold_case(one) == fold_case(other); });
}

void to_upper(std::string& text, std::size_t from) noexcept {
    for (std::size_t at = from; at < text.size(); ++at) {
        text[at] = upper_case_of(text[at]);
    }
}

std::string to_lower_case(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower_case_of);
    return result;
}

std::string to_upper_case(std::string_view text) {
    std::string result(text);
    to_upper(result);
    return result;
}

} // namespace kvr
