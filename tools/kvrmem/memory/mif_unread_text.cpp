#include "tools/kvrmem/memory/mif_unread_text.h"

#include "kvr/numeric/digit_value.h"

#include <algorithm>

namespace kvrmem {

namespace {

bool is_within(const kvr::text_span& span, std::size_t place) {
    return span.found() && span.begin <= place && place < span.end;
}

} // namespace

bool is_number_in(std::string_view digits, KVR_MEMORY_RADIXES radix) {
    const unsigned base = kvr::radix_base(radix);
    return std::all_of(digits.begin(), digits.end(), [base](char c) { return kvr::digit_value(c) < base; });
}

kvr::text_span find_surplus_value(const kvr::mif_content& content) {
    const std::uint64_t addresses = std::uint64_t{content.last} - content.first + 1;
    if (content.values.size() <= addresses) {
        return {};
    }
    const std::string_view value = content.values[static_cast<std::size_t>(addresses)];
    const auto begin = static_cast<std::size_t>(value.data() - content.text.data());
    return {begin, begin + value.size()};
}

kvr::text_span find_text_behind_semicolon(std::string_view text) {
    const std::size_t semicolon = std::min(text.find(';'), text.size());
    return trimmed_span(text, std::min(text.find_first_not_of(" \t;", semicolon), text.size()));
}

std::vector<kvr::text_span> find_stray_characters(const kvr::mif_content& content) {
    const std::string_view text = content.text.substr(0, content.text.find(';'));
    const std::size_t colon = text.find(':');
    const auto is_read = [&](std::size_t at) {
        return at < colon ? is_within(content.first_address, at) || is_within(content.last_address, at)
                          : at == colon || kvr::is_value_character(text[at]);
    };
    const auto is_stray = [&](std::size_t at) {
        const std::string_view separators = at < colon ? " \t[]." : " \t,";
        return !is_read(at) && separators.find(text[at]) == std::string_view::npos;
    };
    std::vector<kvr::text_span> found;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!is_stray(at)) {
            continue;
        }
        if (found.empty() || found.back().end != at) {
            found.push_back({at, at});
        }
        found.back().end = at + 1;
    }
    return found;
}

bool continues_a_value(const kvr::mif_content& content, const kvr::line_piece& piece) {
    return piece.offset > 0 && piece.offset < content.text.size() &&
           kvr::is_value_character(content.text[piece.offset - 1]) &&
           kvr::is_value_character(content.text[piece.offset]);
}

kvr::text_span find_text_behind_comment(std::string_view rest) {
    const std::size_t closing = rest.find('%');
    if (closing == std::string_view::npos) {
        return {};
    }
    const std::size_t behind = closing + 1;
    const std::size_t length = kvr::without_comments(rest.substr(behind)).size();
    return trimmed_span(rest.substr(0, behind + length), behind);
}

kvr::text_span find_text_behind_end(std::string_view rest) {
    return trimmed_span(rest, std::min(rest.find_first_not_of(" \t;"), rest.size()));
}

kvr::text_span trimmed_span(std::string_view text, std::size_t begin) {
    const std::size_t first = text.find_first_not_of(mif_blanks, begin);
    return first == std::string_view::npos ? kvr::text_span{}
                                           : kvr::text_span{first, text.find_last_not_of(mif_blanks) + 1};
}

} // namespace kvrmem
