#pragma once

#include "kvrimage/diagnostics/diagnostic.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What is found in a file while it is read. Keeps a limited number of each class and counts the rest, so
/// that a file of nothing but faults costs no memory for them.
class diagnostic_list {
public:
    /// @param kept of each class
    /// @param with_all_repairs each one with a repair is kept beyond that (read_options::wants_repairs)
    explicit diagnostic_list(std::size_t kept = 100, bool with_all_repairs = false)
        : limit(kept),
          keeps_repairs(with_all_repairs) {}

    void add(diagnostic found);

    [[nodiscard]] bool has_broken() const noexcept { return count(diagnostic_class::broken) != 0; }
    /// All of that class, kept or not.
    [[nodiscard]] std::uint64_t count(diagnostic_class level) const noexcept {
        return counts[static_cast<std::size_t>(level)];
    }
    [[nodiscard]] std::uint64_t left_out() const noexcept;
    /// True when one of that class may still be kept; always so where all repairs are.
    [[nodiscard]] bool has_room(diagnostic_class level) const noexcept;

    /// Those kept, in the order of the file, with lines and columns; those of the whole file come last.
    /// Repairs end lines as the first line of the file does. The list is empty then but for its counts.
    [[nodiscard]] std::vector<diagnostic> finish(std::string_view contents);

private:
    std::size_t limit;
    bool keeps_repairs;
    std::vector<diagnostic> kept_ones;
    std::array<std::uint64_t, 3> counts{};
    std::array<std::size_t, 3> kept_counts{};
};

/// Puts @p found in the order of the file, those of the whole file last.
void sort_by_place(std::vector<diagnostic>& found);

} // namespace kvrimage
