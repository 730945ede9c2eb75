#pragma once

#include "kvr/memory/store/packed_words.h"
#include "kvr/memory/store/page_texts.h"
#include "kvr/memory/store/word_page_size.h"
#include "kvr/memory/store/word_store.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Sets words of a store in the order of the calls. It collects words of equal length at ascending addresses
/// and sets them a page at a time. The store must outlive the batch, and has all words only after flush().
/// Call flush() before the store is read, resized or changed in another way. Only if an exception ends the
/// batch may the call be omitted: see the destructor.
class word_batch {
public:
    static constexpr std::size_t slack = 8;

    explicit word_batch(word_store& target) noexcept : words(&target) {}
    /// Writes the words collected so far to the store, as far as memory permits, so that the words before an
    /// exception are not lost.
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

    /// Sets a word for which room_for() has no room.
    void set_apart(std::uint32_t address, std::string_view text) { words->set(address, text); }

    /// Returns the place for the word at @p address, which must be below the size of the store. The caller
    /// must write exactly @p length characters at once; `slack` characters after them may be overwritten.
    /// Returns null if the word must be set with set().
    char* room_for(std::uint32_t address, std::size_t length) {
        if (!is_next(address, length) && !begin(address, length)) {
            return nullptr;
        }
        char* place = texts.get() + used;
        used += length;
        ++next;
        return place;
    }

    /// Room for contiguous words: at most `count` words from `place` on.
    struct word_room {
        char* place;
        std::size_t count;
    };
    /// Like room_for() for several words of @p length characters from @p address on. The room is empty if
    /// they must be set with set(). take() then adds the words written.
    [[nodiscard]] word_room room_for_some(std::uint32_t address, std::size_t length) {
        if (!is_next(address, length) && !begin(address, length)) {
            return {nullptr, 0};
        }
        return {texts.get() + used, (limit - used) / length};
    }
    /// Adds the first @p count words in the room that room_for_some() returned last.
    void take(std::size_t count) noexcept {
        used += count * word_length;
        next += count;
    }

    /// Sets the words from @p first on to those in @p all, each of @p length characters (at least one). All
    /// addresses must be below the size of the store.
    void set_side_by_side(std::uint32_t first, std::string_view all, std::size_t length);

    /// Writes all words to the store. If this throws, the words stay collected.
    void flush();
    /// Drops the collected words.
    void drop() noexcept {
        used = limit = 0;
        next = no_address;
    }

private:
    /// True if a word of @p length characters at @p address directly follows the collected ones.
    [[nodiscard]] bool is_next(std::uint32_t address, std::size_t length) const noexcept {
        return address == next && length == word_length && used != limit;
    }
    bool begin(std::uint32_t address, std::size_t length);

    word_store* words;
    std::uint64_t next = no_address; ///< address of the next word that can be collected
    std::size_t word_length = 0;
    std::uint32_t apart = 0; ///< number of next words that are not worth collecting
    std::size_t used = 0;    ///< characters of the collected words
    std::size_t limit = 0;   ///< characters up to the end of the page
    page_texts_maker pages;
    page_texts texts;                ///< room for a page of words and the slack; the store may take it over
    std::size_t length_in_texts = 0; ///< word length for which there is room

    static constexpr std::uint64_t no_address = ~std::uint64_t{0};
};

} // namespace kvr
