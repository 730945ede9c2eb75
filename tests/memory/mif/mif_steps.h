#pragma once

#include "kvr/memory/mif/mif_file.h"
#include "kvr/memory/mif/mif_memory.h"

#include <cstdint>
#include <deque>
#include <string>

namespace kvr {

/// Access to the single steps of the MIF handler.
struct mif_steps {
    KVR_MEMORY_MIF_FILE& file;

    [[nodiscard]] mif_memory& memory() const { return *file.memory; }

    void remove_comment_from_string(std::string& line, bool strip) const {
        file.remove_comment_from_string(line, strip);
    }
    [[nodiscard]] bool parse_width_depth(const std::string& line) const {
        return file.parse_width_depth(line);
    }
    [[nodiscard]] bool parse_address_data_radix(const std::string& line) const {
        return file.parse_address_data_radix(line);
    }
    [[nodiscard]] bool parse_address_data_line(const std::string& text) const {
        return file.parse_address_data_line(text);
    }
    [[nodiscard]] bool parse_single_address(const std::string& text) const {
        return file.parse_single_address(text);
    }
    [[nodiscard]] bool parse_multiple_addresses(const std::string& text) const {
        return file.parse_multiple_addresses(text);
    }
    [[nodiscard]] bool fill_given_addresses(std::uint32_t first, std::uint32_t last,
                                            const std::string& data) const {
        return file.fill_given_addresses(first, last, data);
    }
    [[nodiscard]] std::uint32_t interpret_data_values(const std::string& data,
                                                      std::deque<std::string>& values,
                                                      std::uint32_t count) const {
        return file.interpret_data_values(data, &values, count);
    }
    [[nodiscard]] bool check_if_address_already_set(int address) const {
        return file.check_if_address_already_set(address);
    }
    void clear_comment_strings() const { file.clear_comment_strings(); }
    [[nodiscard]] bool check_if_memory_value_is_legal(const std::string& value) const {
        return file.check_if_memory_value_is_legal(value);
    }
    [[nodiscard]] bool check_if_cell_value_is_valid(const std::string& value) const {
        return file.check_if_cell_value_is_valid(value);
    }
    [[nodiscard]] bool check_string_length_against_word_size(const std::string& value) const {
        return file.check_string_length_against_word_size(value);
    }
    [[nodiscard]] std::string generate_width_string() const { return file.generate_width_string(); }
    [[nodiscard]] std::string generate_depth_string() const { return file.generate_depth_string(); }
    [[nodiscard]] std::string generate_address_radix_string() const {
        return file.generate_address_radix_string();
    }
    [[nodiscard]] std::string generate_data_radix_string() const { return file.generate_data_radix_string(); }
    [[nodiscard]] std::string convert_number_into_address_radix(std::uint32_t number,
                                                                std::uint32_t width) const {
        return file.convert_number_into_address_radix(number, width);
    }
    [[nodiscard]] std::string generate_address_data_string(std::uint32_t first, std::uint32_t last,
                                                           const std::string& data, std::uint32_t width,
                                                           const std::string& comment) const {
        return file.generate_address_data_string(first, last, data, width, comment);
    }
    bool output_comments_to_file(std::uint32_t index, output_file& output) const {
        return file.output_comments_to_file(index, output);
    }
};

} // namespace kvr
