#pragma once

#include "kvrimage/diagnostics/diagnostic.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Collects the diagnostics of a file while it is read. It keeps a limited number of each class and counts
/// the rest, so memory stays bounded for files with many faults.
class diagnostic_list {
public:
    /// @param kept maximum number to keep of each class
    /// @param with_all_repairs keeps diagnostics with a repair beyond that (read_options::wants_repairs)
    explicit diagnostic_list(std::size_t kept = 100, bool with_all_repairs = false)
        : limit(kept),
          keeps_repairs(with_all_repairs) {}

    void add(diagnostic found);

    [[nodiscard]] bool has_broken() const noexcept { return count(diagnostic_class::broken) != 0; }
    /// Returns the number of diagnostics of class @p level, kept or not.
    [[nodiscard]] std::uint64_t count(diagnostic_class level) const noexcept {
        return counts[static_cast<std::size_t>(level)];
    }
    [[nodiscard]] std::uint64_t left_out() const noexcept;
    /// Returns whether another diagnostic of class @p level may be kept; always true if all repairs are kept.
    [[nodiscard]] bool has_room(diagnostic_class level) const noexcept;

    /// Returns the kept diagnostics with lines and columns, sorted by place, and removes them; the counts
    /// remain. Line ends in repairs are changed to those of the file's first line.
    [[nodiscard]] std::vector<diagnostic> finish(std::string_view contents);

private:
    std::size_t limit;
    bool keeps_repairs;
    std::vector<diagnostic> kept_ones;
    std::array<std::uint64_t, 3> counts{};
    std::array<std::size_t, 3> kept_counts{};
};

/// Sorts @p found in file order. Diagnostics of the whole file come last.
void sort_by_place(std::vector<diagnostic>& found);

} // namespace kvrimage
