#include "kvrimage/edit/text_lines.h"

namespace kvrimage {

std::size_t start_of_line(std::string_view text, std::size_t offset) {
    const std::size_t newline = text.substr(0, offset).rfind('\n');
    return newline == std::string_view::npos ? 0 : newline + 1;
}

std::size_t end_of_line(std::string_view text, std::size_t offset) {
    const std::size_t newline = text.find('\n', offset);
    if (newline == std::string_view::npos) {
        return text.size();
    }
    return newline > offset && text[newline - 1] == '\r' ? newline - 1 : newline;
}

std::size_t next_line(std::string_view text, std::size_t offset) {
    const std::size_t newline = text.find('\n', offset);
    return newline == std::string_view::npos ? text.size() : newline + 1;
}

std::string_view line_end_at(std::string_view text, std::size_t line_start) {
    const std::size_t newline = line_start > 0 ? line_start - 1 : text.find('\n');
    const bool has_carriage_return = newline > 0 && newline < text.size() && text[newline - 1] == '\r';
    return has_carriage_return ? "\r\n" : "\n";
}

std::string as_last_line(std::string_view text, std::string_view line) {
    const std::string_view line_end = line_end_at(text, 0);
    const bool is_open = !text.empty() && text.back() != '\n';
    std::string result(is_open ? line_end : std::string_view());
    return result.append(line).append(line_end);
}

} // namespace kvrimage
