#pragma once

#include "kvrimage/files/input_file.h"

#include <string>
#include <system_error>

/// Reads @p path. Returns the message of the failure and sets @p code; "" on success.
inline std::string failure_to_read(const std::string& path, std::error_code& code) {
    try {
        const kvrimage::input_file file(path);
    } catch (const std::system_error& error) {
        code = error.code();
        return error.what();
    }
    return "";
}

inline std::string failure_to_read(const std::string& path) {
    std::error_code ignored;
    return failure_to_read(path, ignored);
}
