#include "kvr/memory/rif/rif_file.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/rif/rif_memory.h"
#include "kvr/memory/rif/rif_reader.h"
#include "kvr/memory/rif/rif_writer.h"
#include "kvr/numeric/integer_format.h"
#include "kvr/numeric/radix_conversion.h"

KVR_MEMORY_RIF_FILE::KVR_MEMORY_RIF_FILE(KVR_MEMORY_FILE* memory_file)
    : memory(std::make_unique<kvr::rif_memory>(memory_file)) {}

KVR_MEMORY_RIF_FILE::~KVR_MEMORY_RIF_FILE() = default;

void KVR_MEMORY_RIF_FILE::set_number_of_words(unsigned int count) {
    memory->resize_words(count);
}

std::string KVR_MEMORY_RIF_FILE::get_rif_data_word(unsigned int address, KVR_MEMORY_RADIXES radix) {
    if (address >= memory->number_of_words) {
        memory->report_invalid_address(address);
        return {};
    }
    return memory->word_in_radix(address, radix);
}

bool KVR_MEMORY_RIF_FILE::set_rif_data_word(unsigned int address, const std::string& value,
                                            KVR_MEMORY_RADIXES radix) {
    if (address >= memory->number_of_words) {
        memory->report_invalid_address(address);
    } else {
        memory->set_word_from_memory_radix(address, value, radix);
    }
    return false;
}

bool KVR_MEMORY_RIF_FILE::check_if_cell_value_is_valid(const std::string& value) {
    return kvr::is_rif_data(value);
}

bool KVR_MEMORY_RIF_FILE::can_proceed_with_read() const {
    return memory->can_proceed_with_read();
}

bool KVR_MEMORY_RIF_FILE::can_proceed_with_write() const {
    return !memory->file_name.empty() && memory->number_of_words > 0 && memory->word_size > 0 &&
           memory->address_radix != RADIX_NONE && memory->memory_radix != RADIX_NONE &&
           !memory->data_words.empty();
}

bool KVR_MEMORY_RIF_FILE::read_in_rif_file() {
    kvr::line_source source = kvr::line_source::open(memory->file_name);
    kvr::rif_reader(*memory).read(source);
    return true;
}

bool KVR_MEMORY_RIF_FILE::write_out_rif_file() {
    return kvr::write_rif_file(*memory);
}

void KVR_MEMORY_RIF_FILE::convert_address_to_hex(std::uint32_t value, std::string& out,
                                                 std::uint32_t base) const {
    out = kvr_long_to_string(value, static_cast<int>(base));
}

bool KVR_MEMORY_RIF_FILE::convert_data_to_hex(const std::string& value, std::string& out,
                                              KVR_MEMORY_RADIXES radix, std::uint32_t width) const {
    return kvr_radix_conversion(value, &out, radix, RADIX_HEX, width);
}

int KVR_MEMORY_RIF_FILE::get_radix_base(KVR_MEMORY_RADIXES radix) const {
    return static_cast<int>(kvr::radix_base(radix));
}
