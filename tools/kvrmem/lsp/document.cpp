#include "tools/kvrmem/lsp/document.h"

#include "tools/kvrmem/files/broken_file.h"

#include <algorithm>
#include <utility>

namespace kvrmem::lsp {

namespace {

int hex_digit(char character) {
    constexpr std::string_view digits = "0123456789abcdef0123456789ABCDEF";
    const std::size_t found = digits.find(character);
    return found == std::string_view::npos ? -1 : static_cast<int>(found % 16);
}

std::string percent_decoded(std::string_view text) {
    std::string decoded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool is_escape = text[at] == '%' && at + 2 < text.size() && hex_digit(text[at + 1]) >= 0 &&
                               hex_digit(text[at + 2]) >= 0;
        decoded +=
            is_escape ? static_cast<char>(16 * hex_digit(text[at + 1]) + hex_digit(text[at + 2])) : text[at];
        at += is_escape ? 2 : 0;
    }
    return decoded;
}

text_position position_in(const json& position) {
    return {required_number(position, "line"), required_number(position, "character")};
}

} // namespace

std::string file_name_of(std::string_view uri) {
    return percent_decoded(uri.substr(uri.find_last_of('/') + 1));
}

document::document(std::string uri, json version_of_text, std::string text, const client_abilities& of_client)
    : name(std::move(uri)),
      number(std::move(version_of_text)),
      lines(std::move(text), of_client.encoding),
      client(of_client) {}

void document::forget() {
    checked.reset();
    with_repairs.reset();
    is_published = false;
}

void document::use(const file_settings& of_file) {
    given = of_file;
    given.check.read.file_name = file_name_of(name);
    given.check.read.keep_going = true;
    forget();
}

void document::change(const json& version, const json& changes) {
    if (!changes.is_array()) {
        throw request_error(error_code::invalid_params, "'contentChanges' is not an array");
    }
    forget();
    number = version;
    for (const json& each : changes) {
        const std::string& replacement = required_text(each, "text");
        const json& replaced = member(each, "range");
        if (replaced.is_null()) {
            lines = text_buffer(replacement, client.encoding);
        } else {
            const kvrimage::span where = span_of(replaced);
            lines.replace(static_cast<std::size_t>(where.offset), where.end(), replacement);
        }
    }
}

const kvrimage::read_result& document::result() {
    if (!checked) {
        checked = kvrimage::check(text(), given.check);
        options = given.check.read;
        options.as = checked->facts.as;
    }
    return *checked;
}

const std::vector<kvrimage::diagnostic>& document::repairable() {
    if (!with_repairs) {
        kvrimage::check_options asked = given.check;
        asked.read.as = result().facts.as;
        asked.read.wants_repairs = true;
        with_repairs = kvrimage::check(text(), asked).diagnostics;
    }
    return *with_repairs;
}

const kvrimage::read_options& document::reading() {
    static_cast<void>(result());
    return options;
}

bool document::has_base() {
    return reading().base.value_or(0) != 0;
}

bool document::is_broken() {
    return first_broken(result()) != nullptr;
}

bool document::is_text() {
    return result().facts.as == nullptr || result().facts.as->has_lines;
}

void document::for_each_piece(const kvrimage::piece_taker& take) {
    const kvrimage::read_result& found = result();
    if (found.facts.as != nullptr && found.facts.as->find_pieces != nullptr) {
        found.facts.as->find_pieces(text(), options, found, take);
    }
}

std::optional<kvrimage::text_piece> document::piece_at(std::size_t offset) {
    std::optional<kvrimage::text_piece> found;
    for_each_piece([&](const kvrimage::text_piece& piece) {
        const bool has_addresses = piece.what == kvrimage::text_piece::kind::word ||
                                   piece.what == kvrimage::text_piece::kind::address;
        // Of two pieces that meet at the offset, the later one is used.
        if (has_addresses && piece.where.offset <= offset && offset <= piece.where.end()) {
            found = piece;
        }
    });
    return found;
}

std::optional<kvrimage::place> document::place_of(std::uint64_t address) {
    const kvrimage::read_result& found = result();
    const bool is_there = found.image && address <= found.image->last_address();
    return is_there && found.facts.as->find_word != nullptr
               ? found.facts.as->find_word(text(), options, address)
               : std::nullopt;
}

json document::position(std::uint64_t offset) const {
    const text_position where =
        lines.position_of(static_cast<std::size_t>(std::min<std::uint64_t>(offset, text().size())));
    return {{"line", where.line}, {"character", where.character}};
}

json document::range(const kvrimage::span& where) const {
    json start = position(where.offset);
    return {{"start", std::move(start)}, {"end", position(where.end())}};
}

std::size_t document::offset_of(const json& position) const {
    return lines.offset_of(position_in(position));
}

kvrimage::span document::span_of(const json& range) const {
    const std::size_t begin = offset_of(required(range, "start"));
    const std::size_t end = offset_of(required(range, "end"));
    return {std::min(begin, end), std::max(begin, end) - std::min(begin, end)};
}

json document::edits(const std::vector<kvrimage::text_edit>& changes) const {
    json all = json::array();
    for (const kvrimage::text_edit& each : changes) {
        all.push_back({{"range", range({each.offset, each.length})}, {"newText", each.replacement}});
    }
    return all;
}

json document::workspace_edit(const std::vector<kvrimage::text_edit>& changes) const {
    if (!client.takes_versions) {
        return {{"changes", {{uri(), edits(changes)}}}};
    }
    const json one = {{"textDocument", {{"uri", uri()}, {"version", version()}}}, {"edits", edits(changes)}};
    return {{"documentChanges", json::array({one})}};
}

} // namespace kvrmem::lsp
