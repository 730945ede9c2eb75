#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kvr_fuzz {

/// A file in memory that other code opens by its path.
class scratch_file {
public:
    scratch_file();
    ~scratch_file();
    scratch_file(const scratch_file&) = delete;
    scratch_file& operator=(const scratch_file&) = delete;

    [[nodiscard]] const std::string& path() const noexcept { return name; }
    /// Replaces the contents of the file with @p bytes.
    void assign(std::string_view bytes) const;
    /// All bytes of the file.
    [[nodiscard]] std::string contents() const;

private:
    int descriptor;
    std::string name;
};

/// A folder of this process, which is removed with its contents when the program ends.
class scratch_folder {
public:
    scratch_folder();
    ~scratch_folder();
    scratch_folder(const scratch_folder&) = delete;
    scratch_folder& operator=(const scratch_folder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return root; }

private:
    std::filesystem::path root;
};

/// Replaces the contents of the file at @p path with @p bytes.
void write_file(const std::string& path, std::string_view bytes);

} // namespace kvr_fuzz
