#include "kvrimage/formats/mif/mif_line_style.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/edit/text_lines.h"
#include "kvrimage/formats/mif/mif_tokens.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kvrimage {

namespace {

constexpr std::string_view blanks_of_style = " \t,";

/// Returns the text of @p contents from @p begin to @p end if it is only spacing (blanks, and commas between
/// values, all on one line), else @p otherwise.
std::string gap(std::string_view contents, std::uint64_t begin, std::uint64_t end,
                std::string_view otherwise) {
    const std::string_view found = span{begin, end - begin}.in(contents);
    return std::string(found.find_first_not_of(blanks_of_style) == std::string_view::npos ? found
                                                                                          : otherwise);
}

digit_style style_of_addresses(std::string_view contents, const mif_statement& statement) {
    const digit_style first = style_of(statement.first.in(contents));
    if (!statement.is_range()) {
        return first;
    }
    const digit_style last = style_of(statement.last.in(contents));
    return {std::min(first.digits, last.digits), first.lower_case || last.lower_case};
}

/// Sets the style of the text within "[0..7]" and before the ":".
void take_range_style(mif_line_style& style, std::string_view contents, const mif_statement& statement) {
    const std::string_view inside =
        span{statement.first.end(), statement.last.offset - statement.first.end()}.in(contents);
    const std::size_t dots = inside.find("..");
    style.open += gap(contents, statement.open.end(), statement.first.offset, "");
    style.dots = gap(inside, 0, dots, "") + ".." + gap(inside, dots + 2, inside.size(), "");
    style.close = gap(contents, statement.last.end(), statement.close.offset, "") + "]";
    style.before_colon = gap(contents, statement.close.end(), statement.colon.offset, " ");
}

} // namespace

mif_line_style style_of(std::string_view contents, const mif_statement& statement) {
    mif_line_style style;
    const std::size_t line = start_of_line(contents, statement.whole.offset);
    style.indent = gap(contents, line, statement.whole.offset, "");
    style.address = style_of_addresses(contents, statement);
    if (!statement.sound) { // it may have no values
        return style;
    }
    if (statement.is_range() && statement.open.length != 0) {
        take_range_style(style, contents, statement);
    } else {
        style.before_colon =
            gap(contents, std::max({statement.first.end(), statement.last.end(), statement.close.end()}),
                statement.colon.offset, " ");
    }
    style.after_colon = gap(contents, statement.colon.end(), statement.values.front().offset, " ");
    if (statement.values.size() > 1) {
        style.between = gap(contents, statement.values[0].end(), statement.values[1].offset, " ");
    }
    if (statement.semicolon.length != 0) {
        style.before_semicolon = gap(contents, statement.values.back().end(), statement.semicolon.offset, "");
    }
    return style;
}

std::string address_text(std::uint64_t address, radix address_radix, const digit_style& style) {
    constexpr std::array<int, 5> bases = {2, 8, 10, 10, 16};
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), address,
                                   bases[static_cast<std::size_t>(address_radix)]);
    const std::string_view lower(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()));
    return in_style(kvr::to_upper_case(lower), style);
}

void append_values(std::string& text, const std::vector<std::string>& values, std::size_t from,
                   const mif_line_style& style, std::string_view line_end, std::size_t column,
                   std::size_t limit) {
    for (std::size_t index = from; index < values.size(); ++index) {
        column += style.between.size() + values[index].size();
        if (column <= limit) {
            text.append(style.between).append(values[index]);
        } else {
            // The blank separates the value from the one on the previous line.
            const std::string_view blank = style.indent.empty() ? " " : "";
            text.append(line_end).append(style.indent).append(blank).append(values[index]);
            column = style.indent.size() + blank.size() + values[index].size();
        }
    }
}

std::string line_text(const mif_line& line, radix address_radix, const mif_line_style& style,
                      std::string_view line_end) {
    const std::string first = address_text(line.first, address_radix, style.address);
    std::string text = style.indent;
    if (line.is_range()) {
        text.append(style.open).append(first).append(style.dots);
        text.append(address_text(line.last, address_radix, style.address)).append(style.close);
    } else {
        text.append(first);
    }
    text.append(style.before_colon).append(":").append(style.after_colon).append(line.values.front());
    append_values(text, line.values, 1, style, line_end, text.size(),
                  longest_kvr_line - style.before_semicolon.size() - 1);
    return text.append(style.before_semicolon).append(";");
}

} // namespace kvrimage
