#include "tools/kvrmem/edit/mif_line_style.h"

#include "kvr/memory/memory_state.h"
#include "kvr/memory/mif/mif_reader.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kvrmem {

namespace {

/// The part of a content line from @p begin to @p end when a person may have put it there for the looks
/// (blanks, and commas between values, all on one line), else @p otherwise.
std::string gap(const kvr::mif_content& content, std::size_t begin, std::size_t end,
                std::string_view otherwise) {
    const bool is_broken =
        std::any_of(content.pieces.begin(), content.pieces.end(), [begin, end](const kvr::line_piece& piece) {
            return begin <= piece.offset && piece.offset <= end && piece.offset > 0;
        });
    if (begin > end || end > content.text.size() || is_broken) {
        return std::string(otherwise);
    }
    const std::string_view found = content.text.substr(begin, end - begin);
    return std::string(found.find_first_not_of(" \t,") == std::string_view::npos ? found : otherwise);
}

std::size_t offset_in(const kvr::mif_content& content, std::string_view value) {
    return static_cast<std::size_t>(value.data() - content.text.data());
}

} // namespace

range_brackets brackets_of(const kvr::mif_content& content) {
    return {std::min(content.text.find('['), content.first_address.begin), content.text.find(']')};
}

mif_line_style style_of(const kvr::mif_content& content, std::string_view indent) {
    const std::string_view text = content.text;
    const std::size_t colon = text.find(':');
    const std::string_view last_value = content.values.back();
    mif_line_style style;
    style.indent = indent.find_first_not_of(" \t") == std::string_view::npos ? indent : "";
    if (content.last_address.found()) {
        const range_brackets brackets = brackets_of(content);
        const std::size_t dot = text.find('.', content.first_address.end);
        const std::size_t behind_dots =
            std::min(text.find_last_of('.', content.last_address.begin) + 1, content.last_address.begin);
        style.open += gap(content, brackets.open + 1, content.first_address.begin, "");
        style.dots = gap(content, content.first_address.end, dot, "") + ".." +
                     gap(content, behind_dots, content.last_address.begin, "");
        style.close = gap(content, content.last_address.end, brackets.close, "") + "]";
        style.before_colon = gap(content, brackets.close + 1, colon, " ");
    } else {
        style.before_colon = gap(content, content.first_address.end, colon, " ");
    }
    style.after_colon = gap(content, colon + 1, content.data, " ");
    if (content.values.size() > 1) {
        style.between = gap(content, offset_in(content, content.values[0]) + content.values[0].size(),
                            offset_in(content, content.values[1]), " ");
    }
    style.before_semicolon =
        gap(content, offset_in(content, last_value) + last_value.size(), text.find(';'), "");
    return style;
}

std::string address_text(std::uint64_t address, KVR_MEMORY_RADIXES radix, const digit_style& style) {
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.begin(), digits.end(), address, static_cast<int>(kvr::radix_base(radix)));
    std::transform(digits.begin(), end.ptr, digits.begin(),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    return in_style(std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data())),
                    style);
}

void append_values(std::string& text, const std::vector<std::string>& values, std::size_t from,
                   const mif_line_style& style, std::string_view line_end, std::size_t column,
                   std::size_t limit) {
    for (std::size_t index = from; index < values.size(); ++index) {
        column += style.between.size() + values[index].size();
        if (column <= limit) {
            text.append(style.between).append(values[index]);
        } else {
            // The blank keeps the value apart from the one in the line before.
            const std::string_view blank = style.indent.empty() ? " " : "";
            text.append(line_end).append(style.indent).append(blank).append(values[index]);
            column = style.indent.size() + blank.size() + values[index].size();
        }
    }
}

std::string line_text(const mif_line& line, KVR_MEMORY_RADIXES address_radix, const mif_line_style& style,
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
                  kvr::mif_reader::line_limit - style.before_semicolon.size() - 1);
    return text.append(style.before_semicolon).append(";");
}

} // namespace kvrmem
