#include "tools/kvrmem/edit/file_edit.h"

#include <algorithm>

namespace kvrmem {

namespace {

bool is_lower(char character) {
    return character >= 'a' && character <= 'z';
}

bool is_upper(char character) {
    return character >= 'A' && character <= 'Z';
}

} // namespace

edit_pieces::edit_pieces(const std::vector<word_edit>& edits) {
    for (const word_edit& edit : edits) {
        take(edit.first, edit.last);
        pieces[edit.first] = {edit.first, edit.last, &edit};
    }
    unite();
}

bool edit_pieces::touch(std::uint64_t first, std::uint64_t last) const {
    const auto behind = pieces.upper_bound(last);
    return behind != pieces.begin() && std::prev(behind)->second.last >= first;
}

std::vector<edit_piece> edit_pieces::take(std::uint64_t first, std::uint64_t last) {
    std::vector<edit_piece> taken;
    if (!touch(first, last)) {
        return taken;
    }
    split_at(first);
    split_at(last + 1);
    const auto begin = pieces.lower_bound(first);
    const auto end = pieces.upper_bound(last);
    for (auto piece = begin; piece != end; ++piece) {
        taken.push_back(piece->second);
    }
    pieces.erase(begin, end);
    return taken;
}

std::vector<edit_piece> edit_pieces::all() const {
    std::vector<edit_piece> result;
    result.reserve(pieces.size());
    for (const auto& [first, piece] : pieces) {
        result.push_back(piece);
    }
    return result;
}

/// Makes two of the piece that @p address and the address before it lie in.
void edit_pieces::split_at(std::uint64_t address) {
    const auto behind = pieces.lower_bound(address);
    if (behind == pieces.begin() || std::prev(behind)->second.last < address) {
        return;
    }
    edit_piece& lower = std::prev(behind)->second;
    pieces.emplace_hint(behind, address, edit_piece{address, lower.last, lower.edit});
    lower.last = address - 1;
}

void edit_pieces::unite() {
    for (auto piece = pieces.begin(); piece != pieces.end();) {
        const auto next = std::next(piece);
        const bool one = next != pieces.end() && piece->second.last + 1 == next->second.first &&
                         piece->second.is_constant() && next->second.is_constant() &&
                         piece->second.edit->words == next->second.edit->words;
        if (one) {
            piece->second.last = next->second.last;
            pieces.erase(next);
        } else {
            piece = next;
        }
    }
}

std::vector<touched_place> find_touched_places(const std::vector<setting_place>& places,
                                               edit_pieces& pieces) {
    std::vector<touched_place> touched;
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        std::vector<edit_piece> taken = pieces.take(place->first, place->last);
        if (!taken.empty()) {
            touched.push_back({place->number, std::move(taken)});
        }
    }
    std::reverse(touched.begin(), touched.end());
    return touched;
}

std::string with_changes(std::string_view text, const std::vector<text_change>& changes) {
    std::string result;
    result.reserve(text.size());
    std::size_t copied = 0;
    for (const text_change& change : changes) {
        result.append(text.substr(copied, change.offset - copied)).append(change.text);
        copied = change.offset + change.length;
    }
    return result.append(text.substr(copied));
}

std::size_t line_starts::of(std::uint64_t number) {
    for (; line < number; ++line) {
        offset = next_line(text, offset);
    }
    return offset;
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

digit_style style_of(std::string_view text) {
    return {text.size() - (text.starts_with('-') ? 1 : 0),
            std::any_of(text.begin(), text.end(), is_lower) &&
                std::none_of(text.begin(), text.end(), is_upper)};
}

void style_finder::see(std::string_view number) {
    fewest_digits = std::min(fewest_digits, style_of(number).digits);
    lower = lower || std::any_of(number.begin(), number.end(), is_lower);
    upper = upper || std::any_of(number.begin(), number.end(), is_upper);
}

std::string in_style(std::string_view number, const digit_style& style) {
    const bool negative = number.starts_with('-');
    number.remove_prefix(negative ? 1 : 0);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size() - 1));
    std::string text = negative ? "-" : "";
    text.append(style.digits > number.size() ? style.digits - number.size() : 0, '0').append(number);
    if (style.lower_case) {
        std::transform(text.begin(), text.end(), text.begin(), [](char character) {
            return is_upper(character) ? static_cast<char>(character - 'A' + 'a') : character;
        });
    }
    return text;
}

} // namespace kvrmem
