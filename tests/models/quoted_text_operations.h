#pragma once

#include "tests/models/choices.h"

#include <string_view>

namespace kvr_test {

/// Compares the result of parse_quoted_text() for @p text, which begins with a quote, with a second parser.
/// If the text is valid, writes its bytes with escapes and parses them again.
/// @throws std::logic_error that describes the difference
void compare_quoted_text(std::string_view text);

/// Generates valid and invalid quoted texts.
class quoted_text_operations {
public:
    /// @p source must outlive it.
    explicit quoted_text_operations(choices& source) : chosen(source) {}

    /// @throws std::logic_error that describes the difference
    void step();
    /// Does nothing: step() has compared everything.
    static void compare_all() {}

private:
    choices& chosen;
};

} // namespace kvr_test
