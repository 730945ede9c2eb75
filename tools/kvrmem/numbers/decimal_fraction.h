#pragma once

#include <string>

namespace kvrmem {

// Decimal fractions of any length as texts: "-12", "3.5", "0.015625". Both operations are exact.

/// Divides @p text by 2.
void halve(std::string& text);

/// Multiplies @p text by 2. Trailing zeros of the fraction are removed, and the point if no fraction remains.
void double_it(std::string& text);

} // namespace kvrmem
