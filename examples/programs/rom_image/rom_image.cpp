// Generates the image of a ROM from a formula: rom_image FILE.mif
//
// The ROM contains a quarter of a sine wave, 64 words of 12 bits, from 0 to 4095. For another ROM, change
// value_at() and the two sizes. The CMakeLists.txt in this folder shows how to build the program.

#include "kvr/kvr.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr unsigned int word_size = 12;
constexpr unsigned int number_of_words = 64;
constexpr double quarter_turn = 1.5707963267948966;

unsigned int value_at(unsigned int address) {
    const double angle = quarter_turn * (address + 0.5) / number_of_words;
    return static_cast<unsigned int>(std::lround(4095 * std::sin(angle)));
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: rom_image FILE.mif\n", stderr);
        return 4;
    }

    KVR_MEMORY_FILE memory;
    memory.set_file_type(FILE_TYPE_MIF); // set the type first, then its properties
    memory.set_file_name(arguments[1]);
    memory.set_word_size(word_size);
    memory.set_address_radix(RADIX_HEX);
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(number_of_words);
    for (unsigned int address = 0; address < number_of_words; ++address) {
        memory.set_data_word(address, kvr_long_to_string(value_at(address), 16), RADIX_HEX);
    }

    if (memory.write_file()) {
        return 0;
    }
    memory.reset_error_message_list();
    std::fprintf(stderr, "%s\n", memory.get_next_error_message().c_str());
    return 3;
}
