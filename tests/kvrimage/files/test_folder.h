#pragma once

#include "kvrimage/files/platform.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

/// A folder for one test, which is removed at the end.
class test_folder {
public:
    test_folder() {
        std::random_device random;
        do {
            root = std::filesystem::temp_directory_path() / ("kvrimage_test." + std::to_string(random()));
        } while (!std::filesystem::create_directory(root));
    }
    test_folder(const test_folder&) = delete;
    test_folder& operator=(const test_folder&) = delete;
    ~test_folder() { std::filesystem::remove_all(root); }

    [[nodiscard]] std::string path(std::string_view name = "") const {
        return kvrimage::platform::text_of(within(name));
    }
    std::string write(std::string_view name, std::string_view contents) const {
        std::ofstream(within(name), std::ios::binary) << contents;
        return path(name);
    }
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream file(within(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] std::ptrdiff_t count_files() const {
        return std::distance(std::filesystem::directory_iterator(root), {});
    }

private:
    [[nodiscard]] std::filesystem::path within(std::string_view name) const {
        return root / kvrimage::platform::path_of(std::string(name));
    }

    std::filesystem::path root;
};
