#pragma once

#include <string>

namespace kvrmem {

// Decimal fractions of any length as texts: "-12", "3.5", "0.015625". Both operations are exact.

/// Divides @p text by 2.
void halve(std::string& text);

/// Multiplies @p text by 2. Zeros that end the fraction are dropped, and the point with the last of them.
void double_it(std::string& text);

} // namespace kvrmem
