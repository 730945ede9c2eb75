#pragma once

#include "tests/models/choices.h"

#include <string_view>

namespace kvr_test {

/// Compares what parse_quoted_text() makes of @p text, which begins with a quote, with a second parser; and
/// the bytes of a sound one with what comes back when they are written with escapes.
/// @throws std::logic_error that says what differs
void compare_quoted_text(std::string_view text);

/// Makes texts between quotes, sound ones and others.
class quoted_text_operations {
public:
    /// @p source must outlive it.
    explicit quoted_text_operations(choices& source) : chosen(source) {}

    /// @throws std::logic_error that says what differs
    void step();
    /// All has been compared already.
    static void compare_all() {}

private:
    choices& chosen;
};

} // namespace kvr_test
