#include "tests/kvrimage/picture/well_formed.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// True if each "&" of @p text begins an entity and the only control characters are line breaks.
bool is_character_data(std::string_view text) {
    constexpr std::array<std::string_view, 4> entities = {"&amp;", "&lt;", "&gt;", "&quot;"};
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = text.substr(at);
        const bool is_control = static_cast<unsigned char>(text[at]) < 0x20U && text[at] != '\n';
        const bool is_entity = std::ranges::any_of(
            entities, [rest](std::string_view entity) { return rest.starts_with(entity); });
        if (is_control || (text[at] == '&' && !is_entity)) {
            return false;
        }
    }
    return true;
}

/// Removes the letters at the front of @p text and returns them.
std::string_view take_name(std::string_view& text) {
    const auto* const end = std::ranges::find_if_not(text, [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
    });
    const std::string_view name = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(name.size());
    return name;
}

/// True if @p text consists only of attributes, each after a blank.
bool are_attributes(std::string_view text) {
    while (!text.empty()) {
        if (text.front() != ' ') {
            return false;
        }
        text.remove_prefix(1);
        if (take_name(text).empty() || !text.starts_with("=\"")) {
            return false;
        }
        const std::size_t end = text.find('"', 2);
        if (end == std::string_view::npos || !is_character_data(text.substr(2, end - 2))) {
            return false;
        }
        text.remove_prefix(end + 1);
    }
    return true;
}

/// Updates the list of open elements @p open for @p tag, the text between "<" and ">".
bool follow_tag(std::string_view tag, std::vector<std::string>& open) {
    if (tag.starts_with("/")) {
        const bool closes = !open.empty() && open.back() == tag.substr(1);
        open.resize(open.size() - (closes ? 1U : 0U));
        return closes;
    }
    const bool is_empty = tag.ends_with("/");
    tag.remove_suffix(is_empty ? 1U : 0U);
    const std::string name(take_name(tag));
    if (!is_empty) {
        open.push_back(name);
    }
    return !name.empty() && are_attributes(tag);
}

} // namespace

std::optional<std::string> fault_of_xml(std::string_view xml) {
    std::vector<std::string> open;
    std::size_t roots = 0;
    while (!xml.empty()) {
        const std::size_t begin = xml.find('<');
        const std::string_view text = xml.substr(0, begin);
        if (!is_character_data(text) ||
            (open.empty() && text.find_first_not_of('\n') != std::string_view::npos)) {
            return "text: " + std::string(text);
        }
        if (begin == std::string_view::npos) {
            break;
        }
        roots += open.empty() ? 1U : 0U;
        const std::size_t end = xml.find('>', begin);
        const std::string_view tag = xml.substr(begin + 1, end - begin - 1);
        if (end == std::string_view::npos || tag.find('<') != std::string_view::npos ||
            !follow_tag(tag, open)) {
            return "tag: " + std::string(tag.substr(0, 200));
        }
        xml.remove_prefix(end + 1);
    }
    return open.empty() && roots == 1 ? std::nullopt
                                      : std::optional<std::string>("not closed, or not one element");
}

std::vector<std::string> attributes_of(std::string_view xml, std::string_view style,
                                       std::string_view attribute) {
    const std::string begin = "class=\"" + std::string(style) + "\"";
    std::vector<std::string> values;
    for (std::size_t at = xml.find(begin); at != std::string_view::npos; at = xml.find(begin, at + 1)) {
        const std::string_view tag = xml.substr(at, xml.find('>', at) - at);
        const std::size_t value = tag.find(" " + std::string(attribute) + "=\"") + attribute.size() + 3;
        values.emplace_back(tag.substr(value, tag.find('"', value) - value));
    }
    return values;
}

std::string attribute_of(std::string_view xml, std::string_view style, std::string_view attribute) {
    const auto values = attributes_of(xml, style, attribute);
    return values.empty() ? "" : values.size() == 1 ? values.front() : "several";
}

std::vector<std::string> texts_of(std::string_view xml, std::string_view style) {
    const std::string begin = "<text class=\"" + std::string(style) + "\"";
    std::vector<std::string> texts;
    for (std::size_t at = xml.find(begin); at != std::string_view::npos; at = xml.find(begin, at + 1)) {
        const std::size_t text = xml.find('>', at) + 1;
        texts.emplace_back(xml.substr(text, xml.find('<', text) - text));
    }
    return texts;
}

} // namespace kvrimage
