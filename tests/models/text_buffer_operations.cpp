#include "tests/models/text_buffer_operations.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace kvr_test {

namespace {

using kvrmem::lsp::position_encoding;
using kvrmem::lsp::text_position;

constexpr std::size_t longest_text = 4000;

} // namespace

plain_text::plain_text(std::string initial, position_encoding unit_of_positions)
    : contents(std::move(initial)),
      unit(unit_of_positions) {}

std::vector<text_position> plain_text::positions() const {
    std::vector<text_position> all;
    text_position here;
    for (std::size_t at = 0; at <= contents.size(); ++at) {
        all.push_back(here);
        if (at == contents.size()) {
            break;
        }
        const bool ends_line =
            contents[at] == '\n' ||
            (contents[at] == '\r' && (at + 1 == contents.size() || contents[at + 1] != '\n'));
        here = ends_line ? text_position{here.line + 1, 0}
                         : text_position{here.line, here.character + units_of(contents[at])};
    }
    return all;
}

std::size_t plain_text::offset_of(const text_position& where) const {
    const std::vector<text_position> all = positions();
    std::size_t found = contents.size();
    for (std::size_t at = contents.size() + 1; at-- > 0;) {
        if (all[at].line == where.line) {
            const bool is_line_end = at < contents.size() && (contents[at] == '\n' || contents[at] == '\r');
            const bool is_end = at == contents.size() || is_line_end;
            found = at;
            if (is_begin(at) && all[at].character <= where.character &&
                (!is_end || !is_within_line_end(at))) {
                return at;
            }
        }
    }
    return found;
}

bool plain_text::is_begin(std::size_t at) const {
    return at == contents.size() || (static_cast<unsigned char>(contents[at]) & 0xC0U) != 0x80U;
}

bool plain_text::is_within_line_end(std::size_t at) const {
    return at > 0 && at < contents.size() && contents[at] == '\n' && contents[at - 1] == '\r';
}

std::uint64_t plain_text::units_of(char byte) const {
    const auto value = static_cast<unsigned char>(byte);
    if (unit == position_encoding::utf8) {
        return 1;
    }
    return (value & 0xC0U) == 0x80U ? 0 : (value >= 0xF0U ? 2 : 1);
}

text_buffer_operations::text_buffer_operations(choices& source)
    : chosen(source),
      takes_any_bytes(source.once_in(3)),
      model(any_text(),
            takes_any_bytes || source.once_in(2) ? position_encoding::utf8 : position_encoding::utf16),
      buffer(model.text(), model.unit_of_positions()) {
    compare_all();
}

/// A text whose positions are hard to count; sometimes a long one.
std::string text_buffer_operations::any_text() {
    constexpr std::array<std::string_view, 11> characters = {
        "a", "1F ", "\n", "\r", "\r\n", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xF0\x90\x8D\x88z",
        ";", "b"};
    constexpr std::array<std::string_view, 6> bytes = {"\r", "\n", "\x80", "\xFF", "z", "\xC3"};
    const bool is_ascii = chosen.once_in(3);
    std::string text;
    for (std::uint32_t count = chosen.below(chosen.once_in(10) ? 200 : 6); count > 0; --count) {
        text += takes_any_bytes ? chosen.one_of(bytes) : characters[chosen.below(is_ascii ? 5 : 11)];
    }
    return text;
}

std::size_t text_buffer_operations::any_offset() {
    if (takes_any_bytes) {
        return chosen.below(static_cast<std::uint32_t>(model.text().size() + 1));
    }
    const text_position where = {chosen.below(static_cast<std::uint32_t>(buffer.line_count() + 1)),
                                 chosen.below(chosen.once_in(4) ? 300 : 8)};
    const std::size_t offset = buffer.offset_of(where);
    expect(offset == model.offset_of(where), "the offset of a position", offset);
    return offset;
}

void text_buffer_operations::step() {
    ++steps;
    const auto [begin, end] = std::minmax({any_offset(), any_offset()});
    const std::string replacement = model.text().size() > longest_text ? "" : any_text();
    buffer.replace(begin, end, replacement);
    model.replace(begin, end - begin, replacement);
    // Choose one of the queries, so that the previous query varies.
    if (chosen.once_in(2)) {
        compare_all();
        return;
    }
    const std::vector<text_position> positions = model.positions();
    for (std::uint32_t count = chosen.below(5); count > 0; --count) {
        const std::size_t at = chosen.below(static_cast<std::uint32_t>(positions.size()));
        if (model.is_begin(at)) {
            expect(buffer.position_of(at) == positions[at], "a position", at);
        }
        expect(buffer.line_of(at) == positions[at].line, "the line of an offset", at);
    }
}

void text_buffer_operations::compare_all() {
    expect(buffer.text() == model.text(), "the text", 0);
    const std::vector<text_position> positions = model.positions();
    expect(buffer.line_count() == positions.back().line + 1, "the number of lines", positions.size());
    for (std::size_t at = 0; at < positions.size(); ++at) {
        if (model.is_begin(at)) {
            expect(buffer.position_of(at) == positions[at], "a position", at);
        }
        if (at == 0 || positions[at - 1].line != positions[at].line) {
            const std::size_t line = static_cast<std::size_t>(positions[at].line);
            expect(buffer.start_of(line) == at, "the begin of a line", at);
            const std::size_t end = std::min(model.text().find_first_of("\r\n", at), model.text().size());
            expect(buffer.end_of(line) == end, "the end of a line", at);
        }
    }
}

void text_buffer_operations::expect(bool holds, std::string_view what, std::size_t at) const {
    if (!holds) {
        throw std::logic_error(fmt::format("{} at {} after step {}", what, at, steps));
    }
}

} // namespace kvr_test
