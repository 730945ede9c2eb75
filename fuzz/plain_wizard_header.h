#pragma once

#include <string>
#include <string_view>

namespace kvr_fuzz {

/// A second reader of the first lines of a design file.
struct wizard_header {
    bool generated = false;
    std::string name;
    std::string version;
    bool deferred = false;

    friend bool operator==(const wizard_header&, const wizard_header&) = default;
};

[[nodiscard]] wizard_header read_wizard_header_plainly(std::string_view file);

/// A second implementation of legal names.
[[nodiscard]] std::string legal_name_plainly(std::string_view name);

} // namespace kvr_fuzz
