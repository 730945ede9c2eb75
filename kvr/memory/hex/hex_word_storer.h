#pragma once

#include "kvr/memory/hex/hex_record.h"
#include "kvr/memory/store/word_batch.h"
#include "kvr/memory/store/word_store.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

struct hex_memory;

/// Stores the words of data records in sequence. The store has all of them after flush().
class hex_word_storer {
public:
    /// @param target receives the words; must outlive this object; may be resized after flush()
    hex_word_storer(word_store& target, std::uint32_t word_size) noexcept;

    /// Stores the words of a record according to the rules of store_hex_words().
    std::uint32_t store(std::uint32_t first, std::string_view data, std::uint32_t record_bytes) {
        if (record_bytes != known_bytes) {
            learn_record_length(record_bytes);
        }
        // Fast path: words of whole bytes that fill a record are stored with their digits unchanged.
        const bool fits = known_words != 0 && data.size() == std::size_t{2} * record_bytes &&
                          std::uint64_t{first} + known_words <= words.size();
        if (!fits) {
            return store_one_by_one(first, data, record_bytes);
        }
        if (known_words == 1) {
            batch.set(first, data);
        } else {
            batch.set_side_by_side(first, data, word_size / 4);
        }
        return known_words;
    }

    /// Returns room for words of @p digits digits from @p first on; see word_batch. take() stores them.
    [[nodiscard]] word_batch::word_room room_for_some(std::uint32_t first, std::size_t digits) {
        return batch.room_for_some(first, digits);
    }
    void take(std::size_t count) noexcept { batch.take(count); }

    void flush() { batch.flush(); }
    void drop() noexcept { batch.drop(); }

private:
    void learn_record_length(std::uint32_t record_bytes) noexcept;
    std::uint32_t store_one_by_one(std::uint32_t first, std::string_view data, std::uint32_t record_bytes);

    word_store& words;
    word_batch batch;
    std::uint32_t word_size;
    std::uint32_t bytes_per_word;
    std::uint32_t known_bytes = 0; ///< the record length to which known_words applies
    std::uint32_t known_words = 0; ///< words of such a record if they fill it exactly, else 0
};

/// Collects the words of a file whose number of words is not known yet, so that the file is read only once.
/// This works only if the records ascend. Otherwise the words are dropped, and the file must be read again.
class fast_hex_words {
public:
    /// @param memory provides the word size and the initialize value, which must not change meanwhile
    explicit fast_hex_words(const hex_memory& memory) noexcept;

    /// Stores the words of a data record, at most @p count.
    void take(const hex_record& record, std::uint32_t count, std::uint32_t address_offset) {
        const std::uint64_t first = std::uint64_t{record.word_address} + address_offset;
        if (first < end || first + count > words.size()) {
            make_room(first, first + count);
        }
        if (!given_up) {
            end = first + storer.store(static_cast<std::uint32_t>(first), record.data(), record.data_bytes);
        }
    }

    /// Returns room for words of @p digits digits from @p first on; see word_batch. The room may be empty.
    [[nodiscard]] word_batch::word_room room_for_some(std::uint64_t first, std::size_t digits) {
        if (given_up || first < end || first >= words.size()) {
            return {nullptr, 0};
        }
        const word_batch::word_room room = storer.room_for_some(static_cast<std::uint32_t>(first), digits);
        return {room.place, std::min<std::size_t>(room.count, words.size() - first)};
    }
    /// Stores @p count words from @p first on that were written to the room.
    void take(std::uint64_t first, std::size_t count) noexcept {
        storer.take(count);
        end = first + count;
    }

    /// True if no word was lost.
    [[nodiscard]] bool complete() const noexcept { return !given_up; }

    /// Returns all words as a store of @p size words. Words beyond it are dropped; words that no record has
    /// set get the initialize value. May be called once, and only if complete().
    [[nodiscard]] word_store finish(std::uint32_t size);

private:
    void make_room(std::uint64_t first, std::uint64_t last);

    const std::string& initialize_value;
    word_store words;
    hex_word_storer storer;
    std::uint64_t end = 0; ///< the address after the highest word
    bool given_up = false;
};

} // namespace kvr
