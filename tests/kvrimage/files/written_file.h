#pragma once

#include "kvrimage/files/replacement_file.h"
#include "tests/kvrimage/files/test_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <system_error>

inline void write_to(const std::string& path, std::string_view text) {
    kvrimage::replacement_file file(path);
    file.write(text);
    file.commit();
}

/// Writes @p path and returns the message of the failure; "" on success.
inline std::string failure_to_write(const std::string& path, std::string_view text = "new") {
    try {
        write_to(path, text);
    } catch (const std::system_error& error) {
        return error.what();
    }
    return "";
}

class ReplacementFile : public testing::Test {
protected:
    test_folder folder;
};
