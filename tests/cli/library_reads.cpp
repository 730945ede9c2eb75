// Tells whether the library reads a memory file as its callers would: library_reads FILE

#include "kvr/memory/memory_file.h"

#include <string_view>

namespace {

KVR_FILE_TYPES type_of(std::string_view path) {
    if (path.ends_with(".mif")) {
        return FILE_TYPE_MIF;
    }
    return path.ends_with(".rif") ? FILE_TYPE_RIF : FILE_TYPE_HEX;
}

} // namespace

/// Answers 0 when the file was read and nothing was said against it, else 1.
int main(int count, char** words) {
    if (count != 2) {
        return 4;
    }
    KVR_MEMORY_FILE file;
    file.set_file_type(type_of(words[1]));
    file.set_file_name(words[1]);
    const bool read = file.read_file();
    return read && !file.get_file_not_found() && !file.has_error_messages() ? 0 : 1;
}
