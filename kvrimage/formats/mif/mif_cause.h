#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/named_text.h"
#include "kvrimage/diagnostics/places.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kvrimage {

/// The places with the same fault and the edits that repair them. Without `wants_repairs` only the edits of
/// the kept places are stored.
class mif_cause {
public:
    /// Adds a place. Returns true for the first one.
    bool add(const span& where, std::optional<text_edit> repair, bool wants_repairs);

    [[nodiscard]] bool empty() const noexcept { return all.empty(); }
    [[nodiscard]] const places& where() const noexcept { return all; }
    /// Adds @p made, the diagnostic of these places, to @p list. Its edits get the description @p repair.
    void report(diagnostic made, std::string_view repair, diagnostic_list& list);

private:
    places all;
    std::vector<text_edit> edits;
};

} // namespace kvrimage
