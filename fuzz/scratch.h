#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kvr_fuzz {

/// A file in memory, which others open by its path.
class scratch_file {
public:
    scratch_file();
    ~scratch_file();
    scratch_file(const scratch_file&) = delete;
    scratch_file& operator=(const scratch_file&) = delete;

    [[nodiscard]] const std::string& path() const noexcept { return name; }
    /// Makes @p bytes all that the file holds.
    void assign(std::string_view bytes) const;
    /// All bytes of the file.
    [[nodiscard]] std::string contents() const;

private:
    int descriptor;
    std::string name;
};

/// A folder of this process alone, which goes with all that is in it when the program ends.
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

/// Makes @p bytes all that the file at @p path holds.
void write_file(const std::string& path, std::string_view bytes);

} // namespace kvr_fuzz
