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

/// The RIF handler of a KVR_MEMORY_FILE, which creates and owns it and forwards calls to it. The façade
/// documents the operations; this header documents what the handler adds.
class KVR_API KVR_MEMORY_RIF_FILE {
public:
    /// @param memory_file takes the error messages; not owned; may be null, then they are dropped.
    explicit KVR_MEMORY_RIF_FILE(KVR_MEMORY_FILE* memory_file);
    ~KVR_MEMORY_RIF_FILE();
    KVR_MEMORY_RIF_FILE(const KVR_MEMORY_RIF_FILE&) = delete;
    KVR_MEMORY_RIF_FILE& operator=(const KVR_MEMORY_RIF_FILE&) = delete;

    /// Sizes the words to @p count; new ones are empty.
    void set_number_of_words(unsigned int count);
    /// KVR_MEMORY_FILE::get_data_word().
    std::string get_rif_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// False in every case, also when the word was stored; callers rely on it.
    bool set_rif_data_word(unsigned int address, const std::string& value, KVR_MEMORY_RADIXES radix);
    /// True when @p value holds nothing but hexadecimal digits, blanks and "X", "x", "U", "u".
    bool check_if_cell_value_is_valid(const std::string& value);
    /// KVR_MEMORY_FILE::can_proceed_with_read().
    [[nodiscard]] bool can_proceed_with_read() const;
    /// KVR_MEMORY_FILE::can_proceed_with_write().
    [[nodiscard]] bool can_proceed_with_write() const;
    /// True in every case; failures show in get_file_not_found(), get_error_state() and the messages of
    /// the KVR_MEMORY_FILE. Words go into the store at its current size, those outside it are dropped: set
    /// the number of words before, and the word size, which the file does not contain either. Words that the
    /// file does not set keep their text.
    [[nodiscard]] bool read_in_rif_file();
    /// Writes the words over what the file holds. True when the file could be opened, also when it could not
    /// be written to the end. An empty word of a RADIX_DEC memory, as an unset word is, throws
    /// std::out_of_range; the words before it are in the file then.
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
