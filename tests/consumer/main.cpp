#include "kvr/kvr.h"

#include <cstdio>

/// Prints the first word of a MIF file in hexadecimal.
int main(int count, char** arguments) {
    if (count != 2) {
        return 4;
    }
    KVR_MEMORY_FILE memory;
    memory.set_file_type(FILE_TYPE_MIF);
    memory.set_file_name(arguments[1]);
    if (!memory.read_file()) {
        memory.reset_error_message_list();
        std::fprintf(stderr, "%s\n", memory.get_next_error_message().c_str());
        return 2;
    }
    std::printf("%u words of %u bits, the first is %s\n", memory.get_number_of_words(),
                memory.get_word_size(), memory.get_data_word(0, RADIX_HEX).c_str());
    return 0;
}
