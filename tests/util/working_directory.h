#pragma once

#include <filesystem>
#include <string>

namespace kvr_test {

/// Makes @p path the working directory for one test.
class working_directory {
public:
    explicit working_directory(const std::string& path) : before(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    working_directory(const working_directory&) = delete;
    working_directory& operator=(const working_directory&) = delete;
    ~working_directory() {
        std::error_code ignored;
        std::filesystem::current_path(before, ignored);
    }

private:
    std::filesystem::path before;
};

} // namespace kvr_test
