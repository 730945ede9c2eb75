#pragma once

#include "kvr/memory/hex/hex_file.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/io/line_source.h"

#include <cstdint>
#include <string>

namespace kvr {

/// Access to the single steps of the Intel HEX handler.
struct hex_steps {
    KVR_MEMORY_HEX_FILE& file;

    [[nodiscard]] hex_memory& memory() const { return *file.memory; }
    [[nodiscard]] bool read_in_file(const std::string& file_name) const {
        return file.read_in_file(file_name);
    }
    [[nodiscard]] bool get_total_address_space(line_source& source, int* line_number) const {
        return file.get_total_address_space(source, line_number);
    }
    [[nodiscard]] bool interpret_hex_line(const std::string& address, const std::string& data,
                                          const std::string& record_length) const {
        return file.interpret_hex_line(address, data, record_length);
    }
    [[nodiscard]] bool parse_hex_string(const std::string& line, std::string& record_length,
                                        std::string& address, std::string& record_type, std::string& data,
                                        std::string& checksum) const {
        return file.parse_hex_string(line, record_length, address, record_type, data, checksum);
    }
    void remove_extra_chars(std::string& line) const { file.remove_extra_chars(line); }
    [[nodiscard]] std::uint32_t sum_of_string_bytes(const std::string& text) const {
        return file.sum_of_string_bytes(text);
    }
    [[nodiscard]] std::uint32_t get_bytes_in_word_size() const { return file.get_bytes_in_word_size(); }
    [[nodiscard]] int get_radix_base(KVR_MEMORY_RADIXES radix) const { return file.get_radix_base(radix); }
    [[nodiscard]] bool write_out_file() const { return file.write_out_file(); }
    [[nodiscard]] std::int32_t convert_value_to_hex(std::uint32_t value, std::string& out,
                                                    std::uint32_t width) const {
        return file.convert_value_to_hex(value, out, width);
    }
};

} // namespace kvr
