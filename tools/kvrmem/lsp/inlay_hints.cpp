#include "kvrimage/bytes/bytes_of_words.h"
#include "tools/kvrmem/lsp/address_text.h"
#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/lsp/line_cursor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace kvrmem::lsp {

namespace {

using kvrimage::text_piece;

/// More than any screen has lines; a client may ask for the hints of a whole file.
constexpr std::size_t most_hints = 10000;

/// Returns the last memory address in the file's unit.
std::uint64_t highest_in_file(document& of) {
    const kvrimage::memory_image& image = *of.result().image;
    const bool counts_bytes = of.result().facts.unit == kvrimage::address_unit::byte;
    const std::uint64_t step = counts_bytes ? kvrimage::bytes_of_width(image.width()) : 1;
    return of.reading().base.value_or(0) + image.depth() * step - 1;
}

/// Finds the first word of each line that has no address before it.
class line_starts {
public:
    /// @param taker called with these words
    line_starts(document& of, const kvrimage::span& wanted,
                const std::function<void(const text_piece&)>& taker)
        : lines(of.buffer()),
          shown(wanted),
          take_start(taker) {}

    void take(const text_piece& piece) {
        const bool counts = piece.what == text_piece::kind::word || piece.what == text_piece::kind::address;
        if (!counts || piece.where.offset > shown.end()) {
            return;
        }
        const std::size_t line = lines.line_of(piece.where.offset);
        if (line != line_at_hand) {
            finish();
            line_at_hand = line;
            const bool is_wanted = piece.where.offset >= shown.offset && piece.what == text_piece::kind::word;
            start = is_wanted && piece.addresses ? std::optional(piece) : std::nullopt;
        } else if (start && piece.what == text_piece::kind::address && piece.addresses &&
                   piece.in_file == start->in_file) {
            start.reset(); // the address is in a column on the right
        }
    }
    /// Call after the last piece.
    void finish() {
        if (start) {
            take_start(*std::exchange(start, std::nullopt));
        }
    }

private:
    line_cursor lines;
    kvrimage::span shown;
    const std::function<void(const text_piece&)>& take_start;
    std::optional<std::size_t> line_at_hand;
    std::optional<text_piece> start; ///< of the current line
};

} // namespace

/// Shows the file address of the first word of each line without an address.
json inlay_hints_in(document& of, const json& params) {
    const kvrimage::span wanted = of.span_of(required(params, "range"));
    json hints = json::array();
    if (!of.result().image) {
        return hints;
    }
    const std::uint64_t highest = highest_in_file(of);
    const std::function<void(const text_piece&)> add_hint = [&](const text_piece& word) {
        if (hints.size() < most_hints) {
            hints.push_back({{"position", of.position(word.where.offset)},
                             {"label", address_text(word.in_file, highest)},
                             {"paddingRight", true}});
        }
    };
    line_starts starts(of, wanted, add_hint);
    of.for_each_piece([&starts](const text_piece& piece) { starts.take(piece); });
    starts.finish();
    return hints;
}

} // namespace kvrmem::lsp
