#pragma once

#include "kvr/memory/packed_words.h"
#include "kvr/memory/word_page_size.h"
#include "kvr/memory/word_store.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Sets the words of a store in the order of the calls, but gathers words of one length at ascending
/// addresses and sets a page of them in one go. The store has all words only after flush(), which whoever
/// reads the store, changes it on another way, or resizes it calls first; also before the end of the batch,
/// since its destructor drops what was not set yet.
class word_batch {
public:
    static constexpr std::size_t slack = 8;

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the texts are written before they are read
    explicit word_batch(word_store& target) noexcept : words(&target) {}

    /// Sets the word at @p address, which must be below the size of the store.
    void set(std::uint32_t address, std::string_view text) {
        if (char* place = room_for(address, text.size())) {
            copy_characters(text.data(), text.size(), place);
        } else {
            set_apart(address, text);
        }
    }

    /// set() for a word for which there is no room_for().
    void set_apart(std::uint32_t address, std::string_view text) { words->set(address, text); }

    /// Where the characters of the word at @p address, which must be below the size of the store, are to be
    /// put, @p length of them and at once; `slack` more may be overwritten. Null when that word takes a
    /// set().
    char* room_for(std::uint32_t address, std::size_t length) {
        if (address != next || length != word_length || used == limit) {
            if (!begin(address, length)) {
                return nullptr;
            }
        }
        char* place = texts.data() + used;
        used += length;
        ++next;
        return place;
    }

    /// Sets the words from @p first on, below the size of the store, to those in @p all, each @p length
    /// characters long (at least one).
    void set_side_by_side(std::uint32_t first, std::string_view all, std::size_t length);

    /// Brings everything into the store. The words that are not there when it throws are dropped.
    void flush();

private:
    bool begin(std::uint32_t address, std::size_t length);

    word_store* words;
    std::uint64_t next = no_address; ///< address of the next word that can be gathered
    std::size_t word_length = 0;
    std::uint32_t apart = 0; ///< so many words to come are not worth gathering
    std::size_t used = 0;    ///< characters of words that were gathered
    std::size_t limit = 0;   ///< characters up to the end of the page, or as many as there is room for
    /// Long enough for a page of words as they mostly are, and for some words of any length that is packed.
    std::array<char, std::size_t{32} * page_words + slack> texts;

    static constexpr std::uint64_t no_address = ~std::uint64_t{0};
};

} // namespace kvr
