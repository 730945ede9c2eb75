#pragma once

#include "kvrimage/edit/edit_pieces.h"
#include "tests/models/choices.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Makes edit pieces from random assignments, removes some of them, and compares them with a model of one
/// word per address.
class edit_pieces_operations {
public:
    /// @p source must outlive it.
    explicit edit_pieces_operations(choices& source);

    /// Removes pieces, or makes new ones if none are left.
    /// @throws std::logic_error that describes the difference and names the step.
    void step();

    /// @throws std::logic_error
    void compare_all() const;

private:
    void start();
    void assign_some();
    void take();
    void touch() const;
    void hand_over_places();

    [[nodiscard]] kvrimage::address_range any_range() const;
    [[nodiscard]] std::uint64_t index_of(std::uint64_t address) const noexcept { return address - base; }
    /// Compares a piece within @p range that was handed out with the model, and removes it from the model.
    void clear_in_model(const kvrimage::edit_piece& piece, const kvrimage::address_range& range);
    void expect(bool holds, std::string_view what) const;

    choices& chosen;
    std::uint64_t base = 0; ///< the first address of the model
    std::vector<kvrimage::assignment> assignments;
    kvrimage::edit_pieces pieces;
    std::vector<std::optional<kvrimage::word>> model;
    std::uint64_t steps = 0;
};

} // namespace kvr_test
