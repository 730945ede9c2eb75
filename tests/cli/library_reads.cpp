// Prints the names of the memory files that the library refuses: library_reads FILE...

#include "kvr/memory/memory_file.h"

#include <cstdio>
#include <string_view>

namespace {

KVR_FILE_TYPES type_of(std::string_view path) {
    if (path.ends_with(".mif")) {
        return FILE_TYPE_MIF;
    }
    return path.ends_with(".rif") ? FILE_TYPE_RIF : FILE_TYPE_HEX;
}

/// True if the file was read without a message.
bool reads(const char* path) {
    KVR_MEMORY_FILE file;
    file.set_file_type(type_of(path));
    file.set_file_name(path);
    return file.read_file() && !file.get_file_not_found() && !file.has_error_messages();
}

} // namespace

int main(int count, char** words) {
    for (int index = 1; index < count; ++index) {
        if (!reads(words[index])) {
            std::puts(words[index]);
        }
    }
}
