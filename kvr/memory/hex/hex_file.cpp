#include "kvr/memory/hex/hex_file.h"

#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "kvr/memory/hex/hex_record.h"
#include "kvr/memory/hex/hex_writer.h"
#include "kvr/memory/io/line_source.h"

#include <optional>
#include <variant>

KVR_MEMORY_HEX_FILE::KVR_MEMORY_HEX_FILE(KVR_MEMORY_FILE* memory_file)
    : memory(std::make_unique<kvr::hex_memory>(memory_file)) {}

KVR_MEMORY_HEX_FILE::~KVR_MEMORY_HEX_FILE() = default;

void KVR_MEMORY_HEX_FILE::set_number_of_words(unsigned int count) {
    memory->resize_words(count);
}

std::string KVR_MEMORY_HEX_FILE::get_hex_data_word(unsigned int address, KVR_MEMORY_RADIXES radix) {
    if (address < memory->data_words.size()) {
        return memory->word_in_radix(address, radix);
    }
    memory->report_invalid_address(address);
    return {};
}

bool KVR_MEMORY_HEX_FILE::set_hex_data_word(unsigned int address, const std::string& value,
                                            KVR_MEMORY_RADIXES radix) {
    if (address >= memory->number_of_words) {
        memory->report_invalid_address(address);
        return false;
    }
    // After a failed read there may be fewer words than number_of_words. Assignments to missing words are
    // dropped.
    if (address < memory->data_words.size()) {
        memory->set_word_from_memory_radix(address, value, radix);
    }
    return true;
}

bool KVR_MEMORY_HEX_FILE::can_proceed_with_read() const {
    return memory->can_proceed_with_read();
}

bool KVR_MEMORY_HEX_FILE::can_proceed_with_write() const {
    return !memory->file_name.empty() && memory->number_of_words > 0 && memory->memory_radix != RADIX_NONE &&
           !memory->data_words.empty();
}

bool KVR_MEMORY_HEX_FILE::read_in_hex_file() {
    return read_in_file(memory->file_name);
}

bool KVR_MEMORY_HEX_FILE::write_out_hex_file() {
    return write_out_file();
}

bool KVR_MEMORY_HEX_FILE::read_in_file(const std::string& file_name) {
    return kvr::read_hex_file(*memory, file_name);
}

bool KVR_MEMORY_HEX_FILE::get_total_address_space(kvr::line_source& source, int* line_number) {
    const std::optional<kvr::hex_read_stop> stop = kvr::find_address_space(*memory, source);
    if (stop) {
        *line_number = static_cast<int>(stop->fault.line);
    }
    return stop.has_value();
}

bool KVR_MEMORY_HEX_FILE::interpret_hex_line(const std::string& address, const std::string& data,
                                             const std::string& record_length) {
    const std::uint32_t first = kvr::hex_number(address) + memory->address_offset;
    kvr::store_hex_words(*memory, first, data, kvr::hex_number(record_length));
    return false;
}

bool KVR_MEMORY_HEX_FILE::parse_hex_string(const std::string& line, std::string& record_length,
                                           std::string& address, std::string& record_type, std::string& data,
                                           std::string& checksum) {
    if (line.empty()) {
        return false;
    }
    const auto split = kvr::split_hex_record(line);
    const auto* record = std::get_if<kvr::hex_record>(&split);
    if (record == nullptr) {
        return false;
    }
    record_length = record->length();
    address = record->address();
    record_type = record->type();
    data = record->data();
    checksum = record->checksum();
    return true;
}

void KVR_MEMORY_HEX_FILE::remove_extra_chars(std::string& line) {
    std::string buffer;
    line = std::string(kvr::without_blanks(line, buffer));
}

std::uint32_t KVR_MEMORY_HEX_FILE::sum_of_string_bytes(const std::string& text) const {
    return kvr::sum_of_bytes(text);
}

std::uint32_t KVR_MEMORY_HEX_FILE::get_bytes_in_word_size() const {
    return memory->bytes_per_word();
}

int KVR_MEMORY_HEX_FILE::get_radix_base(KVR_MEMORY_RADIXES radix) const {
    return static_cast<int>(kvr::radix_base(radix));
}

bool KVR_MEMORY_HEX_FILE::write_out_file() {
    return kvr::write_hex_file(*memory);
}

std::int32_t KVR_MEMORY_HEX_FILE::convert_value_to_hex(std::uint32_t value, std::string& out,
                                                       std::uint32_t width) {
    return kvr::format_hex_value(value, out, width);
}
