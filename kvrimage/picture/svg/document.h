#pragma once

#include "kvrimage/picture/svg/layout.h"

#include <fmt/format.h>

#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace kvrimage::svg {

struct legend_entry {
    std::string_view style;
    std::string_view text;
};

/// Builds an SVG document. Styles are class names of its style sheet, which has light and dark colors. Texts
/// are escaped here.
class document {
public:
    void add_box(std::string_view style, const box& at);
    void add_text(std::string_view style, double x, double y, std::string_view words);
    /// Adds a line of text with a font size of @p size pixels, or less if it would be wider than @p room.
    void add_fitted_text(std::string_view style, double x, double y, std::string_view words, double size,
                         double room);
    /// Adds a text that reads upward, centered at @p x and @p y.
    void add_upright_text(double x, double y, std::string_view words);
    /// Adds a path with @p path as its "d" attribute, or nothing if it is empty.
    void add_path(std::string_view style, std::string_view path);
    /// Adds the image with the URL @p source. Its pixels keep sharp edges.
    void add_pixels(const box& at, std::string_view source);
    /// Until end_cells(), a unit is a cell, and y is the middle of a row.
    void begin_cells(std::string_view style, const box& at, double cell_width, double cell_height);
    void end_cells();
    /// Adds @p entries side by side, in as many lines as needed. Returns the top of the line after them.
    double add_legend(std::span<const legend_entry> entries, double top);
    /// Returns the document with @p page as its visible area. May be called once only, as the last call.
    [[nodiscard]] std::string take(const box& page, std::string_view title);

private:
    template <class... Values>
    void add(fmt::format_string<Values...> form, Values&&... values) {
        fmt::format_to(std::back_inserter(text), form, std::forward<Values>(values)...);
    }

    std::string text;
};

} // namespace kvrimage::svg
