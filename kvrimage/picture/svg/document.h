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

/// An SVG document under construction. Styles are the names of classes in its style sheet, which has light
/// colours and, for readers who prefer them, dark ones. Texts are escaped here.
class document {
public:
    void add_box(std::string_view style, const box& at);
    void add_text(std::string_view style, double x, double y, std::string_view words);
    /// A line of text in letters of @p size pixels, or of less where it were wider than @p room.
    void add_fitted_text(std::string_view style, double x, double y, std::string_view words, double size,
                         double room);
    /// Reads upwards; its middle is at @p x and @p y.
    void add_upright_text(double x, double y, std::string_view words);
    /// @p path as the "d" of a path; nothing where it is empty.
    void add_path(std::string_view style, std::string_view path);
    /// The picture that the URL @p source is, its pixels with sharp borders.
    void add_pixels(const box& at, std::string_view source);
    /// Until end_cells(), a unit is a cell, and y is the middle of a row.
    void begin_cells(std::string_view style, const box& at, double cell_width, double cell_height);
    void end_cells();
    /// @p entries side by side, in as many lines as they need. Returns the top of a line after them.
    double add_legend(std::span<const legend_entry> entries, double top);
    /// The whole document, of which @p page is seen; nothing may be added afterwards.
    [[nodiscard]] std::string take(const box& page, std::string_view title);

private:
    template <class... Values>
    void add(fmt::format_string<Values...> form, Values&&... values) {
        fmt::format_to(std::back_inserter(text), form, std::forward<Values>(values)...);
    }

    std::string text;
};

} // namespace kvrimage::svg
