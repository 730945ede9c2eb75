#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/visible_text.h"
#include "tools/kvrmem/lsp/address_text.h"
#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/lsp/replaced_words.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kvrmem::lsp {

namespace {

using kvrimage::memory_image;
using kvrimage::radix;
using kvrimage::text_piece;
using kvrimage::word;

constexpr std::size_t longest_value = 200;        ///< in characters
constexpr std::uint32_t widest_in_decimal = 4096; ///< in bits; conversion takes superlinear time

/// Lines with a name and a value.
class hover_text {
public:
    void add(std::string_view name, std::string_view value) {
        const bool is_long = value.size() > longest_value;
        lines += fmt::format("{:<10} {}{}\n", name, value.substr(0, longest_value), is_long ? "..." : "");
    }
    [[nodiscard]] json contents() const {
        return {{"kind", "markdown"}, {"value", fmt::format("```text\n{}```", lines)}};
    }

private:
    std::string lines;
};

struct shown_radix {
    std::string_view name;
    radix digits;
};
constexpr std::array<shown_radix, 5> all_radixes = {{{"hex", radix::hex},
                                                     {"binary", radix::bin},
                                                     {"octal", radix::oct},
                                                     {"unsigned", radix::uns},
                                                     {"signed", radix::dec}}};

/// Returns the bytes of the word as characters, "." for invisible ones; "" if all are invisible.
std::string characters_of(const word& value) {
    constexpr std::uint32_t bits_of_character = 8;
    std::string text = value.width() % bits_of_character == 0
                           ? value.to_bytes(kvrimage::byte_order::big).value_or("")
                           : std::string();
    bool has_visible = false;
    for (char& character : text) {
        const bool is_visible = character >= ' ' && character <= '~';
        has_visible = has_visible || (is_visible && character != ' ');
        character = is_visible ? character : '.';
    }
    return has_visible ? fmt::format("'{}'", text) : "";
}

void add_value(const word& value, const std::optional<word_radix>& own, hover_text& text) {
    for (const auto& [name, digits] : all_radixes) {
        const bool is_decimal = digits == radix::uns || digits == radix::dec;
        if (is_decimal && value.width() > widest_in_decimal) {
            continue;
        }
        if (const auto shown = value.to_text(digits)) {
            text.add(name, *shown);
        }
    }
    if (own && own->is_fixed_point() && own->bits() == value.width()) {
        if (const auto fraction = shown(value, *own)) {
            text.add(fmt::format("fixed:{}.{}", own->integer_bits, own->fraction_bits), *fraction);
        }
    }
    if (const std::string characters = characters_of(value); !characters.empty()) {
        text.add("text", characters);
    }
}

void add_address(document& of, const text_piece& piece, hover_text& text) {
    const memory_image& image = *of.result().image;
    const std::uint64_t first = piece.addresses->first;
    text.add("address", fmt::format("{} ({})", address_text(first, image.last_address()), first));
    if (of.result().facts.unit == kvrimage::address_unit::byte) {
        const std::uint64_t bytes = kvrimage::bytes_of_width(image.width());
        text.add("byte", fmt::format("0x{:X} ({})", first * bytes + of.reading().base.value_or(0),
                                     first * bytes + of.reading().base.value_or(0)));
    }
    if (piece.addresses->last != first) {
        const std::uint64_t count = (piece.addresses->last - first) / piece.step + 1;
        text.add("sets", fmt::format("{}: {}{}", counted(count, "word"),
                                     addresses_text(*piece.addresses, image.last_address()),
                                     piece.step > 1 ? fmt::format(" in steps of {}", piece.step) : ""));
    }
}

/// Adds the later lines that set addresses of @p piece.
void add_replacement(const document& of, const text_piece& piece, const replaced_words& replaced,
                     hover_text& text) {
    const auto line_of = [&of](std::uint64_t offset) { return of.buffer().line_of(offset) + 1; };
    if (replaced.count == 0 || piece.is_part) {
        return;
    }
    if (piece.addresses->first == piece.addresses->last) {
        text.add("replaced", fmt::format("by line {}", line_of(replaced.last_offset)));
    } else {
        text.add("replaced", fmt::format("{}, the first by line {}", counted(replaced.count, "word"),
                                         line_of(replaced.first_offset)));
    }
}

} // namespace

json hover_in(document& of, const json& params) {
    const std::size_t offset = of.offset_of(required(params, "position"));
    const auto piece = of.piece_at(offset);
    const std::optional<memory_image>& image = of.result().image;
    if (!piece || !piece->addresses || !image || piece->addresses->first > image->last_address()) {
        return {};
    }
    hover_text text;
    add_address(of, *piece, text);
    if (piece->what == text_piece::kind::word) {
        const replaced_words replaced = words_replaced_after(of, *piece);
        if (const auto value = word_said_by(of, *piece, replaced)) {
            add_value(*value, of.settings().shown_radix, text);
        }
        add_replacement(of, *piece, replaced, text);
    }
    return {{"contents", text.contents()}, {"range", of.range(piece->where)}};
}

json definition_in(document& of, const json& params) {
    const auto piece = of.piece_at(of.offset_of(required(params, "position")));
    const auto last = piece && piece->addresses ? of.place_of(piece->addresses->first) : std::nullopt;
    if (!last) {
        return {};
    }
    return {{"uri", of.uri()}, {"range", of.range({last->offset, last->length})}};
}

} // namespace kvrmem::lsp
