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

/// The Intel HEX handler of a KVR_MEMORY_FILE, which creates and owns it and forwards calls to it. The façade
/// documents the operations; this header documents what the handler adds. Addresses count words, not bytes.
class KVR_API KVR_MEMORY_HEX_FILE {
public:
    /// @param memory_file takes the error messages; not owned; may be null, then they are dropped.
    explicit KVR_MEMORY_HEX_FILE(KVR_MEMORY_FILE* memory_file);
    ~KVR_MEMORY_HEX_FILE();
    KVR_MEMORY_HEX_FILE(const KVR_MEMORY_HEX_FILE&) = delete;
    KVR_MEMORY_HEX_FILE& operator=(const KVR_MEMORY_HEX_FILE&) = delete;

    /// Sizes the words to @p count; new ones hold the initialize value.
    void set_number_of_words(unsigned int count);
    /// The address is compared with the existing words, in set_hex_data_word() with the number of
    /// words; the two differ only after a failed read. A word that does not exist is then dropped, and the
    /// result is true.
    std::string get_hex_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// KVR_MEMORY_FILE::set_data_word().
    bool set_hex_data_word(unsigned int address, const std::string& value, KVR_MEMORY_RADIXES radix);
    /// KVR_MEMORY_FILE::can_proceed_with_read().
    [[nodiscard]] bool can_proceed_with_read() const;
    /// KVR_MEMORY_FILE::can_proceed_with_write().
    [[nodiscard]] bool can_proceed_with_write() const;
    /// Reads the file named by the handler in two passes: the first checks every record and finds the
    /// number of words, the second stores the words. Words that no record sets keep their text. Records do
    /// not contain the word width: set the word size before, or it is 8. A record may have 599 characters.
    [[nodiscard]] bool read_in_hex_file();
    /// Writes one record for each word that is not empty, over what the file holds; true when every byte was
    /// written.
    [[nodiscard]] bool write_out_hex_file();

private:
    friend class KVR_MEMORY_FILE;
    friend struct kvr::hex_steps;

    [[nodiscard]] bool read_in_file(const std::string& file_name);
    /// True when the pass *failed*, with the number of the line in @p line_number.
    bool get_total_address_space(kvr::line_source& source, int* line_number);
    /// Always false, which the second pass takes for success.
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
