#pragma once

#include "kvrimage/picture/picture.h"

#include <functional>
#include <string>
#include <string_view>

namespace kvrimage::characters {

/// Builds lines. Adjacent characters of one style are colored together.
class styled_lines {
public:
    using painter = std::function<std::string(character_style, std::string_view)>;

    /// @param colors must outlive this object; empty: no colors
    explicit styled_lines(const painter& colors) : paint(colors) {}
    void add(character_style style, std::string_view text);
    /// Ends the line and removes trailing blanks.
    void end_line();
    /// Adds a line of one style.
    void add_line(character_style style, std::string_view text);
    [[nodiscard]] std::string take() { return std::move(lines); }

private:
    void flush();

    const painter& paint;
    character_style current = character_style::plain;
    std::string pending; ///< in the current style
    std::string line;
    std::string lines;
};

} // namespace kvrimage::characters
