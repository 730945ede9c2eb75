#include "kvrimage/formats/edit.h"
#include "tools/kvrmem/lsp/address_text.h"
#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/lsp/replaced_words.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem::lsp {

namespace {

using kvrimage::diagnostic;
using kvrimage::memory_image;
using kvrimage::place;
using kvrimage::radix;
using kvrimage::text_piece;

constexpr std::string_view quick_fix = "quickfix";
constexpr std::string_view fix_all = "source.fixAll";
constexpr std::string_view rewrite = "refactor.rewrite";

/// The parameters of a code action request.
struct action_request {
    document& of;
    kvrimage::span where;   ///< complete lines
    std::size_t cursor = 0; ///< start of the selection
    const json& kinds;      ///< null: all

    [[nodiscard]] bool wants(std::string_view kind) const {
        return kinds.is_null() || std::ranges::any_of(kinds, [kind](const json& each) {
                   return each.is_string() && kind.starts_with(each.get_ref<const std::string&>());
               });
    }
};

json action_of(const document& of, std::string title, std::string_view kind,
               const std::vector<kvrimage::text_edit>& edits) {
    return {{"title", std::move(title)}, {"kind", kind}, {"edit", of.workspace_edit(edits)}};
}

json command_action(const document& of, const std::string& title, const char* command,
                    std::vector<json> arguments) {
    arguments.insert(arguments.begin(), of.uri());
    return {{"title", title},
            {"kind", rewrite},
            {"command", {{"title", title}, {"command", command}, {"arguments", std::move(arguments)}}}};
}

bool touches(const place& one, const kvrimage::span& lines) {
    return one.line == 0 || (one.offset <= lines.end() && one.offset + one.length >= lines.offset);
}

bool is_in(const diagnostic& found, const kvrimage::span& lines) {
    return touches(found.where, lines) ||
           std::ranges::any_of(found.more, [&lines](const place& each) { return touches(each, lines); });
}

void add_quick_fixes(const action_request& request, json& all) {
    for (const diagnostic& each : request.of.repairable()) {
        if (!each.fix.empty() && is_in(each, request.where)) {
            json action = action_of(request.of, fmt::format("Fix: {}", each.repair), quick_fix, each.fix);
            action["isPreferred"] = true;
            all.push_back(std::move(action));
        }
    }
}

void add_fix_all(const action_request& request, json& all) {
    const auto count = std::ranges::count_if(request.of.repairable(),
                                             [](const diagnostic& each) { return !each.fix.empty(); });
    if (count != 0) {
        json action = command_action(request.of, "Make all certain repairs", "kvrmem.fixAll", {});
        action["kind"] = fix_all;
        all.push_back(std::move(action));
    }
}

/// Returns the word at the cursor, if the document can be edited.
std::optional<text_piece> editable_word(const action_request& request) {
    const kvrimage::read_result& found = request.of.result();
    const bool can_edit = found.image && found.facts.as->edit != nullptr;
    const auto piece = can_edit ? request.of.piece_at(request.cursor) : std::nullopt;
    const bool has_address =
        piece && piece->addresses && piece->addresses->last <= found.image->last_address();
    return has_address ? piece : std::nullopt;
}

std::string all_ones(std::uint32_t width) {
    return "0b" + std::string(width, '1');
}

void add_word_actions(const action_request& request, const text_piece& piece, json& all) {
    constexpr std::uint32_t widest_offered = 64;
    const memory_image& image = *request.of.result().image;
    if (piece.what != text_piece::kind::word || image.width() > widest_offered) {
        return;
    }
    const std::string address = address_text(piece.addresses->first, image.last_address());
    all.push_back(command_action(request.of, fmt::format("Set the word at {} to 0", address), "kvrmem.set",
                                 {address, "0"}));
    all.push_back(command_action(request.of, fmt::format("Set all bits of the word at {}", address),
                                 "kvrmem.set", {address, all_ones(image.width())}));
    all.push_back(command_action(request.of, fmt::format("Invert the word at {}", address), "kvrmem.invert",
                                 {address}));
}

/// Adds actions for the gap after the addresses at the cursor.
void add_gap_actions(const action_request& request, const text_piece& piece, json& all) {
    const memory_image& image = *request.of.result().image;
    if (piece.addresses->last == image.last_address()) {
        return;
    }
    const kvrimage::run next = *image.runs({piece.addresses->last + 1, image.last_address()}).begin();
    if (!next.value && may_set(request.of, next.addresses)) {
        const std::string addresses = addresses_text(next.addresses, image.last_address());
        all.push_back(
            command_action(request.of,
                           fmt::format("Set {} that {} not set to 0: {}",
                                       counted(next.addresses.last - next.addresses.first + 1, "word"),
                                       is_or_are(next.addresses.last - next.addresses.first + 1), addresses),
                           "kvrmem.set", {addresses, "0"}));
    }
}

/// Not offered if a word of the range is set again: its line would have an outdated word.
void add_range_actions(const action_request& request, const text_piece& piece, json& all) {
    const kvrimage::read_result& found = request.of.result();
    const auto range = found.facts.as->holds_ranges ? range_around(request.of, piece) : std::nullopt;
    if (range && range->addresses->last <= found.image->last_address() &&
        words_replaced_after(request.of, *range).count == 0) {
        const std::string addresses = addresses_text(*range->addresses, found.image->last_address());
        all.push_back(command_action(request.of,
                                     fmt::format("Give each word of {} a line of its own", addresses),
                                     "kvrmem.splitRange", {addresses}));
    }
}

struct named_radix {
    radix which;
    const char* name;  ///< as in the option
    const char* title; ///< "binary"
};
constexpr std::array<named_radix, 5> named_radixes = {{{radix::bin, "bin", "binary"},
                                                       {radix::oct, "oct", "octal"},
                                                       {radix::dec, "dec", "signed decimal"},
                                                       {radix::uns, "uns", "unsigned decimal"},
                                                       {radix::hex, "hex", "hexadecimal"}}};

/// Conversion rewrites the file without its comments.
void add_radix_actions(const action_request& request, json& all) {
    const kvrimage::read_result& found = request.of.result();
    const bool can_write = found.image && found.facts.data_radix && found.facts.as->write != nullptr;
    if (!can_write || !found.facts.as->states_radix || request.of.has_base()) {
        return;
    }
    const auto offered = found.facts.as->data_radixes;
    for (const named_radix& each : named_radixes) {
        const bool is_possible = offered.empty() || std::ranges::find(offered, each.which) != offered.end();
        if (is_possible && each.which != *found.facts.data_radix) {
            all.push_back(
                command_action(request.of,
                               fmt::format("Write the file with {} words{}", each.title,
                                           found.facts.has_comments ? ", without its comments" : ""),
                               "kvrmem.changeRadix", {each.name}));
        }
    }
}

kvrimage::span whole_lines(const document& of, const kvrimage::span& where) {
    const text_buffer& lines = of.buffer();
    const std::size_t begin = lines.start_of(lines.line_of(static_cast<std::size_t>(where.offset)));
    return {begin, lines.end_of(lines.line_of(where.end())) - begin};
}

} // namespace

json code_actions_in(document& of, const json& params) {
    const kvrimage::span selected = of.span_of(required(params, "range"));
    const action_request request{of, whole_lines(of, selected), static_cast<std::size_t>(selected.offset),
                                 member(member(params, "context"), "only")};
    json all = json::array();
    if (!of.is_text() || of.result().facts.as == nullptr) {
        return all;
    }
    if (request.wants(quick_fix)) {
        add_quick_fixes(request, all);
    }
    if (request.wants(fix_all)) {
        add_fix_all(request, all);
    }
    if (request.wants(rewrite) && !of.is_broken()) {
        if (const auto piece = editable_word(request)) {
            add_word_actions(request, *piece, all);
            add_range_actions(request, *piece, all);
            add_gap_actions(request, *piece, all);
        }
        add_radix_actions(request, all);
    }
    return all;
}

} // namespace kvrmem::lsp
