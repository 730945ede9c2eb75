#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

/// All system-dependent functions, implemented in platform_posix.cpp and platform_windows.cpp only. Paths are
/// bytes in the encoding of the system's narrow calls.
namespace kvr::platform {

/// Characters that may end a directory's name in a path of this system.
extern const char* const separators;

/// Returns whether @p path leads to a file, a directory or another object.
bool exists(const char* path) noexcept;

/// Writes the working directory and a NUL to @p buffer. Returns false if @p size characters are too few.
bool get_current_directory(char* buffer, std::size_t size) noexcept;

/// Return 0, or -1 on failure.
int make_directory(const char* path) noexcept;
int remove_directory(const char* path) noexcept;

/// Removes a file, or a symbolic link itself; never a directory.
bool remove_file(const char* path) noexcept;

struct close_stream {
    void operator()(std::FILE* stream) const noexcept { static_cast<void>(std::fclose(stream)); }
};
using file_stream = std::unique_ptr<std::FILE, close_stream>;

/// Opens a file for reading bytes. Returns null if it cannot be opened, and for a directory.
file_stream open_to_read(const char* path) noexcept;

int process_id() noexcept;

/// Bytes of a large page of memory, and its alignment.
inline constexpr std::size_t large_page = std::size_t{2} << 20U;
/// Requests large pages for the part of a block that has whole ones. It has an effect on what is not written
/// to yet.
void prefer_large_pages(char* block, std::size_t size) noexcept;

/// Returns the path of the running executable, of any length; "" if the system does not provide it.
std::string executable_path();

/// The attribute word of a subdirectory without further properties. Others, such as read-only, add to it.
constexpr unsigned subdirectory_attribute = 16;

struct directory_entry {
    std::string name;
    unsigned attributes = 0;
};

struct directory_listing {
    std::vector<directory_entry> entries;
    bool complete = true; ///< the listing did not fail before the end of the directory
};

/// A directory whose entries are found and removed by name. If the system supports it, the object keeps
/// referring to the opened directory even if the path changes.
class directory {
public:
    /// Opens the directory @p path, "" for the working directory. If there is none, the object has no entries
    /// and every removal fails.
    explicit directory(const std::string& path);
    directory(const directory&) = delete;
    directory& operator=(const directory&) = delete;
    ~directory();

    /// Returns the subdirectory @p name; does not follow a symbolic link.
    [[nodiscard]] directory subdirectory(const std::string& name) const;

    /// Returns the current entries whose names match @p wildcard ("*" is any text, "?" any character, "*.*"
    /// every name), except "." and "..". An entry with unreadable attributes has no attributes.
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
