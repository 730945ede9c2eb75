#include "kvr/memory/memory_file.h"

#include "kvr/memory/hex/hex_file.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/message_queue.h"
#include "kvr/memory/mif/mif_file.h"
#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/rif/rif_file.h"
#include "kvr/memory/rif/rif_memory.h"

#include <utility>

KVR_MEMORY_FILE::KVR_MEMORY_FILE()
    : error_messages(std::make_unique<kvr::message_queue>()),
      warning_messages(std::make_unique<kvr::message_queue>()),
      info_messages(std::make_unique<kvr::message_queue>()) {}

KVR_MEMORY_FILE::~KVR_MEMORY_FILE() = default;

void KVR_MEMORY_FILE::set_file_type(KVR_FILE_TYPES type) {
    file_type = type; // first, so that it is set even if allocating the handler fails
    if (type == FILE_TYPE_HEX && !hex_file) {
        hex_file = std::make_unique<KVR_MEMORY_HEX_FILE>(this);
    } else if (type == FILE_TYPE_MIF && !mif_file) {
        mif_file = std::make_unique<KVR_MEMORY_MIF_FILE>(this);
    } else if (type == FILE_TYPE_RIF && !rif_file) {
        rif_file = std::make_unique<KVR_MEMORY_RIF_FILE>(this);
    }
}

KVR_FILE_TYPES KVR_MEMORY_FILE::get_file_type() const {
    return file_type;
}

kvr::memory_state* KVR_MEMORY_FILE::active() const {
    if (file_type == FILE_TYPE_HEX && hex_file) {
        return hex_file->memory.get();
    }
    if (file_type == FILE_TYPE_MIF && mif_file) {
        return mif_file->memory.get();
    }
    if (file_type == FILE_TYPE_RIF && rif_file) {
        return rif_file->memory.get();
    }
    return nullptr;
}

unsigned int KVR_MEMORY_FILE::get_number_of_words() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->number_of_words : 0;
}

unsigned int KVR_MEMORY_FILE::get_word_size() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->word_size : 0;
}

KVR_MEMORY_RADIXES KVR_MEMORY_FILE::get_memory_radix() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->memory_radix : RADIX_NONE;
}

KVR_MEMORY_RADIXES KVR_MEMORY_FILE::get_address_radix() const {
    if (file_type == FILE_TYPE_HEX) {
        return RADIX_HEX;
    }
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->address_radix : RADIX_NONE;
}

bool KVR_MEMORY_FILE::get_error_occurred() const {
    const kvr::memory_state* memory = active();
    return memory == nullptr || memory->error_occurred;
}

bool KVR_MEMORY_FILE::get_file_not_found() const {
    const kvr::memory_state* memory = active();
    return memory == nullptr || memory->file_not_found;
}

int KVR_MEMORY_FILE::get_invalid_line_number() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->invalid_line_number : 0;
}

std::string KVR_MEMORY_FILE::get_file_name() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->file_name : std::string();
}

KVR_ERROR_STATES KVR_MEMORY_FILE::get_error_state() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr ? memory->error_state : ERROR_STATE_NONE;
}

unsigned int KVR_MEMORY_FILE::get_lowest_address() const {
    return file_type == FILE_TYPE_HEX && hex_file ? hex_file->memory->lowest_address : 0;
}

unsigned int KVR_MEMORY_FILE::get_highest_address() const {
    if (file_type == FILE_TYPE_HEX && hex_file) {
        return hex_file->memory->highest_address;
    }
    return get_number_of_words();
}

void KVR_MEMORY_FILE::set_word_size(unsigned int word_size) {
    if (hex_file) {
        hex_file->memory->word_size = word_size;
    }
    if (mif_file) {
        mif_file->memory->word_size = word_size;
    }
    if (rif_file) {
        rif_file->memory->word_size = word_size;
    }
}

void KVR_MEMORY_FILE::set_memory_radix(KVR_MEMORY_RADIXES radix) {
    if (hex_file) {
        hex_file->memory->memory_radix = radix;
    }
    if (mif_file) {
        mif_file->memory->memory_radix = radix;
    }
    if (rif_file) {
        rif_file->memory->memory_radix = radix;
    }
}

void KVR_MEMORY_FILE::set_address_radix(KVR_MEMORY_RADIXES radix) {
    if (mif_file) {
        mif_file->memory->address_radix = radix;
    }
}

void KVR_MEMORY_FILE::set_file_name(std::string file_name) {
    if (hex_file) {
        hex_file->memory->file_name = file_name;
    }
    if (mif_file) {
        mif_file->memory->file_name = file_name;
    }
    if (rif_file) {
        rif_file->memory->file_name = std::move(file_name);
    }
}

void KVR_MEMORY_FILE::set_memory_initialize_value(const std::string& value) {
    if (hex_file) {
        hex_file->memory->memory_initialize_value = value;
    }
    if (mif_file) {
        mif_file->memory->memory_initialize_value = value;
    }
}

void KVR_MEMORY_FILE::set_dont_consolidate_data(bool dont_consolidate) {
    if (mif_file) {
        mif_file->memory->dont_consolidate_data = dont_consolidate;
    }
}

void KVR_MEMORY_FILE::set_number_of_words(unsigned int number_of_words) {
    if (hex_file) {
        hex_file->memory->resize_words(number_of_words);
    }
    if (mif_file) {
        mif_file->memory->resize_words(number_of_words);
    }
    if (rif_file) {
        rif_file->memory->resize_words(number_of_words);
    }
}

std::string KVR_MEMORY_FILE::get_data_word(unsigned int address, KVR_MEMORY_RADIXES radix) {
    // The most frequent call bypasses the handlers; the result is the same.
    const kvr::memory_state* memory = active();
    if (memory == nullptr) {
        return {};
    }
    if (memory->holds_word_in(address, radix)) {
        return std::string(memory->data_words[address]);
    }
    if (file_type == FILE_TYPE_HEX) {
        return hex_file->get_hex_data_word(address, radix);
    }
    if (file_type == FILE_TYPE_MIF) {
        return mif_file->get_mif_data_word(address, radix);
    }
    return rif_file->get_rif_data_word(address, radix);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes it by value
bool KVR_MEMORY_FILE::set_data_word(unsigned int address, std::string value, KVR_MEMORY_RADIXES radix) {
    if (active() == nullptr) {
        return false;
    }
    if (file_type == FILE_TYPE_HEX) {
        return hex_file->set_hex_data_word(address, value, radix);
    }
    if (file_type == FILE_TYPE_MIF) {
        return mif_file->set_mif_data_word(address, value, radix);
    }
    return rif_file->set_rif_data_word(address, value, radix);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes it by value
bool KVR_MEMORY_FILE::set_data_word_with_comments(unsigned int address, std::string value,
                                                  const std::string& comment, KVR_MEMORY_RADIXES radix) {
    return file_type == FILE_TYPE_MIF && mif_file &&
           mif_file->set_mif_data_word_with_comments(address, value, comment, radix);
}

bool KVR_MEMORY_FILE::get_data_comments(std::deque<std::string>* comments) {
    return file_type == FILE_TYPE_MIF && mif_file && mif_file->get_mif_data_comments(comments);
}

bool KVR_MEMORY_FILE::set_data_comments(std::deque<std::string>* comments) {
    return file_type == FILE_TYPE_MIF && mif_file && mif_file->set_mif_data_comments(comments);
}

bool KVR_MEMORY_FILE::get_comment_deque(int index, std::deque<std::string>* comments) {
    return file_type == FILE_TYPE_MIF && mif_file && mif_file->get_comment_deque(index, comments);
}

bool KVR_MEMORY_FILE::set_comment_deque(int index, std::deque<std::string>* comments) {
    return file_type == FILE_TYPE_MIF && mif_file && mif_file->set_comment_deque(index, comments);
}

bool KVR_MEMORY_FILE::can_proceed_with_read() const {
    const kvr::memory_state* memory = active();
    return memory != nullptr && memory->can_proceed_with_read();
}

bool KVR_MEMORY_FILE::can_proceed_with_write() const {
    if (active() == nullptr) {
        return false;
    }
    if (file_type == FILE_TYPE_HEX) {
        return hex_file->can_proceed_with_write();
    }
    if (file_type == FILE_TYPE_MIF) {
        return mif_file->can_proceed_with_write();
    }
    return rif_file->can_proceed_with_write();
}

bool KVR_MEMORY_FILE::read_file() {
    if (!can_proceed_with_read()) {
        return false;
    }
    if (file_type == FILE_TYPE_HEX) {
        return hex_file->read_in_file(hex_file->memory->file_name);
    }
    if (file_type == FILE_TYPE_MIF) {
        return mif_file->read_in_mif_file();
    }
    return rif_file->read_in_rif_file();
}

bool KVR_MEMORY_FILE::write_file() {
    if (!can_proceed_with_write()) {
        return false;
    }
    if (file_type == FILE_TYPE_HEX) {
        return hex_file->write_out_file();
    }
    if (file_type == FILE_TYPE_MIF) {
        return mif_file->write_out_mif_file();
    }
    return rif_file->write_out_rif_file();
}

void KVR_MEMORY_FILE::add_error_message(const std::string& message) {
    error_messages->add(message);
}
void KVR_MEMORY_FILE::add_warning_message(const std::string& message) {
    warning_messages->add(message);
}
void KVR_MEMORY_FILE::add_info_message(const std::string& message) {
    info_messages->add(message);
}

bool KVR_MEMORY_FILE::has_error_messages() {
    return !error_messages->empty();
}
bool KVR_MEMORY_FILE::has_warning_messages() {
    return !warning_messages->empty();
}
bool KVR_MEMORY_FILE::has_info_messages() {
    return !info_messages->empty();
}

void KVR_MEMORY_FILE::reset_error_message_list() {
    error_messages->reset();
}
void KVR_MEMORY_FILE::reset_warning_message_list() {
    warning_messages->reset();
}
void KVR_MEMORY_FILE::reset_info_message_list() {
    info_messages->reset();
}

std::string KVR_MEMORY_FILE::get_next_error_message() {
    return error_messages->next();
}
std::string KVR_MEMORY_FILE::get_next_warning_message() {
    return warning_messages->next();
}
std::string KVR_MEMORY_FILE::get_next_info_message() {
    return info_messages->next();
}
