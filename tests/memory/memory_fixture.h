#pragma once

#include "kvr/memory/memory_file.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvr_test {

/// The stored words of @p file from @p first to @p last.
inline std::vector<std::string> stored_words(KVR_MEMORY_FILE& file, unsigned first, unsigned last) {
    std::vector<std::string> words;
    for (unsigned address = first; address <= last; ++address) {
        words.push_back(file.get_data_word(address, RADIX_NONE));
    }
    return words;
}

/// A memory file of one type in its own folder.
class memory_fixture : public testing::Test {
protected:
    explicit memory_fixture(KVR_FILE_TYPES type) {
        path = folder.path("memory.txt");
        file.set_file_type(type);
        file.set_file_name(path);
    }

    /// Writes @p text to the file and reads it.
    bool read(const std::string& text) {
        write_content(path, text);
        return file.read_file();
    }
    [[nodiscard]] std::string written() const { return content_of(path); }
    [[nodiscard]] std::vector<std::string> errors() { return error_messages(file); }
    [[nodiscard]] std::vector<std::string> words(unsigned first, unsigned last) {
        return stored_words(file, first, last);
    }
    [[nodiscard]] std::string word(unsigned address) { return file.get_data_word(address, RADIX_NONE); }

    temporary_directory folder;
    std::string path;
    KVR_MEMORY_FILE file;
};

} // namespace kvr_test
