#include "kvr/memory/memory_state.h"

#include "kvr/memory/memory_file.h"
#include "kvr/numeric/integer_format.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/util/platform.h"

namespace kvr {

unsigned radix_base(KVR_MEMORY_RADIXES radix) noexcept {
    switch (radix) {
    case RADIX_BIN:
        return 2;
    case RADIX_HEX:
        return 16;
    case RADIX_OCT:
        return 8;
    default:
        return 10;
    }
}

std::string decimal(std::uint32_t number) {
    return kvr_int_to_string(static_cast<int>(number));
}

void memory_state::resize_words(std::uint32_t count) {
    data_words.resize(count, memory_initialize_value);
    number_of_words = count;
}

std::string memory_state::word_in_radix(std::uint32_t address, KVR_MEMORY_RADIXES radix) const {
    std::string text(data_words[address]);
    if (radix != RADIX_NONE && radix != memory_radix) {
        kvr_radix_conversion(text, &text, memory_radix, radix, word_size);
    }
    return text;
}

void memory_state::set_word_from_memory_radix(std::uint32_t address, const std::string& value,
                                              KVR_MEMORY_RADIXES radix) {
    const KVR_MEMORY_RADIXES target = radix == RADIX_NONE ? memory_radix : radix;
    std::string converted;
    kvr_radix_conversion(value, &converted, memory_radix, target, word_size);
    data_words.set(address, converted);
}

bool memory_state::can_proceed_with_read() const {
    return platform::exists(file_name.c_str());
}

void memory_state::report(const std::string& message) const {
    if (memory_file != nullptr) {
        memory_file->add_error_message(message);
    }
}

void memory_state::report_invalid_address(std::uint32_t address) const {
    report("Invalid memory address value. Address value is bigger than the maximum number of words in the "
           "memory. The number of words in the memory is " +
           decimal(number_of_words) + " and the specified address is " + decimal(address));
}

void memory_state::report_not_found() const {
    report("Memory file cannot be opened.  Memory file -- " + file_name + " -- not found. ");
}

void memory_state::report_write_failure() const {
    report("Memory file cannot be written.  Memory file -- " + file_name + " -- ");
}

} // namespace kvr
