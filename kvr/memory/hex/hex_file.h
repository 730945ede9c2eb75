#pragma once

/// @file
/// The Intel HEX handler.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <cstdint>
#include <memory>
#include <string>

class KVR_MEMORY_FILE;

namespace kvr {
class line_source;
struct hex_memory;
struct hex_steps;
} // namespace kvr

/// The Intel HEX handler of a KVR_MEMORY_FILE, which creates and owns it and forwards calls to it. See
/// KVR_MEMORY_FILE for the operations; this header documents only what differs. Addresses count words, not
/// bytes.
class KVR_API KVR_MEMORY_HEX_FILE {
public:
    /// @param memory_file receives the error messages; not owned; if null, they are dropped
    explicit KVR_MEMORY_HEX_FILE(KVR_MEMORY_FILE* memory_file);
    ~KVR_MEMORY_HEX_FILE();
    KVR_MEMORY_HEX_FILE(const KVR_MEMORY_HEX_FILE&) = delete;
    KVR_MEMORY_HEX_FILE& operator=(const KVR_MEMORY_HEX_FILE&) = delete;

    /// Resizes the words to @p count. New words get the initialize value.
    void set_number_of_words(unsigned int count);
    /// Like KVR_MEMORY_FILE::get_data_word(), but compares the address with the existing words;
    /// set_hex_data_word() compares it with the number of words. The two differ only after a failed read.
    /// set_hex_data_word() then ignores a word that does not exist and returns true.
    std::string get_hex_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// See KVR_MEMORY_FILE::set_data_word().
    bool set_hex_data_word(unsigned int address, const std::string& value, KVR_MEMORY_RADIXES radix);
    /// See KVR_MEMORY_FILE::can_proceed_with_read().
    [[nodiscard]] bool can_proceed_with_read() const;
    /// See KVR_MEMORY_FILE::can_proceed_with_write().
    [[nodiscard]] bool can_proceed_with_write() const;
    /// Reads the file in two passes. The first pass checks all records and determines the number of words;
    /// the second stores the words. Words that no record sets keep their text. Records do not contain the
    /// word width: set the word size before, otherwise it is 8. A record may have 599 characters.
    [[nodiscard]] bool read_in_hex_file();
    /// Writes one record for each word that is not empty and overwrites the file. Returns true if every byte
    /// was written.
    [[nodiscard]] bool write_out_hex_file();

private:
    friend class KVR_MEMORY_FILE;
    friend struct kvr::hex_steps;

    [[nodiscard]] bool read_in_file(const std::string& file_name);
    /// Returns true if the pass *failed*, with the line number in @p line_number.
    bool get_total_address_space(kvr::line_source& source, int* line_number);
    /// Always returns false, which the second pass interprets as success.
    bool interpret_hex_line(const std::string& address, const std::string& data,
                            const std::string& record_length);
    bool parse_hex_string(const std::string& line, std::string& record_length, std::string& address,
                          std::string& record_type, std::string& data, std::string& checksum);
    void remove_extra_chars(std::string& line);
    [[nodiscard]] std::uint32_t sum_of_string_bytes(const std::string& text) const;
    [[nodiscard]] std::uint32_t get_bytes_in_word_size() const;
    [[nodiscard]] int get_radix_base(KVR_MEMORY_RADIXES radix) const;
    [[nodiscard]] bool write_out_file();
    /// Returns the sum of the bytes that @p out encodes.
    std::int32_t convert_value_to_hex(std::uint32_t value, std::string& out, std::uint32_t width);

    std::unique_ptr<kvr::hex_memory> memory;
};
