#include "kvrimage/formats/rif/rif_search.h"

#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/fast_word_lines.h"
#include "kvrimage/formats/rif/rif_parser.h"

namespace kvrimage {

namespace {

/// Finds the words of one address.
class rif_search final : public rif_sink {
public:
    rif_search(std::string_view contents, std::uint64_t of)
        : text(contents),
          parser(contents, *this),
          address(of) {}

    std::optional<span> find(bool only_first) {
        while (!parser.at_end() && (!only_first || !found)) {
            if (!skip_fast_line()) {
                first_only = only_first;
                parser.parse_line();
            }
        }
        return found;
    }
    void take(const rif_piece& piece) override {
        const bool is_it = piece.what == rif_piece::kind::word && piece.address == address;
        if (is_it && (!first_only || !found)) {
            found = piece.where;
        }
    }

private:
    /// Returns false for a line that may contain the word.
    bool skip_fast_line() {
        const fast_word_line line = find_fast_word_line(text, parser.position());
        const std::uint64_t first = parser.next_address();
        if (line.end == 0 || (first <= address && address - first < line.count)) {
            return false;
        }
        const std::uint64_t next = first != no_rif_address ? first + line.count : first;
        parser.skip_to(line.end, line.is_address ? line.address : next);
        return true;
    }

    std::string_view text;
    rif_parser parser;
    std::uint64_t address;
    bool first_only = false;
    std::optional<span> found;
};

} // namespace

std::optional<span> first_rif_word(std::string_view contents, std::uint64_t address) {
    return rif_search(contents, address).find(true);
}

std::optional<place> find_rif_word(std::string_view contents, const read_options& options,
                                   std::uint64_t address) {
    const std::uint64_t base = options.base.value_or(0);
    if (base > highest_rif_address || address > highest_rif_address - base) {
        return std::nullopt;
    }
    const std::optional<span> found = rif_search(contents, base + address).find(false);
    return found ? std::optional(line_place(contents, *found)) : std::nullopt;
}

} // namespace kvrimage
