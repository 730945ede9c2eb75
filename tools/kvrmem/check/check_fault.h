#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

enum class severity : std::uint8_t {
    error,  ///< the library refuses the file, or a limit that the person gave does not hold
    warning ///< the library reads it, and it is hardly meant so
};

/// A change to a file that mends a fault for certain.
struct repair {
    std::size_t offset;   ///< byte of the file
    std::size_t removed;  ///< bytes that go
    std::string inserted; ///< what comes in their place
    std::string what;     ///< "checksum E9 is now E8"
};

/// Something wrong in a file that is checked.
struct check_fault {
    severity level = severity::error;
    const char* code = "";    ///< a name that stays the same from version to version
    std::uint64_t line = 0;   ///< from 1; 0 when it is about the whole file
    std::uint64_t column = 0; ///< byte in that line, from 1; 0 when it has no place in a line
    std::uint64_t length = 0; ///< bytes at fault, from the column on
    std::string message;
    std::string hint; ///< the likely repair, or what the library makes of it; "" when there is none
    std::optional<repair> mended;
};

/// The faults of one file. It keeps a limited number of each severity and counts the rest, so that a file of
/// nothing but faults costs no memory for them.
class fault_list {
public:
    enum class keeping { all, mendable };

    /// @param which the others are counted only.
    explicit fault_list(std::size_t kept_of_a_severity, keeping which = keeping::all)
        : limit(kept_of_a_severity),
          kept_kind(which) {}

    void add(check_fault fault);

    /// Takes back the warnings with @p code, those that were not kept too.
    void withdraw_warnings(const char* code);

    /// All faults of that severity, kept or not.
    [[nodiscard]] std::uint64_t count(severity level) const noexcept { return counts[index(level)]; }
    /// All faults of that severity that were not kept.
    [[nodiscard]] std::uint64_t dropped(severity level) const noexcept;
    /// True when a fault of that severity would still be kept.
    [[nodiscard]] bool has_room(severity level) const noexcept { return kept[index(level)].size() < limit; }

    /// What was kept, in the order of the file; faults of the whole file come last.
    [[nodiscard]] std::vector<check_fault> sorted() const;

private:
    static std::size_t index(severity level) noexcept { return static_cast<std::size_t>(level); }

    std::size_t limit;
    keeping kept_kind;
    std::array<std::vector<check_fault>, 2> kept;
    std::array<std::uint64_t, 2> counts{};
    std::vector<std::pair<const char*, std::uint64_t>> dropped_warnings; ///< by code
};

} // namespace kvrmem
