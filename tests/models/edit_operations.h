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
/// a model: the previous words with @p assignments applied, and the same comments. The same edit changes
/// nothing if repeated, and the inverse edit restores the words.
/// @return the edited contents; no value if the edit is refused
/// @throws std::logic_error that describes the difference
std::optional<std::string> compare_edit(std::string_view contents, const kvrimage::read_options& options,
                                        std::span<const kvrimage::assignment> assignments);

/// Lays @p contents out and compares the words and comments of the layout with the original ones. A layout of
/// the layout changes nothing.
/// @return the layout; no value if the file is broken or its format has no layout rules
/// @throws std::logic_error that describes the difference
std::optional<std::string> compare_layout(std::string_view contents, const kvrimage::read_options& options);

/// Random assignments of single words, ranges and cycles to addresses of @p image, and to some beyond its
/// end.
std::vector<kvrimage::assignment> any_assignments(choices& chosen, const kvrimage::memory_image& image);

/// Edits a file of a random format repeatedly and sometimes lays it out.
class edit_operations {
public:
    /// @p source must outlive it.
    explicit edit_operations(choices& source);

    /// @throws std::logic_error that describes the difference
    void step();
    /// Does nothing: step() has compared everything.
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
