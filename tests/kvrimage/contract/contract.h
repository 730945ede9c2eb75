#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

/// Checks the guarantees for every file with @p contents, read as `options.as`. Returns a description of each
/// violation:
/// - parse() and check() report the same broken and suspect diagnostics, with the same places and texts;
/// - there is an image exactly if no diagnostic is broken;
/// - if a file has no broken and no consumer diagnostics, the library kvr reads the same words at the same
///   addresses; if it has consumer diagnostics, but no broken ones, kvr refuses it or reads it differently;
/// - every place is within the file, and line and column match the offset;
/// - a repair removes the repaired diagnostics, and a file that was not broken still has the same words;
/// - the canonical layout has the same words and comments and no faults, and laying it out changes nothing;
/// - written in any format that can hold the image, it reads back as the same words.
[[nodiscard]] std::vector<std::string> broken_promises(std::string_view contents,
                                                       const kvrimage::read_options& options);

/// All formats of the library, without formats that other tests add.
[[nodiscard]] const std::vector<const kvrimage::format*>& formats_of_the_library();

} // namespace kvrimage_tests
