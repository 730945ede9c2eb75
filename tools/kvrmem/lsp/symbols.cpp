#include "tools/kvrmem/lsp/address_text.h"
#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/lsp/outline.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace kvrmem::lsp {

namespace {

/// Symbol kinds of the protocol.
enum symbol_kind : int { symbol_property = 7, symbol_number = 16, symbol_array = 18, symbol_object = 19 };

/// Limits the list: more symbols are not useful and cost as much as the file.
constexpr std::size_t most_symbols = 5000;

json symbol(const document& of, std::string name, std::string detail, symbol_kind kind,
            const kvrimage::span& where) {
    const json range = of.range(where);
    return {{"name", std::move(name)},
            {"detail", std::move(detail)},
            {"kind", static_cast<int>(kind)},
            {"range", range},
            {"selectionRange", range}};
}

kvrimage::span united(const outline_setting& setting) {
    const std::uint64_t end = setting.value.length != 0 ? setting.value.end() : setting.name.end();
    return {setting.name.offset, end - setting.name.offset};
}

/// Adds one symbol for the settings before the words, with a child for each setting.
void add_header(const document& of, const outline& found, const std::string& summary, json& all) {
    if (found.settings.empty()) {
        return;
    }
    json children = json::array();
    for (const outline_setting& each : found.settings) {
        if (each.value.length != 0 && children.size() < most_symbols) {
            children.push_back(symbol(of, std::string(each.name.in(of.text())),
                                      std::string(each.value.in(of.text())), symbol_property, united(each)));
        }
    }
    const kvrimage::span first = united(found.settings.front());
    const kvrimage::span last = united(found.settings.back());
    json header = symbol(of, "header", summary, symbol_object, {first.offset, last.end() - first.offset});
    header["children"] = std::move(children);
    all.push_back(std::move(header));
}

/// Returns "MIF, 16 words of 8 bits".
std::string summary_of(const kvrimage::read_result& found) {
    std::string text(found.facts.as->title);
    if (found.image) {
        text += fmt::format(", {} of {}", counted(found.image->depth(), "word"),
                            counted(found.image->width(), "bit"));
    }
    return text;
}

/// Parses an address as on a command line, or hexadecimal digits: "0x1F", "31", "1F".
std::optional<std::uint64_t> address_in(const std::string& query) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const auto number = read_human_size(query, largest);
    return number ? number : read_human_size("0x" + query, largest);
}

} // namespace

json symbols_in(document& of, const json& /*params*/) {
    json all = json::array();
    const outline found = outline_of(of);
    if (of.result().facts.as == nullptr) {
        return all;
    }
    add_header(of, found, summary_of(of.result()), all);
    const std::uint64_t last = of.result().image ? of.result().image->last_address() : 0;
    for (std::size_t index = 0; index < std::min(found.blocks.size(), most_symbols); ++index) {
        const outline_block& block = found.blocks[index];
        all.push_back(symbol(of, addresses_text(block.addresses, last),
                             counted(block.addresses.last - block.addresses.first + 1, "word"), symbol_array,
                             block.where));
    }
    return all;
}

json symbols_of_address(std::span<document* const> all, const std::string& query) {
    json found = json::array();
    const auto address = address_in(query);
    for (document* const each : all) {
        const auto where = address ? each->place_of(*address) : std::nullopt;
        if (where) {
            const kvrimage::memory_image& image = *each->result().image;
            found.push_back(
                {{"name", fmt::format("{} = {}", address_text(*address, image.last_address()),
                                      shown_or_gap(image[*address], {}))},
                 {"kind", static_cast<int>(symbol_number)},
                 {"containerName", file_name_of(each->uri())},
                 {"location",
                  {{"uri", each->uri()}, {"range", each->range({where->offset, where->length})}}}});
        }
    }
    return found;
}

} // namespace kvrmem::lsp
