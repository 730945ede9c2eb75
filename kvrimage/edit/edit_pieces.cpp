#include "kvrimage/edit/edit_pieces.h"

#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

bool are_one_piece(const edit_piece& piece, const edit_piece& next) {
    return piece.last + 1 == next.first && piece.is_constant() && next.is_constant() &&
           piece.source->words == next.source->words;
}

} // namespace

std::uint64_t edit_piece::period() const noexcept {
    return std::min<std::uint64_t>(source->words.size(), size());
}

const word& edit_piece::word_at(std::uint64_t address) const noexcept {
    return source->words[(address - begin) % source->words.size()];
}

std::string edit_piece::text_at(std::uint64_t address) const {
    return text_of_word(is_constant() ? source->words.front() : word_at(address));
}

edit_pieces::edit_pieces(std::span<const assignment> assignments, std::uint64_t base) {
    for (const assignment& made : assignments) {
        const address_range in_file = {made.addresses.first + base, made.addresses.last + base};
        take(in_file);
        pieces[in_file.first] = {in_file.first, in_file.last, &made, in_file.first};
    }
    unite();
}

bool edit_pieces::touch(const address_range& addresses) const {
    const auto after = pieces.upper_bound(addresses.last);
    return after != pieces.begin() && std::prev(after)->second.last >= addresses.first;
}

std::vector<edit_piece> edit_pieces::take(const address_range& addresses) {
    if (!touch(addresses)) {
        return {};
    }
    split_at(addresses.first);
    split_at(addresses.last + 1);
    const auto begin = pieces.lower_bound(addresses.first);
    const auto end = pieces.upper_bound(addresses.last);
    std::vector<edit_piece> taken;
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

/// Splits the piece that contains both @p address and the address before it. Does nothing for address 0,
/// which is also the wrapped address after the last one.
void edit_pieces::split_at(std::uint64_t address) {
    const auto after = pieces.lower_bound(address);
    if (after == pieces.begin() || std::prev(after)->second.last < address) {
        return;
    }
    edit_piece& lower = std::prev(after)->second;
    pieces.emplace_hint(after, address, edit_piece{address, lower.last, lower.source, lower.begin});
    lower.last = address - 1;
}

void edit_pieces::unite() {
    for (auto piece = pieces.begin(); piece != pieces.end();) {
        const auto next = std::next(piece);
        if (next != pieces.end() && are_one_piece(piece->second, next->second)) {
            piece->second.last = next->second.last;
            pieces.erase(next);
        } else {
            piece = next;
        }
    }
}

} // namespace kvrimage
