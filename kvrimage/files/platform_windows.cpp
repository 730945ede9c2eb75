#include "kvrimage/files/open_descriptor.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/signal_pause.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace kvrimage {

signal_pause::signal_pause() noexcept = default;
signal_pause::~signal_pause() = default;

namespace platform {

namespace {

constexpr int most_bytes_at_once = 1 << 30; ///< the system counts bytes in an int

/// A path in the units of the system; if it is too long or not UTF-8, "", which is no file's name.
struct wide_path {
    explicit wide_path(const char* path) noexcept {
        if (MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path, -1, units.data(),
                                static_cast<int>(units.size())) == 0) {
            units[0] = L'\0';
        }
    }
    explicit wide_path(const std::string& path) noexcept : wide_path(path.c_str()) {}
    [[nodiscard]] const wchar_t* get() const noexcept { return units.data(); }
    /// Makes the path absolute.
    void complete() noexcept {
        const wide_path given = *this;
        const DWORD size =
            GetFullPathNameW(given.get(), static_cast<DWORD>(units.size()), units.data(), nullptr);
        if (size == 0 || size >= units.size()) {
            units[0] = L'\0';
        }
    }

    std::array<wchar_t, std::size_t{1} << 15U> units;
};

/// Converts an error number of the system to one of the C library.
int reason_of(DWORD error) noexcept {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
        return EACCES;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return EEXIST;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    case ERROR_FILENAME_EXCED_RANGE:
        return ENAMETOOLONG;
    default:
        return EIO;
    }
}

bool succeeded(BOOL answer) noexcept {
    if (answer == 0) {
        errno = reason_of(GetLastError());
    }
    return answer != 0;
}

/// Other programs may read, replace and remove the file while it is open.
int open_file(const std::string& path, DWORD access, DWORD creation, int flags) noexcept {
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE const file =
        CreateFileW(wide_path(path).get(), access, shared, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!succeeded(file != INVALID_HANDLE_VALUE)) {
        return -1;
    }
    const int descriptor =
        _open_osfhandle(reinterpret_cast<std::intptr_t>(file), flags | _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0) {
        CloseHandle(file);
    }
    return descriptor;
}

file_status status_with(const WIN32_FILE_ATTRIBUTE_DATA& data) noexcept {
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return {file_kind::folder};
    }
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DEVICE) != 0) {
        return {file_kind::other};
    }
    return {file_kind::regular, std::uint64_t{data.nFileSizeHigh} << 32U | data.nFileSizeLow};
}

/// Returns another descriptor of the same file, in binary mode. @p descriptor keeps its mode, by default
/// text.
int binary_copy_of(int descriptor) noexcept {
    const int copy = _dup(descriptor);
    if (copy >= 0) {
        _setmode(copy, _O_BINARY);
    }
    return copy;
}

HANDLE handle_of(int descriptor) noexcept {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

bool is_device_name(const wchar_t* path) noexcept {
    HANDLE const file = CreateFileW(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool is_device = GetFileType(file) != FILE_TYPE_DISK;
    CloseHandle(file);
    return is_device;
}

bool is_symbolic_link(const wchar_t* path) noexcept {
    WIN32_FIND_DATAW found{};
    HANDLE const search = FindFirstFileW(path, &found);
    if (search == INVALID_HANDLE_VALUE) {
        return false;
    }
    FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           found.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

} // namespace

std::filesystem::path path_of(const std::string& text) {
    return wide_path(text).get();
}

std::string text_of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

bool look_at(const std::string& path, file_status& found) noexcept {
    const wide_path wide(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    found = {};
    if (is_device_name(wide.get())) {
        found.kind = file_kind::other;
        return true;
    }
    if (!succeeded(GetFileAttributesExW(wide.get(), GetFileExInfoStandard, &data))) {
        return errno == ENOENT;
    }
    found = status_with(data);
    return true;
}

bool look_at_link(const std::string& path, file_status& found) noexcept {
    if (!look_at(path, found)) {
        return false;
    }
    if (is_symbolic_link(wide_path(path).get())) {
        found.kind = file_kind::link;
    }
    return true;
}

bool look_at(int descriptor, file_status& found) noexcept {
    HANDLE const file = handle_of(descriptor);
    FILE_STANDARD_INFO data{};
    found = {file_kind::other};
    if (GetFileType(file) != FILE_TYPE_DISK) {
        return true;
    }
    if (!succeeded(GetFileInformationByHandleEx(file, FileStandardInfo, &data, sizeof data))) {
        return false;
    }
    found = {data.Directory != 0 ? file_kind::folder : file_kind::regular,
             static_cast<std::uint64_t>(data.EndOfFile.QuadPart)};
    return true;
}

bool may_be_written(const std::string& path) noexcept {
    const DWORD attributes = GetFileAttributesW(wide_path(path).get());
    errno = EACCES;
    return attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0;
}

int open_to_read(const std::string& path) noexcept {
    file_status found;
    if (look_at(path, found) && found.kind == file_kind::folder) {
        errno = EISDIR;
        return -1;
    }
    return open_file(path, GENERIC_READ, OPEN_EXISTING, _O_RDONLY);
}

// A file has the access rights of its folder; there are no permission bits to restrict.
int make_file(const std::string& path, bool /*is_private*/) noexcept {
    return open_file(path, GENERIC_READ | GENERIC_WRITE | DELETE, CREATE_NEW, _O_RDWR);
}

int open_standard_input() noexcept {
    return binary_copy_of(standard_input);
}

int open_standard_output() noexcept {
    return binary_copy_of(standard_output);
}

// The end of a pipe: its other side is closed.
std::int64_t read_some(int descriptor, char* to, std::size_t count) noexcept {
    const int got =
        _read(descriptor, to, static_cast<unsigned>(std::min<std::size_t>(count, most_bytes_at_once)));
    return got < 0 && errno == EPIPE ? 0 : got;
}

// For a pipe whose reader has closed it, the C library reports an invalid argument or a bad descriptor.
bool write_all(int descriptor, std::string_view text) noexcept {
    const bool is_pipe = GetFileType(handle_of(descriptor)) == FILE_TYPE_PIPE;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, most_bytes_at_once);
        const int written = _write(descriptor, part.data(), static_cast<unsigned>(part.size()));
        if (written <= 0) {
            errno = is_pipe ? EPIPE : errno;
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// move_file() keeps the properties of the old file.
bool copy_permissions(const file_status& /*old*/, int /*descriptor*/) noexcept {
    return true;
}

bool store(const std::string& path) noexcept {
    const open_descriptor file(open_file(path, GENERIC_WRITE, OPEN_EXISTING, _O_WRONLY));
    return file.get() >= 0 && succeeded(FlushFileBuffers(handle_of(file.get())));
}

// Checks again what is at the target, because that may have changed since the new file was begun. A replaced
// file keeps its rights, attributes and streams. wine replaces a file only if the paths are absolute; it
// would also replace an empty folder.
bool move_file(const std::string& from, const std::string& to) noexcept {
    wide_path source(from);
    wide_path target(to);
    source.complete();
    target.complete();
    const DWORD attributes = GetFileAttributesW(target.get());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return succeeded(
            MoveFileExW(source.get(), target.get(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        errno = EISDIR;
        return false;
    }
    const bool is_replaced = ReplaceFileW(target.get(), source.get(), nullptr,
                                          REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0;
    // After this error, the old file is gone and the new one still has its temporary name.
    return succeeded(is_replaced || (GetLastError() == ERROR_UNABLE_TO_MOVE_REPLACEMENT &&
                                     MoveFileExW(source.get(), target.get(), MOVEFILE_WRITE_THROUGH) != 0));
}

void remove_file(const char* path) noexcept {
    DeleteFileW(wide_path(path).get());
}

char* new_block(std::size_t count) noexcept {
    return static_cast<char*>(std::malloc(count));
}

} // namespace platform

} // namespace kvrimage
