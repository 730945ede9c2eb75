#pragma once

#include "kvrimage/formats/format.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

// The name of the array, module or package of a memory in source code.

/// The naming rules of a language.
struct naming {
    std::string_view language;     ///< "VHDL"
    std::string_view reserved;     ///< reserved words, as in reserved_words.h
    std::string_view taken;        ///< names that the file uses for other purposes; letter case is ignored
    std::string_view library = ""; ///< names of the standard library that an array must not have
    bool reserves_underscores = false; ///< rejects names that begin with '_' or contain "__"
    bool ignores_case = false;         ///< letter case is not significant
    bool parts_with_words = false;     ///< '_' is allowed only once at a time, between letters and digits
};

/// The option --name.
inline constexpr std::array<choice_kind, 1> source_write_choices = {{
    {"name", "NAME", "", "name of the array or module (default: from the name of OUT)"},
}};

/// Returns the name in @p options, else @p usual, else the file's name converted to a valid name.
[[nodiscard]] std::string source_name(const write_options& options, const naming& rules,
                                      std::string_view usual = "");

/// Adds a diagnostic to @p found if the name in @p options is invalid.
void refuse_source_name(const write_options& options, const naming& rules, std::vector<diagnostic>& found);

} // namespace kvrimage
