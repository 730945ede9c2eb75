#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/named_text.h"
#include "kvrimage/diagnostics/places.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kvrimage {

/// The places of one cause, and the edits that repair them. Without `wants_repairs` the edits are those of
/// the places that are kept.
class mif_cause {
public:
    /// True for the first place.
    bool add(const span& where, std::optional<text_edit> repair, bool wants_repairs);

    [[nodiscard]] bool empty() const noexcept { return all.empty(); }
    [[nodiscard]] const places& where() const noexcept { return all; }
    /// Adds @p made, the diagnostic of these places, to @p list, with the edits, which are @p repair.
    void report(diagnostic made, std::string_view repair, diagnostic_list& list);

private:
    places all;
    std::vector<text_edit> edits;
};

} // namespace kvrimage
