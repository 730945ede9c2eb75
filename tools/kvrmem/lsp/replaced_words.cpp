#include "tools/kvrmem/lsp/replaced_words.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem::lsp {

namespace {

using kvrimage::address_range;
using kvrimage::text_piece;

/// Receives the pieces of a text and finds those after a given word that set its addresses again.
class replacement_finder {
public:
    replacement_finder(const document& of, const text_piece& examined) : text(of), piece(examined) {}

    void take(const text_piece& later) {
        if (later.where.offset < piece.where.end()) {
            return;
        }
        if (later.what == text_piece::kind::address) {
            statement = later.where.offset;
        }
        // The words of one range alternate: they do not replace each other, and together they set all
        // addresses of a later range.
        const bool takes_turns = later.step > 1 && !statement;
        if (later.what == text_piece::kind::word && later.addresses && !takes_turns) {
            take_addresses(later, *later.addresses);
        }
    }
    replaced_words finish() {
        std::ranges::sort(indexes, {}, &address_range::first);
        std::uint64_t next = 0; // all previous indexes were examined
        std::optional<std::uint64_t> kept;
        for (const auto& [first, last] : indexes) {
            kept = !kept && first > next ? next : kept;
            found.count += last >= next ? last - std::max(first, next) + 1 : 0;
            next = std::max(next, last + 1);
        }
        kept = !kept && next <= last_index() ? next : kept;
        if (kept) {
            found.kept = piece.addresses->first + *kept * piece.step;
        }
        return found;
    }

private:
    [[nodiscard]] std::uint64_t last_index() const {
        return (piece.addresses->last - piece.addresses->first) / piece.step;
    }
    void take_addresses(const text_piece& later, const address_range& set) {
        const auto& [first, last] = *piece.addresses;
        if (set.last < first || set.first > last) {
            return;
        }
        const std::uint64_t distance = set.first > first ? set.first - first : 0;
        const address_range again{(distance + piece.step - 1) / piece.step,
                                  (std::min(set.last, last) - first) / piece.step};
        if (again.first > again.last) {
            return;
        }
        if (indexes.empty()) {
            found.first_offset = later.where.offset;
        }
        found.last_offset = later.where.offset;
        if (again.first == 0 && found.end_before == 0) {
            found.end_before = begin_of(later);
        }
        indexes.push_back(again);
    }
    /// Returns the start of the statement or line of @p later.
    [[nodiscard]] std::uint64_t begin_of(const text_piece& later) const {
        const std::uint64_t begin = statement.value_or(later.where.offset);
        const text_buffer& lines = text.buffer();
        const std::uint64_t line = lines.start_of(lines.line_of(begin));
        return line >= piece.where.end() ? line : begin;
    }

    const document& text;
    const text_piece& piece;
    std::optional<std::uint64_t> statement; ///< last address read after the word
    std::vector<address_range> indexes;     ///< indexes of the piece's addresses that are set again
    replaced_words found;
};

} // namespace

replaced_words words_replaced_after(document& of, const text_piece& piece) {
    replacement_finder finder(of, piece);
    of.for_each_piece([&finder](const text_piece& each) { finder.take(each); });
    return finder.finish();
}

std::optional<text_piece> range_around(document& of, const text_piece& piece) {
    std::optional<text_piece> statement;
    bool has_words = false;
    bool is_done = false;
    of.for_each_piece([&](const text_piece& each) {
        const bool is_word = each.what == text_piece::kind::word;
        if (is_done || (!is_word && each.what != text_piece::kind::address)) {
            return;
        }
        if (!is_word && (!statement || has_words)) {
            is_done = statement && statement->where.end() > piece.where.offset;
            statement = is_done ? statement : std::optional(each);
            has_words = false;
        } else if (statement) {
            statement->where.length = each.where.end() - statement->where.offset;
            has_words = is_word;
        }
    });
    const bool is_of_it = statement && statement->addresses &&
                          statement->where.offset <= piece.where.offset &&
                          piece.where.end() <= statement->where.end();
    return is_of_it && statement->addresses->last != statement->addresses->first ? statement : std::nullopt;
}

std::optional<kvrimage::word> word_said_by(document& of, const text_piece& piece,
                                           const replaced_words& replaced) {
    const kvrimage::memory_image& image = *of.result().image;
    if (replaced.kept || piece.is_part) {
        const std::uint64_t address = replaced.kept.value_or(piece.addresses->first);
        return address <= image.last_address() ? image[address] : std::nullopt;
    }
    kvrimage::read_options options = of.reading();
    options.width = image.width();
    options.unit = options.unit ? options.unit : of.result().facts.unit;
    const std::string_view before = std::string_view(of.text()).substr(0, replaced.end_before);
    const kvrimage::read_result earlier = kvrimage::parse(before, options);
    return earlier.image && piece.addresses->first <= earlier.image->last_address()
               ? (*earlier.image)[piece.addresses->first]
               : std::nullopt;
}

} // namespace kvrmem::lsp
