#include "tests/models/edit_pieces_operations.h"

#include "kvrimage/edit/touched_places.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

namespace kvr_test {

namespace {

using kvrimage::address_range;
using kvrimage::edit_piece;
using kvrimage::setting_place;
using kvrimage::touched_place;
using kvrimage::word;

constexpr std::uint32_t width_of_pieces = 12;
constexpr std::array<std::uint32_t, 4> address_counts = {1, 24, 300, 3000};
constexpr std::array<std::uint32_t, 4> assignment_counts = {1, 4, 20, 200};

} // namespace

edit_pieces_operations::edit_pieces_operations(choices& source) : chosen(source), pieces({}) {
    start();
}

void edit_pieces_operations::start() {
    const std::uint32_t addresses = chosen.one_of(address_counts);
    base = chosen.once_in(3) ? std::numeric_limits<std::uint64_t>::max() - (addresses - 1) : chosen.below(9);
    model.assign(addresses, std::nullopt);
    assignments.clear();
    assign_some();
    pieces = kvrimage::edit_pieces(assignments);
    const std::vector<edit_piece> all = pieces.all();
    for (std::size_t index = 1; index < all.size(); ++index) {
        const edit_piece& one = all[index - 1];
        const edit_piece& next = all[index];
        expect(one.last + 1 != next.first || !one.is_constant() || !next.is_constant() ||
                   one.word_at(one.first) != next.word_at(next.first),
               "neighbors of one word are two pieces");
    }
}

address_range edit_pieces_operations::any_range() const {
    constexpr std::uint32_t few = 6;
    const auto size = static_cast<std::uint32_t>(model.size());
    const std::uint32_t first = chosen.below(size);
    const std::uint32_t longest = chosen.once_in(2) ? std::min(few, size - first) : size - first;
    return {base + first, base + first + chosen.below(longest)};
}

void edit_pieces_operations::assign_some() {
    for (std::uint32_t count = chosen.between(0, chosen.one_of(assignment_counts)); count > 0; --count) {
        kvrimage::assignment made = {any_range(), {}};
        for (std::uint32_t words = chosen.once_in(2) ? 1 : chosen.between(1, 9); words > 0; --words) {
            made.words.push_back(word::of(chosen.below(chosen.once_in(2) ? 2 : 4096), width_of_pieces));
        }
        const auto [first, last] = made.addresses;
        for (std::uint64_t index = 0; index <= last - first; ++index) {
            model[index_of(first) + index] = made.words[index % made.words.size()];
        }
        assignments.push_back(std::move(made));
    }
}

void edit_pieces_operations::step() {
    ++steps;
    if (pieces.empty()) {
        start();
    }
    if (chosen.once_in(8)) {
        hand_over_places();
    } else {
        take();
    }
    touch();
    compare_all();
}

void edit_pieces_operations::clear_in_model(const edit_piece& piece, const address_range& range) {
    expect(range.first <= piece.first && piece.first <= piece.last && piece.last <= range.last,
           "where a piece is");
    const std::uint64_t period = piece.period();
    expect(period >= 1 && period <= piece.size(), "the period of a piece");
    for (std::uint64_t index = 0; index < piece.size(); ++index) {
        const std::uint64_t address = piece.first + index;
        auto& expected = model[index_of(address)];
        expect(expected == piece.word_at(address), "a word of a piece");
        expect(piece.word_at(piece.first + index % period) == piece.word_at(address), "a repeated word");
        expect(word::of_held_text(piece.text_at(address), width_of_pieces) == *expected, "a text of a piece");
        expected.reset();
    }
}

void edit_pieces_operations::take() {
    const address_range range = any_range();
    for (const edit_piece& piece : pieces.take(range)) {
        clear_in_model(piece, range);
    }
    for (std::uint64_t index = index_of(range.first); index <= index_of(range.last); ++index) {
        expect(!model[index], "a word is not handed out");
    }
}

void edit_pieces_operations::touch() const {
    const address_range range = any_range();
    const auto first = model.begin() + static_cast<std::ptrdiff_t>(index_of(range.first));
    const auto last = model.begin() + static_cast<std::ptrdiff_t>(index_of(range.last));
    const bool holds_some = std::any_of(first, last + 1, [](const auto& each) { return each.has_value(); });
    expect(pieces.touch(range) == holds_some, "whether a range is touched");
}

/// Hands the pieces to places of a file. The last place that sets an address gets its piece.
void edit_pieces_operations::hand_over_places() {
    std::vector<setting_place> places;
    std::vector<std::optional<std::size_t>> owners(model.size());
    for (std::uint32_t count = chosen.below(8); count > 0; --count) {
        const address_range range = any_range();
        std::fill(owners.begin() + static_cast<std::ptrdiff_t>(index_of(range.first)),
                  owners.begin() + static_cast<std::ptrdiff_t>(index_of(range.last)) + 1, places.size());
        places.push_back({places.size(), range});
    }
    std::optional<std::uint64_t> before;
    for (const touched_place& touched : find_touched_places(places, pieces)) {
        expect(!before || *before < touched.number, "the order of the places");
        expect(!touched.pieces.empty(), "a place that is not touched");
        before = touched.number;
        for (const edit_piece& piece : touched.pieces) {
            clear_in_model(piece, places[touched.number].addresses);
            for (std::uint64_t index = index_of(piece.first); index <= index_of(piece.last); ++index) {
                expect(owners[index] == touched.number, "the place of a word");
            }
        }
    }
    for (std::size_t index = 0; index < model.size(); ++index) {
        expect(!model[index] || !owners[index], "a word of a place is not handed out");
    }
}

void edit_pieces_operations::compare_all() const {
    std::size_t next = 0;
    for (const edit_piece& piece : pieces.all()) {
        expect(piece.first >= base && index_of(piece.first) >= next && index_of(piece.last) < model.size(),
               "the order of the pieces");
        for (; next < index_of(piece.first); ++next) {
            expect(!model[next], "a word is in no piece");
        }
        for (; next <= index_of(piece.last); ++next) {
            expect(model[next] == piece.word_at(base + next), "a word that is left");
        }
    }
    for (; next < model.size(); ++next) {
        expect(!model[next], "a word is in no piece");
    }
}

void edit_pieces_operations::expect(bool holds, std::string_view what) const {
    if (!holds) {
        throw std::logic_error(fmt::format("{} after step {} with {} assignments to {} addresses", what,
                                           steps, assignments.size(), model.size()));
    }
}

} // namespace kvr_test
