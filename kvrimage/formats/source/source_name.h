#pragma once

#include "kvrimage/formats/format.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

// What the array, module or package of a memory is called in source code.

/// The rules of a language.
struct naming {
    std::string_view language;         ///< "VHDL"
    std::string_view reserved;         ///< its reserved words, as in reserved_words.h
    std::string_view taken;            ///< names, in either case, that the file needs for something else
    std::string_view library = "";     ///< names of its standard library that an array cannot have
    bool reserves_underscores = false; ///< names that begin with '_', or have two of them side by side
    bool ignores_case = false;         ///< of letters
    bool parts_with_words = false;     ///< '_' stands between letters and digits only, one at a time
};

/// The choice --name.
inline constexpr std::array<choice_kind, 1> source_write_choices = {{
    {"name", "NAME", "", "name of the array or module (default: by the name of OUT)"},
}};

/// The name that @p options choose; without one @p usual, or where that is "" the file's name, changed to a
/// name that is possible.
[[nodiscard]] std::string source_name(const write_options& options, const naming& rules,
                                      std::string_view usual = "");

/// Adds a diagnostic to @p found when the name that @p options choose is not possible.
void refuse_source_name(const write_options& options, const naming& rules, std::vector<diagnostic>& found);

} // namespace kvrimage
