#include "tools/kvrmem/lsp/outline.h"

#include "tools/kvrmem/lsp/line_cursor.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace kvrmem::lsp {

namespace {

using kvrimage::span;
using kvrimage::text_piece;

constexpr std::size_t least_run = 3;
constexpr std::size_t least_comment = 2;

class outline_builder {
public:
    explicit outline_builder(const document& of) : text(of.text()), lines(of.buffer()) {}

    void take(const text_piece& piece) {
        const std::size_t line = lines.line_of(piece.where.offset);
        if (piece.what != text_piece::kind::comment) {
            end_comments(line);
            last_used_line = line;
        }
        switch (piece.what) {
        case text_piece::kind::comment:
            take_comment(piece.where, line);
            break;
        case text_piece::kind::keyword:
        case text_piece::kind::setting:
            take_setting(piece);
            break;
        case text_piece::kind::address:
            take_address(piece.where, line);
            break;
        case text_piece::kind::word:
            take_word(piece, line);
            break;
        case text_piece::kind::checksum:
        case text_piece::kind::record:
            break;
        }
    }
    outline finish() {
        end_comments(std::nullopt);
        end_run();
        return std::move(found);
    }

private:
    void take_setting(const text_piece& piece) {
        if (!found.blocks.empty()) {
            return;
        }
        if (piece.what == text_piece::kind::keyword) {
            found.settings.push_back({piece.where, {}});
        } else if (!found.settings.empty() && found.settings.back().value.length == 0) {
            found.settings.back().value = piece.where;
        }
    }

    /// Of several addresses on one line, such as the two of a range, the first counts.
    void take_address(const span& where, std::size_t line) {
        if (!address || address_line != line) {
            address = where;
            address_line = line;
        }
    }

    void take_comment(const span& where, std::size_t line) {
        const bool is_alone = line != last_used_line;
        const std::size_t last = lines.line_of(std::max(where.end(), where.offset + 1) - 1);
        if (!is_alone) {
            return;
        }
        if (comments && comments->last + 1 >= line) {
            comments->last = last;
        } else {
            end_comments(std::nullopt);
            comments = line_range{line, last};
        }
    }
    /// @param line start of another piece
    void end_comments(std::optional<std::size_t> line) {
        if (comments && line && comments->last == *line) { // its last line has another piece
            comments->last -= comments->last > comments->first ? 1U : 0U;
        }
        if (comments && comments->last - comments->first + 1 >= least_comment) {
            found.comments.push_back(*comments);
        }
        comments.reset();
    }

    void take_word(const text_piece& piece, std::size_t line) {
        visit_run(piece.where.in(text), line);
        const span begin = std::exchange(address, std::nullopt).value_or(piece.where);
        if (!piece.addresses) {
            return;
        }
        const auto& [first, last] = *piece.addresses;
        const bool goes_on = !found.blocks.empty() && first > previous_first &&
                             first <= found.blocks.back().addresses.last + 1;
        const bool is_part = !found.blocks.empty() && first == previous_first; // of a word in two records
        previous_first = first;
        if (!goes_on && !is_part) {
            found.blocks.push_back({{line, line}, begin, *piece.addresses});
        }
        outline_block& block = found.blocks.back();
        block.lines.last = line;
        block.where.length = piece.where.end() - block.where.offset;
        block.addresses.last = std::max(block.addresses.last, last);
    }

    void visit_run(std::string_view word, std::size_t line) {
        const bool is_equal = run_is_open && word == run_text && line <= run.last + 1;
        if (is_equal && !line_is_mixed(line)) {
            run.last = line;
            return;
        }
        const bool breaks_line = run_is_open && line == run.last;
        if (breaks_line && run.last > run.first) {
            run.last -= 1; // the previous lines form one run
        } else if (breaks_line) {
            run_is_open = false;
        }
        end_run();
        mixed_line = breaks_line ? std::optional(line) : mixed_line;
        run = {line, line};
        run_text = word;
        run_is_open = !line_is_mixed(line);
    }
    [[nodiscard]] bool line_is_mixed(std::size_t line) const { return mixed_line == line; }
    void end_run() {
        if (run_is_open && run.last - run.first + 1 >= least_run) {
            found.runs.push_back(run);
        }
        run_is_open = false;
    }

    std::string_view text;
    line_cursor lines;
    outline found;
    std::optional<line_range> comments;
    std::optional<span> address; ///< of the next word
    std::size_t address_line = 0;
    std::optional<std::size_t> last_used_line; ///< last line with anything but comments
    std::optional<std::size_t> mixed_line;     ///< has words of several texts
    std::uint64_t previous_first = 0;
    line_range run;
    std::string_view run_text;
    bool run_is_open = false;
};

} // namespace

outline outline_of(document& of) {
    outline_builder builder(of);
    of.for_each_piece([&builder](const text_piece& piece) { builder.take(piece); });
    return builder.finish();
}

} // namespace kvrmem::lsp
