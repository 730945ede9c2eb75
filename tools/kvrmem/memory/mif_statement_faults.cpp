#include "tools/kvrmem/memory/mif_statement_faults.h"

#include "kvr/numeric/digit_value.h"
#include "tools/kvrmem/memory/mif_unread_text.h"

#include <algorithm>
#include <cctype>

namespace kvrmem {

namespace {

/// The first line of @p statement that begins behind @p offset.
std::vector<kvr::line_piece>::const_iterator first_piece_behind(const kvr::mif_content& statement,
                                                                std::size_t offset) {
    return std::upper_bound(
        statement.pieces.begin(), statement.pieces.end(), offset,
        [](std::size_t place, const kvr::line_piece& piece) { return place < piece.offset; });
}

/// Offset of the last line of @p statement that begins in ]from, to[; @p from when none does.
std::size_t last_line_begin(const kvr::mif_content& statement, std::size_t from, std::size_t to) {
    const auto behind = first_piece_behind(statement, to - 1);
    return behind != statement.pieces.begin() ? std::max((behind - 1)->offset, from) : from;
}

/// Where the address that ends before the ":" at @p colon begins; npos when there is none.
std::size_t address_before(const kvr::mif_content& statement, std::size_t from, std::size_t colon) {
    const std::string_view text = statement.text;
    const std::size_t last = text.find_last_not_of(mif_blanks, colon - 1);
    if (last == std::string_view::npos || last < from) {
        return std::string_view::npos;
    }
    if (text[last] == ']') {
        const std::size_t bracket = text.substr(from, last - from).rfind('[');
        return bracket != std::string_view::npos ? from + bracket : std::string_view::npos;
    }
    std::size_t begin = last + 1;
    while (begin > from && kvr::is_value_character(text[begin - 1])) {
        --begin;
    }
    return begin <= last ? last_line_begin(statement, begin, last + 1) : std::string_view::npos;
}

/// The ":" at or behind @p from that is not within brackets; npos when there is none up to @p end.
std::size_t next_colon(std::string_view text, std::size_t from, std::size_t end) {
    bool in_brackets = false;
    for (std::size_t at = from; at < end; ++at) {
        in_brackets = text[at] == '[' || (in_brackets && text[at] != ']');
        if (text[at] == ':' && !in_brackets) {
            return at;
        }
    }
    return std::string_view::npos;
}

bool is_address(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return kvr::digit_value(c) < 16; });
}

/// True when one of the words of @p text, which is in upper case, is a number.
bool holds_number(std::string_view text) {
    const auto is_of_word = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); };
    const auto* begin = text.begin();
    while (begin != text.end()) {
        begin = std::find_if(begin, text.end(), is_of_word);
        const auto* const end = std::find_if_not(begin, text.end(), is_of_word);
        if (is_address({begin, end})) {
            return true;
        }
        begin = end;
    }
    return false;
}

std::size_t end_of_digits(std::string_view text, std::size_t from) {
    while (from < text.size() && kvr::digit_value(text[from]) < 16) {
        ++from;
    }
    return from;
}

} // namespace

kvr::line_place place_in(const kvr::mif_content& statement, std::size_t offset) {
    const kvr::line_piece& piece = *(first_piece_behind(statement, offset) - 1);
    return {piece.line, static_cast<std::uint32_t>(offset - piece.offset + 1)};
}

kvr::line_place place_behind(const kvr::mif_content& statement, std::size_t offset) {
    kvr::line_place place = place_in(statement, offset - 1);
    ++place.column;
    return place;
}

bool is_whole_word(const kvr::mif_content& statement, const kvr::text_span& word) {
    const auto goes_on = [&statement](std::size_t offset) {
        const std::string_view text = statement.text;
        return offset > 0 && offset < text.size() &&
               std::isalnum(static_cast<unsigned char>(text[offset - 1])) != 0 &&
               std::isalnum(static_cast<unsigned char>(text[offset])) != 0 &&
               (first_piece_behind(statement, offset) - 1)->offset != offset;
    };
    return !goes_on(word.begin) && !goes_on(word.end);
}

kvr::mif_content text_before(const kvr::mif_content& statement, std::size_t end) {
    kvr::mif_content part;
    part.text = statement.text.substr(0, end);
    part.pieces.assign(statement.pieces.begin(), first_piece_behind(statement, end - 1));
    return part;
}

std::vector<inner_statement> find_inner_statements(const kvr::mif_content& statement) {
    std::vector<inner_statement> found;
    const std::string_view text = statement.text;
    const std::size_t end = std::min(text.find(';'), text.size());
    std::size_t before = next_colon(text, 0, end);
    while (before != std::string_view::npos) {
        const std::size_t colon = next_colon(text, before + 1, end);
        if (colon == std::string_view::npos) {
            break;
        }
        const std::size_t address = address_before(statement, before + 1, colon);
        if (address != std::string_view::npos) {
            const bool has_value = kvr::find_token(text.substr(0, address), before + 1).found();
            const std::size_t behind = text.find_last_not_of(mif_blanks, address - 1) + 1;
            const bool at_line_end = last_line_begin(statement, behind - 1, address + 1) >= behind;
            found.push_back({behind, address, colon + 1, has_value, at_line_end});
        }
        before = colon;
    }
    return found;
}

std::optional<misspelt_range> find_misspelt_range(std::string_view text) {
    const std::size_t open = text.find('[');
    const std::size_t close = text.find(']', std::min(open, text.size()));
    if (close == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view inside = text.substr(0, close);
    const std::size_t first = inside.find_first_not_of(mif_blanks, open + 1);
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t first_end = end_of_digits(inside, first);
    const std::size_t last_end = inside.find_last_not_of(mif_blanks) + 1;
    std::size_t last = last_end;
    while (last > first_end && kvr::digit_value(inside[last - 1]) < 16) {
        --last;
    }
    std::string_view separator = inside.substr(first_end, last - first_end);
    separator.remove_prefix(std::min(separator.find_first_not_of(mif_blanks), separator.size()));
    separator = separator.substr(0, separator.find_last_not_of(mif_blanks) + 1);
    const bool has_two_numbers = first_end != first && last != first_end &&
                                 is_address(inside.substr(last, last_end - last)) && !holds_number(separator);
    if (!has_two_numbers || separator == "..") {
        return std::nullopt;
    }
    const bool certain = separator == "-" || separator == ":" || separator == "TO";
    return misspelt_range{open, close + 1, {first, first_end}, {last, last_end}, certain};
}

bool values_behind_semicolon(std::string_view text) {
    const std::size_t semicolon = text.find(';');
    return semicolon != std::string_view::npos && kvr::find_token(text, semicolon).found();
}

} // namespace kvrmem
