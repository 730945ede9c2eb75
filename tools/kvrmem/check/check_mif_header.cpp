#include "tools/kvrmem/check/check_mif_header.h"

#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/memory/mif/mif_reader.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/mif_unread_text.h"

#include <algorithm>
#include <string>

namespace kvrmem {

namespace {

/// True for a word of letters, "_" and "-".
bool is_name(std::string_view text) {
    return !text.empty() && text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_-") == std::string_view::npos;
}

/// Walks the lines up to the content as the library does, without keeping anything of them.
class header_walk {
public:
    explicit header_walk(const check_source& from) : lines(from.lines(kvr::mif_reader::source_limit)) {}

    mif_header_lines find() {
        while (result.content == 0 && next()) {
            kvr::strip_blanks(text);
            take_keywords();
            note_unknown_keyword();
            take_content();
        }
        result.begin = kvr::contains(text, "BEGIN") ? result.content : 0;
        while (result.content != 0 && result.begin == 0 && next() && !kvr::contains(text, "END")) {
            result.begin = kvr::contains(text, "BEGIN") ? number : 0;
        }
        return result;
    }

private:
    bool next() {
        if (lines.at_end()) {
            return false;
        }
        const std::string_view raw = lines.next_line();
        const bool is_whole = !lines.line_was_cut() && raw.size() <= kvr::mif_reader::source_limit;
        text = is_whole ? kvr::without_comments(raw) : std::string_view();
        kvr::to_upper(text);
        ++number;
        return true;
    }
    void take_keywords() {
        const std::array<bool, 4> parsed = parsed_keywords();
        if (parsed[kvr::depth_keyword] && has(kvr::width_keyword)) {
            result.unread_depth = number;
        }
        for (std::size_t index = 0; index < kvr::header_keywords.size(); ++index) {
            if (parsed[index]) {
                result.repeated[index] = seen[index] ? result.keyword[index] : 0;
                result.keyword[index] = number;
                seen[index] = index != kvr::depth_keyword || sets_depth();
            } else if (result.repeated[index] == 0 && has(index) && kvr::contains(text, "=")) {
                result.repeated[index] = number;
            }
        }
        if (result.blocked_content == 0) {
            result.width_known = seen[kvr::width_keyword];
            result.depth_known = seen[kvr::depth_keyword];
        }
    }
    void note_unknown_keyword() {
        if (!text.ends_with(';') || kvr::contains(text, "CONTENT") || is_header_line(text)) {
            return;
        }
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos ? is_name(std::string_view(text).substr(0, equals))
                                        : !name_without_equals(text).empty()) {
            result.unknown.push_back(number);
        }
    }
    /// A line that is parsed for one keyword of a pair, since that was not seen yet, sets the other one
    /// again; but a line with "WIDTH" never sets the depth.
    [[nodiscard]] std::array<bool, 4> parsed_keywords() const {
        const bool sizes = is_new(kvr::width_keyword) || is_new(kvr::depth_keyword);
        const bool radixes = is_new(kvr::address_radix_keyword) || is_new(kvr::data_radix_keyword);
        return {sizes && has(kvr::width_keyword), is_new(kvr::depth_keyword),
                radixes && has(kvr::address_radix_keyword), radixes && has(kvr::data_radix_keyword)};
    }
    [[nodiscard]] bool has(std::size_t index) const {
        return kvr::contains(text, kvr::header_keywords[index].keyword);
    }
    [[nodiscard]] bool is_new(std::size_t index) const { return !seen[index] && has(index); }
    bool sets_depth() { return !kvr::contains(text, "WIDTH") && !kvr::take_size_line(memory, text); }
    void take_content() {
        if (!kvr::contains(text, "CONTENT")) {
            return;
        }
        seen[kvr::address_radix_keyword] = seen[kvr::data_radix_keyword] = true;
        if (seen[kvr::width_keyword] && seen[kvr::depth_keyword]) {
            result.content = number;
        } else if (result.blocked_content == 0) {
            result.blocked_content = number;
        }
    }

    kvr::line_source lines;
    kvr::mif_memory memory{nullptr};
    mif_header_lines result;
    std::array<bool, 4> seen{};
    std::uint64_t number = 0;
    std::string text;
};

} // namespace

mif_header_lines find_header_lines(const check_source& source) {
    return header_walk(source).find();
}

std::string_view name_without_equals(std::string_view text) {
    for (std::size_t index = kvr::depth_keyword; index < header_names.size(); ++index) {
        if (!text.starts_with(header_names[index])) {
            continue;
        }
        std::string_view value = text.substr(header_names[index].size());
        value.remove_prefix(value.starts_with(':') ? 1 : 0);
        value = value.substr(0, value.find(';'));
        const bool is_number = !value.empty() && is_number_in(value, RADIX_UNS);
        if (index == kvr::depth_keyword ? is_number : radix_of_name(value).has_value()) {
            return header_names[index];
        }
    }
    return "";
}

bool is_header_line(std::string_view text) {
    return std::any_of(kvr::header_keywords.begin(), kvr::header_keywords.end(),
                       [text](const kvr::header_keyword& each) { return kvr::contains(text, each.keyword); });
}

line_stretch header_value(std::string_view line) {
    const std::string_view text = kvr::without_comments(line);
    const std::size_t equals = std::min(text.find('='), text.size());
    const std::size_t end = std::min(text.find(';', equals), text.size());
    const std::size_t begin = text.find_first_not_of("= \t", equals);
    if (begin >= end) {
        return {std::min(equals, text.size()) + 1, {}};
    }
    const std::size_t last = text.find_last_not_of(" \t", end - 1);
    return {begin + 1, text.substr(begin, last + 1 - begin)};
}

} // namespace kvrmem
