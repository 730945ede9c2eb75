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

/// Settings of a client for reading files and showing words.
struct file_settings {
    kvrimage::check_options check;
    std::optional<word_radix> shown_radix; ///< in addition to the usual radixes
};

/// The settings for all files and for files with certain names.
struct settings {
    file_settings of_all;
    /// By name pattern, longest first. Each combines the settings for all files with those for the pattern.
    std::vector<std::pair<std::string, file_settings>> of_files;
    json files; ///< the latest settings by pattern

    /// Returns the settings for the file @p name, without its folder: those of the longest matching pattern,
    /// else of_all.
    [[nodiscard]] const file_settings& of(std::string_view name) const;
};

/// Returns whether @p name matches @p pattern, in which "*" stands for any characters and "?" for one.
[[nodiscard]] bool matches_pattern(std::string_view name, std::string_view pattern);

/// Returns @p before changed by the object @p given: {"width": 32, "address-unit": "byte", "files": {"*.hex":
/// {...}}}. null restores the default. Invalid settings are ignored; each adds a sentence to @p faults.
[[nodiscard]] settings changed_settings(settings before, const json& given, std::vector<std::string>& faults);

} // namespace kvrmem::lsp
