#include "kvr/memory/store/word_page.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace kvr {

namespace {

/// The most pieces of a page.
constexpr std::size_t most_pieces = 12;

// A page is packed only if enough texts were set in it, so that a small file cannot allocate much memory:
// pieces of equal length with this many texts, or a list of that many texts.
constexpr std::size_t least_pieces_to_pack = 11;
constexpr std::size_t least_texts_to_pack = 96;

/// Texts of different lengths are packed up to this length, texts of equal length up to the next one.
constexpr std::size_t longest_mixed = 16;
constexpr std::size_t longest_packed = word_row::longest;

bool suits_packing(std::size_t shortest, std::size_t longest) {
    return longest <= longest_mixed || (shortest == longest && longest <= longest_packed);
}

/// True if an earlier piece has the same pattern as @p piece: a piece that was split in two.
bool is_repeated(const std::vector<word_pieces::piece>& pieces, const word_pieces::piece& piece) {
    return std::any_of(pieces.data(), &piece,
                       [&](const auto& earlier) { return earlier.texts.get() == piece.texts.get(); });
}

} // namespace

bool word_page::is_best_packed(const char* texts, std::size_t length) noexcept {
    if (length > longest_packed) {
        return false;
    }
    std::size_t runs = 1;
    const char* const last = texts + length * (page_words - 1);
    for (const char* text = texts; text != last && runs <= most_pieces; text += length) {
        runs += std::memcmp(text, text + length, length) != 0 ? 1 : 0;
    }
    return runs > most_pieces;
}

void word_page::pack(page_texts texts, std::size_t length) noexcept {
    form = packed_words(std::move(texts), static_cast<std::uint32_t>(length));
}

std::string_view word_page::find(std::uint32_t index) const noexcept {
    if (const auto* pieces = std::get_if<word_pieces>(&form)) {
        if (const word_pattern* texts = pieces->stretch_at(index).texts) {
            return texts->text_at(first + index);
        }
    } else if (const auto* varied = std::get_if<std::unique_ptr<varied_words>>(&form)) {
        if ((*varied)->has(index)) {
            return (**varied)[index];
        }
    }
    return backing->text_at(first + index);
}

bool word_page::set(std::uint32_t index, std::string_view text) {
    auto* pieces = std::get_if<word_pieces>(&form);
    if (pieces != nullptr && pieces->extend(index, text)) {
        return is_edge(index);
    }
    if ((*this)[index] == text) {
        return is_edge(index);
    }
    prepare_for({text.size(), text.size()});
    pieces = std::get_if<word_pieces>(&form);
    if (pieces != nullptr) {
        set_piece(*pieces, index, text);
        return true;
    }
    if (auto* packed = std::get_if<packed_words>(&form)) {
        if (!packed->copy_in(index, text)) {
            packed->assign(index, index, [text](std::uint32_t /*index*/) { return text; });
        }
        return packed->is_complete() || is_edge(index);
    }
    (*std::get_if<std::unique_ptr<varied_words>>(&form))->set(index, text);
    return is_edge(index);
}

void word_page::set_piece(word_pieces& pieces, std::uint32_t index, std::string_view text) const {
    pattern_ref texts;
    if (backing->text_at(first + index) != text) {
        texts = pieces.neighbour_with(index, text);
        if (!texts) {
            texts = word_pattern::uniform(text);
        }
    }
    pieces.assign(index, index, std::move(texts));
}

void word_page::assign(std::uint32_t begin, std::uint32_t end, const pattern_ref& texts) {
    prepare_for(lengths_of(begin, end, *texts));
    if (auto* pieces = std::get_if<word_pieces>(&form)) {
        pieces->assign(begin, end, same_texts(texts, backing) ? pattern_ref() : texts);
    } else if (auto* packed = std::get_if<packed_words>(&form)) {
        packed->assign(begin, end, [&](std::uint32_t index) { return texts->text_at(first + index); });
    } else {
        (*std::get_if<std::unique_ptr<varied_words>>(&form))->assign(begin, end, *texts, first + begin);
    }
}

/// Changes the representation, if needed, to one that can store texts of @p lengths. No word changes.
void word_page::prepare_for(length_range lengths) {
    if (const auto* pieces = std::get_if<word_pieces>(&form)) {
        prepare_pieces(*pieces, lengths);
    } else if (auto* packed = std::get_if<packed_words>(&form)) {
        prepare_packed(*packed, lengths);
    } else {
        prepare_varied(**std::get_if<std::unique_ptr<varied_words>>(&form), lengths);
    }
}

void word_page::prepare_pieces(const word_pieces& pieces, length_range lengths) {
    if (pieces.all().size() < most_pieces) {
        return;
    }
    if (lengths.shortest == lengths.longest && lengths.longest <= longest_packed &&
        has_enough_texts_of(lengths.longest, pieces)) {
        become_packed(lengths.longest);
    } else {
        become_varied();
    }
}

void word_page::prepare_packed(packed_words& packed, length_range lengths) {
    if (packed.suits(lengths.shortest) && packed.suits(lengths.longest)) {
        return;
    }
    if (lengths.longest > packed.longest() && lengths.longest <= longest_mixed) {
        packed = packed.widened(static_cast<std::uint32_t>(lengths.longest));
    } else {
        become_varied();
    }
}

void word_page::prepare_varied(const varied_words& varied, length_range lengths) {
    if (keeps_varied || varied.texts() < least_texts_to_pack) {
        return;
    }
    const std::size_t shortest = std::min(varied.shortest(), lengths.shortest);
    const std::size_t longest = std::max(varied.longest(), lengths.longest);
    if (suits_packing(shortest, longest)) {
        become_packed(longest);
    } else {
        keeps_varied = true;
    }
}

void word_page::become_packed(std::size_t longest) {
    packed_words packed(static_cast<std::uint32_t>(longest));
    if (const auto* pieces = std::get_if<word_pieces>(&form)) {
        for (const word_pieces::piece& each : pieces->all()) {
            packed.assign(each.first, each.last,
                          [&](std::uint32_t index) { return each.texts->text_at(first + index); });
        }
    } else {
        const varied_words& varied = **std::get_if<std::unique_ptr<varied_words>>(&form);
        for (std::uint32_t index = 0; index < page_words; ++index) {
            if (varied.has(index)) {
                packed.assign(index, index, [&](std::uint32_t each) { return varied[each]; });
            }
        }
    }
    form = std::move(packed);
}

void word_page::become_varied() {
    auto varied = std::make_unique<varied_words>();
    if (const auto* pieces = std::get_if<word_pieces>(&form)) {
        for (const word_pieces::piece& each : pieces->all()) {
            varied->assign(each.first, each.last, *each.texts, first + each.first);
        }
    } else {
        const packed_words& packed = *std::get_if<packed_words>(&form);
        for (std::uint32_t index = 0; index < page_words; ++index) {
            if (packed.has(index)) {
                varied->set(index, packed[index]);
            }
        }
    }
    form = std::move(varied);
}

word_page::length_range word_page::lengths_of(std::uint32_t begin, std::uint32_t end,
                                              const word_pattern& texts) const noexcept {
    const std::uint32_t count = std::min(end - begin + 1, texts.period());
    length_range lengths{texts.text_at(first + begin).size(), texts.text_at(first + begin).size()};
    for (std::uint32_t i = 1; i < count; ++i) {
        const std::size_t length = texts.text_at(first + begin + i).size();
        lengths.shortest = std::min(lengths.shortest, length);
        lengths.longest = std::max(lengths.longest, length);
    }
    return lengths;
}

/// True if the pieces have enough texts to pack them, and all have the length @p length.
bool word_page::has_enough_texts_of(std::size_t length, const word_pieces& pieces) const noexcept {
    std::size_t texts = 0;
    for (const word_pieces::piece& each : pieces.all()) {
        const length_range lengths = lengths_of(each.first, each.last, *each.texts);
        if (lengths.shortest != length || lengths.longest != length) {
            return false;
        }
        if (!is_repeated(pieces.all(), each)) {
            texts += std::min(each.last - each.first + 1U, each.texts->period());
        }
    }
    return texts >= least_pieces_to_pack;
}

pattern_ref word_page::whole() const noexcept {
    if (const auto* pieces = std::get_if<word_pieces>(&form)) {
        if (pieces->all().empty()) {
            return backing;
        }
        const word_pieces::piece& only = pieces->all().front();
        if (only.first == 0 && only.last == page_words - 1) {
            return only.texts;
        }
        return {};
    }
    if (!is_uniform()) {
        return {};
    }
    try {
        return word_pattern::uniform((*this)[0]);
    } catch (...) {
        return {};
    }
}

bool word_page::is_uniform() const noexcept {
    const auto* packed = std::get_if<packed_words>(&form);
    return packed != nullptr && packed->is_complete()
               ? packed->is_uniform()
               : find_other(0, page_words - 1, (*this)[0]) == page_words;
}

std::uint32_t word_page::find_other(std::uint32_t from, std::uint32_t last,
                                    std::string_view text) const noexcept {
    if (const auto* pieces = std::get_if<word_pieces>(&form)) {
        while (from <= last) {
            const word_pieces::stretch here = pieces->stretch_at(from);
            const std::uint32_t end = std::min(here.last, last);
            const word_pattern& texts = here.texts != nullptr ? *here.texts : *backing;
            const auto other =
                static_cast<std::uint32_t>(texts.find_other(first + from, first + end, text) - first);
            if (other <= end) {
                return other;
            }
            from = end + 1;
        }
        return from;
    }
    while (from <= last && (*this)[from] == text) {
        ++from;
    }
    return from;
}

} // namespace kvr
