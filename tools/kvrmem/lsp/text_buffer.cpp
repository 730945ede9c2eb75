#include "tools/kvrmem/lsp/text_buffer.h"

#include "kvrimage/diagnostics/utf8_character.h"

#include <algorithm>
#include <utility>

namespace kvrmem::lsp {

namespace {

constexpr unsigned char first_of_two_units = 0xF0; ///< of UTF-8, what UTF-16 has a surrogate pair for

bool has_only_ascii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80U; });
}

/// UTF-16 units that begin with @p byte of UTF-8.
std::uint64_t units_of(char byte) {
    if (kvrimage::is_continuation(byte)) {
        return 0;
    }
    return static_cast<unsigned char>(byte) >= first_of_two_units ? 2 : 1;
}

} // namespace

text_buffer::text_buffer(std::string text, position_encoding unit_of_positions)
    : contents(std::move(text)),
      unit(unit_of_positions),
      is_ascii(has_only_ascii(contents)),
      starts{0} {
    find_lines(0, contents.size(), starts);
}

void text_buffer::find_lines(std::size_t begin, std::size_t end, std::vector<std::size_t>& found) const {
    for (std::size_t at = contents.find_first_of("\n\r", begin); at < end;
         at = contents.find_first_of("\n\r", at)) {
        const bool is_pair = contents[at] == '\r' && at + 1 < contents.size() && contents[at + 1] == '\n';
        at += is_pair ? 2 : 1;
        if (at <= end) {
            found.push_back(at);
        }
    }
}

std::uint64_t text_buffer::units_in(std::size_t begin, std::size_t end) const {
    if (is_ascii || unit == position_encoding::utf8) {
        return end - begin;
    }
    std::uint64_t units = 0;
    for (std::size_t at = begin; at < end; ++at) {
        units += units_of(contents[at]);
    }
    return units;
}

std::size_t text_buffer::end_of(std::size_t line) const {
    std::size_t end = line + 1 < starts.size() ? starts[line + 1] : contents.size();
    if (line + 1 < starts.size()) {
        const bool is_pair =
            end - starts[line] >= 2 && contents[end - 1] == '\n' && contents[end - 2] == '\r';
        end -= is_pair ? 2 : 1;
    }
    return end;
}

std::size_t text_buffer::offset_of(const text_position& where) const {
    if (where.line >= starts.size()) {
        return contents.size();
    }
    const auto line = static_cast<std::size_t>(where.line);
    const std::size_t begin = starts[line];
    const std::size_t end = end_of(line);
    if (is_ascii || unit == position_encoding::utf8) {
        std::size_t at =
            begin + static_cast<std::size_t>(std::min<std::uint64_t>(where.character, end - begin));
        while (at > begin && at < end && kvrimage::is_continuation(contents[at])) {
            --at;
        }
        return at;
    }
    std::uint64_t units = 0;
    std::size_t at = begin;
    while (at < end) {
        units += units_of(contents[at]);
        if (units > where.character) {
            return at;
        }
        ++at;
        while (at < end && kvrimage::is_continuation(contents[at])) {
            ++at;
        }
    }
    return end;
}

std::size_t text_buffer::line_of(std::size_t offset) const {
    return static_cast<std::size_t>(std::ranges::upper_bound(starts, offset) - starts.begin()) - 1;
}

text_position text_buffer::position_of(std::size_t offset) const {
    const std::size_t line = line_of(offset);
    const bool goes_on = last_asked.where.line == line && last_asked.offset <= offset;
    const std::size_t from = goes_on ? last_asked.offset : starts[line];
    const std::uint64_t before = goes_on ? last_asked.where.character : 0;
    last_asked = {offset, {line, before + units_in(from, offset)}};
    return last_asked.where;
}

void text_buffer::replace(std::size_t begin, std::size_t end, std::string_view replacement) {
    last_asked = {};
    contents.replace(begin, end - begin, replacement);
    is_ascii = is_ascii && has_only_ascii(replacement);
    // Whether a line begins at an offset depends on the bytes before and after it.
    const auto kept = std::ranges::lower_bound(starts, begin);
    const auto rest = std::ranges::upper_bound(starts, end);
    const auto first_changed = kept == starts.begin() ? kept + 1 : kept;
    std::vector<std::size_t> changed;
    const std::size_t from = *(first_changed - 1);
    const std::size_t to =
        rest == starts.end() ? contents.size() : *rest - end + begin + replacement.size() - 1;
    find_lines(from, to, changed);
    std::for_each(rest, starts.end(),
                  [&](std::size_t& start) { start = start - end + begin + replacement.size(); });
    const auto place = starts.erase(first_changed, rest);
    starts.insert(place, changed.begin(), changed.end());
}

} // namespace kvrmem::lsp
