#pragma once

#include "kvrimage/formats/mif/mif_cause.h"
#include "kvrimage/formats/mif/mif_parser.h"

namespace kvrimage {

/// Combines all findings of one kind into one diagnostic. Unknown settings are reported one by one.
class mif_findings {
public:
    mif_findings(std::string_view contents, bool wants_repairs)
        : text(contents),
          all_repairs(wants_repairs) {}

    void add(const mif_finding& found, diagnostic_list& list);
    void forget(mif_syntax what) { causes[static_cast<std::size_t>(what)] = {}; }
    void report(diagnostic_list& list);

private:
    struct cause {
        mif_cause found;
        std::string text;    ///< at the first place
        std::string instead; ///< for the first place
    };

    std::string_view text;
    bool all_repairs;
    std::array<cause, mif_syntax_count> causes;
};

} // namespace kvrimage
