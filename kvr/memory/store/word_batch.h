#pragma once

#include "kvr/memory/store/packed_words.h"
#include "kvr/memory/store/word_page_size.h"
#include "kvr/memory/store/word_store.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace kvr {

/// Sets the words of a store in the order of the calls, but gathers words of one length at ascending
/// addresses and sets a page of them at once. The store, which must outlive the batch, has all words only
/// after flush(), which must be called before the store is read, resized, or changed in another way. Only
/// when an exception ends the batch may the call be omitted: see the destructor.
class word_batch {
public:
    static constexpr std::size_t slack = 8;

    explicit word_batch(word_store& target) noexcept : words(&target) {}
    /// Brings the words still gathered into the store, as far as there is memory for it: the words that came
    /// before an exception are there.
    ~word_batch();
    word_batch(const word_batch&) = delete;
    word_batch& operator=(const word_batch&) = delete;

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

    /// The place for the characters of the word at @p address, which must be below the size of the store:
    /// exactly @p length of them, written at once; `slack` more may be overwritten. Null when that word
    /// needs set().
    char* room_for(std::uint32_t address, std::size_t length) {
        if (!is_next(address, length) && !begin(address, length)) {
            return nullptr;
        }
        char* place = texts.get() + used;
        used += length;
        ++next;
        return place;
    }

    /// Room for contiguous words: at most `count` of them, from `place` on.
    struct word_room {
        char* place;
        std::size_t count;
    };
    /// room_for() for words of @p length characters from @p address on; none when these need set(). They
    /// are gathered when take() gives the number of words written.
    [[nodiscard]] word_room room_for_some(std::uint32_t address, std::size_t length) {
        if (!is_next(address, length) && !begin(address, length)) {
            return {nullptr, 0};
        }
        return {texts.get() + used, (limit - used) / length};
    }
    /// Gathers the first @p count words in the room that room_for_some() has returned last.
    void take(std::size_t count) noexcept {
        used += count * word_length;
        next += count;
    }

    /// Sets the words from @p first on, below the size of the store, to those in @p all, each @p length
    /// characters long (at least one).
    void set_side_by_side(std::uint32_t first, std::string_view all, std::size_t length);

    /// Brings everything into the store. The words stay gathered when it throws.
    void flush();
    /// Drops the gathered words.
    void drop() noexcept {
        used = limit = 0;
        next = no_address;
    }

private:
    /// True when a word of @p length characters at @p address directly follows the gathered ones.
    [[nodiscard]] bool is_next(std::uint32_t address, std::size_t length) const noexcept {
        return address == next && length == word_length && used != limit;
    }
    bool begin(std::uint32_t address, std::size_t length);

    word_store* words;
    std::uint64_t next = no_address; ///< address of the next word that can be gathered
    std::size_t word_length = 0;
    std::uint32_t apart = 0;         ///< this many words to come are not worth gathering
    std::size_t used = 0;            ///< characters of words that were gathered
    std::size_t limit = 0;           ///< characters up to the end of the page
    std::unique_ptr<char[]> texts;   ///< room for a page of words and the slack; the store takes it over
    std::size_t length_in_texts = 0; ///< of the words for which there is room

    static constexpr std::uint64_t no_address = ~std::uint64_t{0};
};

} // namespace kvr
