#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

/// Everything that differs between operating systems; platform_posix.cpp and platform_windows.cpp are the
/// only sources that depend on one. Paths are texts of bytes as the system's own narrow calls take them.
namespace kvr::platform {

/// The characters that may end a directory's name in a path of this system.
extern const char* const separators;

/// True for a file, a directory or anything else that @p path leads to.
bool exists(const char* path) noexcept;

/// Writes the working directory with a NUL after it. False when @p size characters do not hold it.
bool get_current_directory(char* buffer, std::size_t size) noexcept;

/// 0, or -1 when it failed.
int make_directory(const char* path) noexcept;
int remove_directory(const char* path) noexcept;

/// Removes a file, or a symbolic link itself; never a directory.
bool remove_file(const char* path) noexcept;

struct close_stream {
    void operator()(std::FILE* stream) const noexcept { static_cast<void>(std::fclose(stream)); }
};
using file_stream = std::unique_ptr<std::FILE, close_stream>;

/// Opens a file to read its bytes. Null when it cannot be opened, and for a directory.
file_stream open_to_read(const char* path) noexcept;

int process_id() noexcept;

/// The path of the running executable, however long; "" when the system does not provide it.
std::string executable_path();

/// The attribute word of a bare subdirectory. Any further property, such as being read-only, adds to it.
constexpr unsigned subdirectory_attribute = 16;

struct directory_entry {
    std::string name;
    unsigned attributes = 0;
};

struct directory_listing {
    std::vector<directory_entry> entries;
    bool complete = true; ///< false when the system could not list the directory to its end
};

/// A directory whose entries are found and removed by name. Where the system can do it, the object stays
/// with the directory that it was opened on, even if the path changes meanwhile.
class directory {
public:
    /// The directory that @p path leads to, "" for the working directory. A path that leads to none gives
    /// an object without entries, in which every removal fails.
    explicit directory(const std::string& path);
    directory(const directory&) = delete;
    directory& operator=(const directory&) = delete;
    ~directory();

    /// The subdirectory @p name; never what a symbolic link of that name leads to.
    [[nodiscard]] directory subdirectory(const std::string& name) const;

    /// The entries whose names match @p wildcard ("*" is any text, "?" any character, "*.*" every name), as
    /// they are now; never "." and "..". One whose attributes cannot be read has no attributes.
    [[nodiscard]] directory_listing find(const std::string& wildcard) const;

    /// Removes the file @p name, or a symbolic link itself; never a directory.
    [[nodiscard]] bool remove_file(const std::string& name) const;
    [[nodiscard]] bool remove_subdirectory(const std::string& name) const;

private:
    struct handle;
    explicit directory(std::unique_ptr<handle> opened) noexcept;

    std::unique_ptr<handle> opened;
};

} // namespace kvr::platform
