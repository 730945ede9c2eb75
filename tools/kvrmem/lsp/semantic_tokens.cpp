#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/lsp/line_cursor.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace kvrmem::lsp {

namespace {

using kvrimage::span;
using kvrimage::text_piece;

/// By kind of text_piece.
constexpr std::array<const char*, 7> token_types = {"comment", "keyword",   "enumMember", "variable",
                                                    "number",  "decorator", "type"};

/// Maximum number of tokens, each with five numbers; more than a client shows at once.
constexpr std::size_t most_tokens = 50000;

/// Encodes tokens relative to the previous one.
class token_list {
public:
    explicit token_list(const text_buffer& of) : buffer(of), lines(of) {}

    /// A piece of several lines becomes one token per line.
    void add(const text_piece& piece) {
        std::uint64_t begin = piece.where.offset;
        while (begin < piece.where.end() && count < most_tokens) {
            const std::size_t line = lines.line_of(begin);
            const std::uint64_t end = std::min<std::uint64_t>(piece.where.end(), buffer.end_of(line));
            if (end > begin) {
                add_token(begin, end, static_cast<std::size_t>(piece.what));
            }
            begin = line + 1 < buffer.line_count() ? buffer.start_of(line + 1) : piece.where.end();
        }
    }
    [[nodiscard]] json result() const { return {{"data", data}}; }

private:
    void add_token(std::uint64_t begin, std::uint64_t end, std::size_t type) {
        const text_position from = buffer.position_of(begin);
        const text_position to = buffer.position_of(end);
        const std::uint64_t line_step = from.line - previous.line;
        data.push_back(line_step);
        data.push_back(line_step == 0 ? from.character - previous.character : from.character);
        data.push_back(to.character - from.character);
        data.push_back(type);
        data.push_back(0); // no modifiers
        previous = from;
        ++count;
    }

    const text_buffer& buffer;
    line_cursor lines;
    json data = json::array();
    text_position previous;
    std::size_t count = 0;
};

json tokens_within(document& of, const span& wanted) {
    token_list tokens(of.buffer());
    of.for_each_piece([&](const text_piece& piece) {
        if (piece.where.offset < wanted.end() && piece.where.end() > wanted.offset) {
            tokens.add(piece);
        }
    });
    return tokens.result();
}

} // namespace

json semantic_tokens_in(document& of, const json& /*params*/) {
    return tokens_within(of, {0, of.text().size()});
}

json semantic_tokens_in_range(document& of, const json& params) {
    return tokens_within(of, of.span_of(required(params, "range")));
}

json semantic_token_legend() {
    return {{"tokenTypes", token_types}, {"tokenModifiers", json::array()}};
}

} // namespace kvrmem::lsp
