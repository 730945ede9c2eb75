#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/store/word_store.h"

#include <cstdint>
#include <string>
#include <string_view>

class KVR_MEMORY_FILE;

namespace kvr {

/// The common state of all handlers, which KVR_MEMORY_FILE reads and writes: the settings of a memory, its
/// words, and the result of the last read or write. Each format adds its own fields.
struct memory_state {
    explicit memory_state(KVR_MEMORY_FILE* owner) : memory_file(owner) {}

    std::uint32_t number_of_words = 0; ///< depth
    std::uint32_t word_size = 0;       ///< width of a word in bits
    KVR_MEMORY_RADIXES address_radix = RADIX_NONE;
    KVR_MEMORY_RADIXES memory_radix = RADIX_NONE; ///< the radix of `data_words`
    bool error_occurred = false;
    bool file_not_found = false;
    int invalid_line_number = 0;
    std::string file_name;
    KVR_ERROR_STATES error_state = ERROR_STATE_NONE;
    std::string memory_initialize_value; ///< text of words that are created but never set
    word_store data_words;
    KVR_MEMORY_FILE* memory_file; ///< receives the messages; not owned; null: messages are dropped

    /// Sets the depth to @p count and resizes `data_words`.
    void resize_words(std::uint32_t count);

    /// True if there is a word at @p address that is stored in @p radix.
    [[nodiscard]] bool holds_word_in(std::uint32_t address, KVR_MEMORY_RADIXES radix) const noexcept {
        return address < number_of_words && address < data_words.size() &&
               (radix == memory_radix || radix == RADIX_NONE);
    }

    /// Returns the word at @p address, converted from the memory radix to @p radix. It is returned as stored
    /// if @p radix is RADIX_NONE or the memory radix. @p address must be below the size of `data_words`.
    [[nodiscard]] std::string word_in_radix(std::uint32_t address, KVR_MEMORY_RADIXES radix) const;

    /// Stores @p value converted *from the memory radix to @p radix* (RADIX_NONE: the memory radix), cut or
    /// padded to the word size. Callers rely on this direction: a value in the memory radix is normalized,
    /// and a value in another radix is interpreted in the memory radix.
    void set_word_from_memory_radix(std::uint32_t address, const std::string& value,
                                    KVR_MEMORY_RADIXES radix);

    /// True if `file_name` is not empty and names something that exists.
    [[nodiscard]] bool can_proceed_with_read() const;

    // Messages that the formats share. Each goes to the error list of the owner.
    void report(const std::string& message) const;
    void report_invalid_address(std::uint32_t address) const;
    void report_not_found() const;
    void report_write_failure() const;
};

/// Returns the base of numbers in @p radix: 2, 8, 16, or 10 for any other radix.
[[nodiscard]] unsigned radix_base(KVR_MEMORY_RADIXES radix) noexcept;

/// Returns the decimal text of a 32-bit number for messages and headers. From 2^31 on it is negative.
[[nodiscard]] std::string decimal(std::uint32_t number);

} // namespace kvr
