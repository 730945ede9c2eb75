#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/memory_image.h"
#include "tests/models/choices.h"

#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Edits @p contents, which are read with @p options, and compares the words and comments of the result with
/// those that a model says: the words before with @p assignments made in them, and the same comments. The
/// same edit again changes nothing, and the reverse one gives the words back.
/// @return the edited contents; nothing when the edit is refused
/// @throws std::logic_error that says what differs
std::optional<std::string> compare_edit(std::string_view contents, const kvrimage::read_options& options,
                                        std::span<const kvrimage::assignment> assignments);

/// Lays @p contents out and compares the words and comments of the layout with theirs; laying out the layout
/// changes nothing.
/// @return the layout; nothing when there is none, since the file is broken or its format has no rules
/// @throws std::logic_error that says what differs
std::optional<std::string> compare_layout(std::string_view contents, const kvrimage::read_options& options);

/// Random assignments to addresses of @p image, some beyond it, and to single words, ranges and cycles.
std::vector<kvrimage::assignment> any_assignments(choices& chosen, const kvrimage::memory_image& image);

/// Makes edits of a file of a random format, one after another, and lays it out now and then.
class edit_operations {
public:
    /// @p source must outlive it.
    explicit edit_operations(choices& source);

    /// @throws std::logic_error that says what differs
    void step();
    /// All has been compared already.
    static void compare_all() {}

private:
    void read_from_base();
    void add_comment();

    choices& chosen;
    std::mt19937 random;
    kvrimage::read_options options;
    std::string contents;
};

} // namespace kvr_test
