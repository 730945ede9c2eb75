#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/store/word_store.h"

#include <cstdint>
#include <string>
#include <string_view>

class KVR_MEMORY_FILE;

namespace kvr {

/// What every handler holds and the façade reads and writes: the settings of one memory, its words, and
/// the result of the last read or write. The formats add their own fields to it.
struct memory_state {
    explicit memory_state(KVR_MEMORY_FILE* owner) : memory_file(owner) {}

    std::uint32_t number_of_words = 0; ///< depth
    std::uint32_t word_size = 0;       ///< width of a word in bits
    KVR_MEMORY_RADIXES address_radix = RADIX_NONE;
    KVR_MEMORY_RADIXES memory_radix = RADIX_NONE; ///< the radix in which `data_words` are written
    bool error_occurred = false;
    bool file_not_found = false;
    int invalid_line_number = 0;
    std::string file_name;
    KVR_ERROR_STATES error_state = ERROR_STATE_NONE;
    std::string memory_initialize_value; ///< text of words that are created but never set
    word_store data_words;
    KVR_MEMORY_FILE* memory_file; ///< takes the messages; not owned; none: messages are dropped

    /// Stores @p count as the depth and sizes `data_words` to it.
    void resize_words(std::uint32_t count);

    /// True when there is a word at @p address and @p radix requests it as it is stored.
    [[nodiscard]] bool holds_word_in(std::uint32_t address, KVR_MEMORY_RADIXES radix) const noexcept {
        return address < number_of_words && address < data_words.size() &&
               (radix == memory_radix || radix == RADIX_NONE);
    }

    /// The word at @p address converted from the memory radix to @p radix, or as it is stored when @p radix
    /// is RADIX_NONE or the memory radix. @p address must be below the size of `data_words`.
    [[nodiscard]] std::string word_in_radix(std::uint32_t address, KVR_MEMORY_RADIXES radix) const;

    /// Stores @p value converted *from the memory radix to @p radix* (RADIX_NONE: the memory radix), cut
    /// or padded to the word size. Callers rely on the direction: a value in the memory radix is
    /// normalized, a value in another radix is taken for text in the memory radix.
    void set_word_from_memory_radix(std::uint32_t address, const std::string& value,
                                    KVR_MEMORY_RADIXES radix);

    /// True when `file_name` is not empty and names something that exists.
    [[nodiscard]] bool can_proceed_with_read() const;

    // The messages that the formats share. Each goes to the owner's error list.
    void report(const std::string& message) const;
    void report_invalid_address(std::uint32_t address) const;
    void report_not_found() const;
    void report_write_failure() const;
};

/// The base in which a number of @p radix is read and written: 2, 8, 16, and 10 for every other radix.
[[nodiscard]] unsigned radix_base(KVR_MEMORY_RADIXES radix) noexcept;

/// Decimal text of a 32-bit number as messages and headers show it: from 2^31 on it comes out negative.
[[nodiscard]] std::string decimal(std::uint32_t number);

} // namespace kvr
