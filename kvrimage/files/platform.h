#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// What differs between operating systems when files are read and written; platform_posix.cpp and
/// platform_windows.cpp are the only sources of this folder that depend on one. Paths are texts of bytes: on
/// Windows they are UTF-8. A descriptor is that of the C library, for bytes as they are. What fails says why
/// in errno.
namespace kvrimage::platform {

#ifdef _WIN32
/// Bytes of the longest path, and a NUL after it: each of the system's 16-bit units takes at most three.
inline constexpr std::size_t longest_path = std::size_t{3} << 15U;
/// Characters of a path that none of its names has.
inline constexpr std::string_view path_separators = "/\\:";
#else
inline constexpr std::size_t longest_path = PATH_MAX;
inline constexpr std::string_view path_separators = "/";
#endif

/// The path that @p text is. On Windows, the standard library would not take the text for UTF-8.
/// @return no path where it is no text of a path
std::filesystem::path path_of(const std::string& text);
/// The reverse.
std::string text_of(const std::filesystem::path& path);

enum class file_kind : std::uint8_t { none, regular, folder, link, other };

struct file_status {
    file_kind kind = file_kind::none;
    std::uint64_t size = 0; ///< bytes of a regular file, as the system says
    std::uint32_t owner = 0;
    std::uint32_t group = 0;
    std::uint32_t permissions = 0;
};

/// What @p path leads to, or, where it is a symbolic link, that link itself. That nothing is there is no
/// failure.
bool look_at(const std::string& path, file_status& found) noexcept;
bool look_at_link(const std::string& path, file_status& found) noexcept;
bool look_at(int descriptor, file_status& found) noexcept;

/// False when it can be found out that the file @p path may not be written.
bool may_be_written(const std::string& path) noexcept;

/// A descriptor that the caller closes, or -1. No program that is started inherits it.
int open_to_read(const std::string& path) noexcept;
/// The same for a file that is not there yet, to write it; with EEXIST in errno when it is there.
/// @param is_private nobody else may open it
int make_file(const std::string& path, bool is_private) noexcept;
/// The same for standard output.
int open_standard_output() noexcept;

/// Bytes read, 0 at the end; -1 when it failed. What a signal interrupts is started again.
std::int64_t read_some(int descriptor, char* to, std::size_t count) noexcept;
/// Writes @p text past every buffer; a signal handler may call it, too. What a signal interrupts is started
/// again. False when not everything could be written.
bool write_all(int descriptor, std::string_view text) noexcept;

/// Gives the open file @p descriptor owner and permissions of @p old. Where the owner cannot be kept, nobody
/// gets more than the permissions to read, write and execute.
bool copy_permissions(const file_status& old, int descriptor) noexcept;

/// Makes sure that what was written to the file @p path, which is closed, is on the disk.
bool store(const std::string& path) noexcept;

/// Moves the file @p from, which is closed, to @p to in the same folder. It takes the place of a file that is
/// there at once; programs that have that open keep it.
bool move_file(const std::string& from, const std::string& to) noexcept;

/// Removes the file @p path, at the latest when it is closed. A signal handler may call it.
void remove_file(const char* path) noexcept;

/// A block of @p count bytes for std::realloc() and std::free() that begins with a large page when it is
/// large; null where there is no memory.
char* new_block(std::size_t count) noexcept;
/// Asks for large pages in such a block.
void prefer_large_pages(char* block, std::size_t count) noexcept;

} // namespace kvrimage::platform
