#pragma once

/// @file
/// The RIF handler.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <cstdint>
#include <memory>
#include <string>

class KVR_MEMORY_FILE;

namespace kvr {
struct rif_steps;
struct rif_memory;
} // namespace kvr

/// The RIF handler of a KVR_MEMORY_FILE, which creates and owns it and forwards calls to it. See
/// KVR_MEMORY_FILE for the operations; this header documents only what differs.
class KVR_API KVR_MEMORY_RIF_FILE {
public:
    /// @param memory_file receives the error messages; not owned; if null, they are dropped
    explicit KVR_MEMORY_RIF_FILE(KVR_MEMORY_FILE* memory_file);
    ~KVR_MEMORY_RIF_FILE();
    KVR_MEMORY_RIF_FILE(const KVR_MEMORY_RIF_FILE&) = delete;
    KVR_MEMORY_RIF_FILE& operator=(const KVR_MEMORY_RIF_FILE&) = delete;

    /// Resizes the words to @p count. New words are empty.
    void set_number_of_words(unsigned int count);
    /// See KVR_MEMORY_FILE::get_data_word().
    std::string get_rif_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// Always returns false, even if the word was stored; callers rely on it.
    bool set_rif_data_word(unsigned int address, const std::string& value, KVR_MEMORY_RADIXES radix);
    /// True if @p value has only hexadecimal digits, blanks and "X", "x", "U", "u".
    bool check_if_cell_value_is_valid(const std::string& value);
    /// See KVR_MEMORY_FILE::can_proceed_with_read().
    [[nodiscard]] bool can_proceed_with_read() const;
    /// See KVR_MEMORY_FILE::can_proceed_with_write().
    [[nodiscard]] bool can_proceed_with_write() const;
    /// Reads the file. Always returns true; get_file_not_found(), get_error_state() and the messages of the
    /// KVR_MEMORY_FILE report failures. The file contains neither the number of words nor the word size: set
    /// both before. Words outside the store are dropped, and words that the file does not set keep their
    /// text.
    [[nodiscard]] bool read_in_rif_file();
    /// Writes the words and overwrites the file. Returns true if the file could be opened, even if it could
    /// not be written completely. An empty word of a RADIX_DEC memory, such as an unset word, throws
    /// std::out_of_range after the words before it were written.
    [[nodiscard]] bool write_out_rif_file();

private:
    friend class KVR_MEMORY_FILE;
    friend struct kvr::rif_steps;

    void convert_address_to_hex(std::uint32_t value, std::string& out, std::uint32_t base) const;
    bool convert_data_to_hex(const std::string& value, std::string& out, KVR_MEMORY_RADIXES radix,
                             std::uint32_t width) const;
    [[nodiscard]] int get_radix_base(KVR_MEMORY_RADIXES radix) const;

    std::unique_ptr<kvr::rif_memory> memory;
};
