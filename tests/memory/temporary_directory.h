#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace kvr_test {

/// Writes a file byte for byte.
inline void write_content(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

/// A directory for one test, removed with its contents at the end.
class temporary_directory {
public:
    temporary_directory() {
        std::random_device random;
        do {
            root = std::filesystem::path(testing::TempDir()) / ("kvr_" + std::to_string(random()));
        } while (!std::filesystem::create_directory(root));
    }
    temporary_directory(const temporary_directory&) = delete;
    temporary_directory& operator=(const temporary_directory&) = delete;
    ~temporary_directory() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    /// The path of the entry named @p name, which need not exist.
    [[nodiscard]] std::string path(const std::string& name) const { return (root / name).string(); }

    /// Writes a file byte for byte and returns its path.
    [[nodiscard]] std::string file(const std::string& name, std::string_view content) const {
        write_content(path(name), content);
        return path(name);
    }

private:
    std::filesystem::path root;
};

/// The bytes of the file at @p path; "" if it cannot be read.
inline std::string content_of(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace kvr_test
