#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

/// What does not hold of what is promised of every file, in words; empty when all of it holds of @p contents,
/// read as `options.as`:
/// - parse() and check() report the same broken and suspect diagnostics: the same places, the same texts;
/// - there is an image exactly when none is broken;
/// - a file without broken and consumer diagnostics is read by the library kvr to the same words at the same
/// addresses, and
///   one with consumer diagnostics, and none broken, is refused by it or read otherwise;
/// - every place lies in the file, and line and column belong to the offset;
/// - repairs do what they say: none of what is repaired is left, and what was not broken reads as the same
/// words;
/// - its canonical layout has the same words and comments, no fault of its own, and is its own layout;
/// - what is written in any format that can hold the image reads back as the same words.
[[nodiscard]] std::vector<std::string> broken_promises(std::string_view contents,
                                                       const kvrimage::read_options& options);

/// All formats of the library, without those that other tests add.
[[nodiscard]] const std::vector<const kvrimage::format*>& formats_of_the_library();

} // namespace kvrimage_tests
