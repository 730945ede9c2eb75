#pragma once

#include "kvr/memory/hex_file.h"
#include "kvr/memory/hex_memory.h"
#include "kvr/memory/line_source.h"

#include <cstdint>
#include <string>

namespace kvr {

/// What the Intel HEX handler keeps to itself, for its tests.
struct hex_steps {
    static hex_memory& memory(KVR_MEMORY_HEX_FILE& handler) { return *handler.memory; }
    static bool read_in_file(KVR_MEMORY_HEX_FILE& handler, const std::string& file_name) {
        return handler.read_in_file(file_name);
    }
    static bool get_total_address_space(KVR_MEMORY_HEX_FILE& handler, line_source& source, int* line_number) {
        return handler.get_total_address_space(source, line_number);
    }
    static bool interpret_hex_line(KVR_MEMORY_HEX_FILE& handler, const std::string& address,
                                   const std::string& data, const std::string& record_length) {
        return handler.interpret_hex_line(address, data, record_length);
    }
    static bool parse_hex_string(KVR_MEMORY_HEX_FILE& handler, const std::string& line,
                                 std::string& record_length, std::string& address, std::string& record_type,
                                 std::string& data, std::string& checksum) {
        return handler.parse_hex_string(line, record_length, address, record_type, data, checksum);
    }
    static void remove_extra_chars(KVR_MEMORY_HEX_FILE& handler, std::string& line) {
        handler.remove_extra_chars(line);
    }
    static std::uint32_t sum_of_string_bytes(const KVR_MEMORY_HEX_FILE& handler, const std::string& text) {
        return handler.sum_of_string_bytes(text);
    }
    static std::uint32_t get_bytes_in_word_size(const KVR_MEMORY_HEX_FILE& handler) {
        return handler.get_bytes_in_word_size();
    }
    static int get_radix_base(const KVR_MEMORY_HEX_FILE& handler, KVR_MEMORY_RADIXES radix) {
        return handler.get_radix_base(radix);
    }
    static bool write_out_file(KVR_MEMORY_HEX_FILE& handler) { return handler.write_out_file(); }
    static std::int32_t convert_value_to_hex(KVR_MEMORY_HEX_FILE& handler, std::uint32_t value,
                                             std::string& out, std::uint32_t width) {
        return handler.convert_value_to_hex(value, out, width);
    }
};

} // namespace kvr
