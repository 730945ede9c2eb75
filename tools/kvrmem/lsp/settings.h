#pragma once

#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/lsp/json_rpc.h"
#include "tools/kvrmem/numbers/word_radix.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem::lsp {

/// What the client says of files beyond their contents, and how words are to be shown.
struct file_settings {
    kvrimage::check_options check;
    std::optional<word_radix> shown_radix; ///< in addition to the usual ones
};

/// The settings of all files, and those of files with certain names.
struct settings {
    file_settings of_all;
    /// By patterns of names, the longest first: those of all files with what is said of these.
    std::vector<std::pair<std::string, file_settings>> of_files;
    json files; ///< what was said of them last

    /// Those of the file @p name, without its folder: those of the longest pattern that it has, or of_all.
    [[nodiscard]] const file_settings& of(std::string_view name) const;
};

/// True when @p name is @p pattern, in which "*" stands for any characters, and "?" for one.
[[nodiscard]] bool matches_pattern(std::string_view name, std::string_view pattern);

/// @p before with what the object @p given says: {"width": 32, "address-unit": "byte", "files": {"*.hex":
/// {...}}}. A null takes a setting back. What is wrong with it is left out, and a sentence in @p faults.
[[nodiscard]] settings changed_settings(settings before, const json& given, std::vector<std::string>& faults);

} // namespace kvrmem::lsp
