#pragma once

/// @file
/// The MIF handler.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

class KVR_MEMORY_FILE;

namespace kvr {
class output_file;
struct mif_steps;
struct mif_memory;
} // namespace kvr

/// The MIF handler of a KVR_MEMORY_FILE, which creates and owns it and forwards calls to it. See
/// KVR_MEMORY_FILE for the operations; this header documents only what differs.
class KVR_API KVR_MEMORY_MIF_FILE {
public:
    /// @param memory_file receives the error messages; not owned; if null, they are dropped
    explicit KVR_MEMORY_MIF_FILE(KVR_MEMORY_FILE* memory_file);
    ~KVR_MEMORY_MIF_FILE();
    KVR_MEMORY_MIF_FILE(const KVR_MEMORY_MIF_FILE&) = delete;
    KVR_MEMORY_MIF_FILE& operator=(const KVR_MEMORY_MIF_FILE&) = delete;

    /// Resizes the words to @p count. New words get the initialize value.
    void set_number_of_words(unsigned int count);
    /// See KVR_MEMORY_FILE::get_data_word().
    std::string get_mif_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// See KVR_MEMORY_FILE::set_data_word().
    bool set_mif_data_word(unsigned int address, const std::string& value, KVR_MEMORY_RADIXES radix);
    /// See KVR_MEMORY_FILE::set_data_word_with_comments().
    bool set_mif_data_word_with_comments(unsigned int address, const std::string& value,
                                         const std::string& comment, KVR_MEMORY_RADIXES radix);
    /// See KVR_MEMORY_FILE::get_data_comments().
    bool get_mif_data_comments(std::deque<std::string>* comments);
    /// See KVR_MEMORY_FILE::set_data_comments().
    bool set_mif_data_comments(std::deque<std::string>* comments);
    /// See KVR_MEMORY_FILE::get_comment_deque().
    bool get_comment_deque(int index, std::deque<std::string>* comments);
    /// See KVR_MEMORY_FILE::set_comment_deque().
    bool set_comment_deque(int index, std::deque<std::string>* comments);
    /// See KVR_MEMORY_FILE::can_proceed_with_read().
    [[nodiscard]] bool can_proceed_with_read() const;
    /// See KVR_MEMORY_FILE::can_proceed_with_write().
    [[nodiscard]] bool can_proceed_with_write() const;
    /// Reads the file. Returns true if it was read up to and beyond its END line. The settings are then those
    /// of the file. Comments are added to the existing ones, and words that the file does not set keep their
    /// text. A line may have 511 characters.
    [[nodiscard]] bool read_in_mif_file();
    /// Writes words, settings and comments and overwrites the file. Returns true if every byte was written.
    [[nodiscard]] bool write_out_mif_file();

private:
    friend class KVR_MEMORY_FILE;
    friend struct kvr::mif_steps;

    // Single steps of reading, writing and editing. The parsers return true on failure.
    void read_radix_information();
    void remove_comment_from_string(std::string& line, bool strip_blanks);
    bool parse_width_depth(const std::string& line);
    bool parse_address_data_radix(const std::string& line);
    bool parse_address_data_line(const std::string& text);
    bool parse_single_address(const std::string& text);
    bool parse_multiple_addresses(const std::string& text);
    bool fill_given_addresses(std::uint32_t first, std::uint32_t last, const std::string& data);
    std::uint32_t interpret_data_values(const std::string& data, std::deque<std::string>* values,
                                        std::uint32_t count);
    bool check_if_address_already_set(int address);
    void clear_comment_strings();

    // Checks of values. Reading calls none of them: words are stored as in the file.
    [[nodiscard]] bool check_if_memory_value_is_legal(const std::string& value) const;
    [[nodiscard]] bool check_if_cell_value_is_valid(const std::string& value) const;
    [[nodiscard]] bool check_string_length_against_word_size(const std::string& value) const;

    [[nodiscard]] std::string generate_width_string() const;
    [[nodiscard]] std::string generate_depth_string() const;
    [[nodiscard]] std::string generate_address_radix_string() const;
    [[nodiscard]] std::string generate_data_radix_string() const;
    [[nodiscard]] std::string convert_number_into_address_radix(std::uint32_t number,
                                                                std::uint32_t width) const;
    [[nodiscard]] std::string generate_address_data_string(std::uint32_t first, std::uint32_t last,
                                                           const std::string& data,
                                                           std::uint32_t address_width,
                                                           const std::string& comment) const;
    bool output_comments_to_file(std::uint32_t index, kvr::output_file& output) const;

    std::unique_ptr<kvr::mif_memory> memory;
};
