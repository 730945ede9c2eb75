#include "kvr/memory/store/word_pieces.h"

#include "kvr/memory/store/word_page_size.h"

#include <algorithm>
#include <utility>

namespace kvr {

namespace {

using piece = word_pieces::piece;

/// Returns the first piece that does not end before @p index.
template <class Pieces>
auto reaching(Pieces& pieces, std::uint32_t index) noexcept {
    return std::find_if(pieces.begin(), pieces.end(), [&](const piece& each) { return each.last >= index; });
}

std::uint16_t narrow(std::uint32_t index) noexcept {
    return static_cast<std::uint16_t>(index);
}

bool join(const piece& left, const piece& right) noexcept {
    return left.last + 1 == right.first && same_texts(left.texts, right.texts);
}

} // namespace

word_pieces::stretch word_pieces::stretch_at(std::uint32_t index) const noexcept {
    const auto next = reaching(pieces, index);
    if (next == pieces.end()) {
        return {nullptr, page_words - 1};
    }
    if (next->first > index) {
        return {nullptr, next->first - 1U};
    }
    return {next->texts.get(), next->last};
}

bool word_pieces::extend(std::uint32_t index, std::string_view text) noexcept {
    const auto next = reaching(pieces, index);
    if (next == pieces.begin() || (next != pieces.end() && next->first <= index + 1)) {
        return false;
    }
    piece& before = *(next - 1);
    if (before.last + 1U != index || !before.texts->is_uniform() || before.texts->text_at(0) != text) {
        return false;
    }
    before.last = narrow(index);
    return true;
}

void word_pieces::assign(std::uint32_t first, std::uint32_t last, pattern_ref texts) {
    if (pieces.size() + 2 > pieces.capacity()) {
        pieces.reserve(pieces.empty() ? 1 : pieces.size() * 2 + 1);
    }
    const iterator next = cut_out(first, last);
    if (texts) {
        join_neighbours(pieces.insert(next, piece{narrow(first), narrow(last), std::move(texts)}));
    }
}

/// Removes the indexes from all pieces and returns the first piece after them. Needs capacity for one more
/// piece.
word_pieces::iterator word_pieces::cut_out(std::uint32_t first, std::uint32_t last) noexcept {
    iterator next = reaching(pieces, first);
    if (next != pieces.end() && next->first < first) {
        const piece rest{narrow(last + 1), next->last, next->texts};
        next->last = narrow(first - 1);
        ++next;
        if (rest.last > last) {
            return pieces.insert(next, rest);
        }
    }
    const iterator after = reaching(pieces, last + 1);
    if (after != pieces.end() && after->first <= last) {
        after->first = narrow(last + 1);
    }
    return pieces.erase(next, after);
}

void word_pieces::join_neighbours(iterator added) noexcept {
    if (const iterator right = added + 1; right != pieces.end() && join(*added, *right)) {
        added->last = right->last;
        pieces.erase(right);
    }
    if (added != pieces.begin() && join(*(added - 1), *added)) {
        (added - 1)->last = added->last;
        pieces.erase(added);
    }
}

pattern_ref word_pieces::neighbour_with(std::uint32_t index, std::string_view text) const noexcept {
    for (const piece& each : pieces) {
        const bool touches = each.last + 1U == index || index + 1 == each.first;
        if (touches && each.texts->is_uniform() && each.texts->text_at(0) == text) {
            return each.texts;
        }
    }
    return {};
}

} // namespace kvr
