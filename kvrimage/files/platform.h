#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// The parts of reading and writing files that depend on the operating system; only platform_posix.cpp and
/// platform_windows.cpp in this folder do. Paths are texts of bytes, on Windows in UTF-8. Descriptors are
/// those of the C library and convert no bytes. A function that fails leaves the reason in errno.
namespace kvrimage::platform {

#ifdef _WIN32
/// Bytes of the longest path and its NUL: each 16-bit unit of the system takes at most three.
inline constexpr std::size_t longest_path = std::size_t{3} << 15U;
/// Characters that separate the names in a path.
inline constexpr std::string_view path_separators = "/\\:";
#else
inline constexpr std::size_t longest_path = PATH_MAX;
inline constexpr std::string_view path_separators = "/";
#endif

inline constexpr int standard_input = 0; ///< descriptors of a program
inline constexpr int standard_output = 1;
inline constexpr int standard_error = 2;

/// Converts @p text to a path. On Windows, the standard library would not treat the text as UTF-8.
/// @return an empty path if @p text cannot be one
std::filesystem::path path_of(const std::string& text);
/// Converts @p path to text.
std::string text_of(const std::filesystem::path& path);

enum class file_kind : std::uint8_t { none, regular, folder, link, other };

struct file_status {
    file_kind kind = file_kind::none;
    std::uint64_t size = 0; ///< bytes of a regular file, according to the system
    std::uint32_t owner = 0;
    std::uint32_t group = 0;
    std::uint32_t permissions = 0;
};

/// Finds out what @p path leads to. A path to nothing is no failure: it has file_kind::none.
bool look_at(const std::string& path, file_status& found) noexcept;
/// The same, but does not follow a symbolic link at the end of @p path.
bool look_at_link(const std::string& path, file_status& found) noexcept;
bool look_at(int descriptor, file_status& found) noexcept;

/// False if the file @p path is known to be write-protected.
bool may_be_written(const std::string& path) noexcept;

/// Returns a descriptor that the caller closes, or -1. Child processes do not inherit it.
int open_to_read(const std::string& path) noexcept;
/// The same for a new file, to be written; fails with EEXIST if the file exists.
/// @param is_private only the user may open it
int make_file(const std::string& path, bool is_private) noexcept;
/// Returns another descriptor of standard input or standard output, which the caller closes, or -1. It
/// converts no bytes, although the one of the program may (text mode of Windows).
int open_standard_input() noexcept;
int open_standard_output() noexcept;

/// Returns the number of bytes read, 0 at the end, or -1 after a failure. A call interrupted by a signal is
/// restarted.
std::int64_t read_some(int descriptor, char* to, std::size_t count) noexcept;
/// Writes @p text without a buffer; safe in a signal handler. A call interrupted by a signal is restarted.
/// False if not everything could be written.
bool write_all(int descriptor, std::string_view text) noexcept;

/// Gives the open file @p descriptor the owner and the permissions of @p old. If the owner cannot be kept,
/// only permissions to read, write and execute are copied.
bool copy_permissions(const file_status& old, int descriptor) noexcept;

/// Makes sure that the contents of the file @p path, which is closed, are on the disk.
bool store(const std::string& path) noexcept;

/// Moves the file @p from, which is closed, to @p to in the same folder. A file that is there is replaced in
/// one step; programs that have it open still have the old file.
bool move_file(const std::string& from, const std::string& to) noexcept;

/// Removes the file @p path, at the latest when it is closed. Safe in a signal handler.
void remove_file(const char* path) noexcept;

/// Returns a block of @p count bytes for std::realloc() and std::free(), or null if there is too little
/// memory. A large block is aligned to a large page.
char* new_block(std::size_t count) noexcept;

} // namespace kvrimage::platform
