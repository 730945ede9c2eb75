#include "kvr/util/platform.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kvr::platform {

namespace {

struct close_directory {
    void operator()(DIR* stream) const noexcept { static_cast<void>(closedir(stream)); }
};
using directory_stream = std::unique_ptr<DIR, close_directory>;

bool matches(std::string_view name, std::string_view wildcard) noexcept {
    if (wildcard == "*.*") {
        return true;
    }
    // Only the last "*" is kept for backtracking: it covers all matches of the earlier ones.
    std::size_t at = 0;
    std::size_t in_wildcard = 0;
    std::size_t behind_star = std::string_view::npos;
    std::size_t star_ends_at = 0;
    while (at < name.size()) {
        if (in_wildcard < wildcard.size() && wildcard[in_wildcard] == '*') {
            behind_star = ++in_wildcard;
            star_ends_at = at;
        } else if (in_wildcard < wildcard.size() &&
                   (wildcard[in_wildcard] == '?' || wildcard[in_wildcard] == name[at])) {
            ++in_wildcard;
            ++at;
        } else if (behind_star != std::string_view::npos) {
            in_wildcard = behind_star;
            at = ++star_ends_at;
        } else {
            return false;
        }
    }
    return wildcard.find_first_not_of('*', in_wildcard) == std::string_view::npos;
}

unsigned attributes_of(const struct stat& status) noexcept {
    if (!S_ISDIR(status.st_mode)) {
        return 0;
    }
    constexpr unsigned read_only = 1;
    const bool writable = (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
    return writable ? subdirectory_attribute : subdirectory_attribute + read_only;
}

bool is_dot_or_dots(const char* name) noexcept {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// Uses a second descriptor, because a stream closes its own. It is a copy: opening "." requires the right to
// search the directory, which a listable directory may not grant. Copies share their position in the
// directory.
directory_stream open_stream(int descriptor) noexcept {
    const int own = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    directory_stream stream(fdopendir(own));
    if (stream == nullptr) {
        close(own); // has no effect if it was not opened
        return nullptr;
    }
    rewinddir(stream.get());
    return stream;
}

// Returns null at the end, with errno 0, and if the directory cannot be read further.
const dirent* next_entry(DIR* stream) noexcept {
    errno = 0;
    return readdir(stream);
}

// An entry with unreadable attributes gets those of a file; its removal then fails or succeeds.
directory_entry entry_of(int descriptor, const char* name) {
    struct stat status = {};
    static_cast<void>(fstatat(descriptor, name, &status, AT_SYMLINK_NOFOLLOW));
    return {name, attributes_of(status)};
}

} // namespace

const char* const separators = "/";

bool exists(const char* path) noexcept {
    return access(path, F_OK) == 0;
}

bool get_current_directory(char* buffer, std::size_t size) noexcept {
    return getcwd(buffer, size) != nullptr;
}

int make_directory(const char* path) noexcept {
    return mkdir(path, S_IRWXU | S_IRWXG | S_IRWXO);
}

int remove_directory(const char* path) noexcept {
    return rmdir(path);
}

bool remove_file(const char* path) noexcept {
    return unlink(path) == 0;
}

file_stream open_to_read(const char* path) noexcept {
    file_stream stream(std::fopen(path, "rb"));
    if (stream == nullptr) {
        return nullptr;
    }
    struct stat status = {}; // of no kind if the call fails
    static_cast<void>(fstat(fileno(stream.get()), &status));
    return S_ISDIR(status.st_mode) ? nullptr : std::move(stream);
}

int process_id() noexcept {
    return getpid();
}

void prefer_large_pages([[maybe_unused]] char* block, [[maybe_unused]] std::size_t size) noexcept {
#if defined(MADV_HUGEPAGE)
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const std::size_t before = (large_page - address % large_page) % large_page;
    if (size >= before + large_page) {
        static_cast<void>(madvise(block + before, (size - before) / large_page * large_page, MADV_HUGEPAGE));
    }
#endif
}

std::string executable_path() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).string();
}

struct directory::handle {
    handle() noexcept = default;
    handle(const handle&) = delete;
    handle& operator=(const handle&) = delete;
    ~handle() {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }

    int descriptor = -1; // negative without a directory: every call with it fails
};

directory::directory(std::unique_ptr<handle> subdirectory) noexcept : opened(std::move(subdirectory)) {}
directory::~directory() = default;

// The object that closes the descriptor exists before the descriptor.
directory::directory(const std::string& path) : opened(std::make_unique<handle>()) {
    opened->descriptor = open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

directory directory::subdirectory(const std::string& name) const {
    auto below = std::make_unique<handle>();
    below->descriptor =
        openat(opened->descriptor, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    return directory(std::move(below));
}

directory_listing directory::find(const std::string& wildcard) const {
    directory_listing found;
    const directory_stream stream = open_stream(opened->descriptor);
    if (stream == nullptr) {
        found.complete = opened->descriptor < 0; // a missing directory has no entries
        return found;
    }
    while (const dirent* const entry = next_entry(stream.get())) {
        if (!is_dot_or_dots(entry->d_name) && matches(entry->d_name, wildcard)) {
            found.entries.push_back(entry_of(opened->descriptor, entry->d_name));
        }
    }
    found.complete = errno == 0;
    return found;
}

bool directory::remove_file(const std::string& name) const {
    return unlinkat(opened->descriptor, name.c_str(), 0) == 0;
}

bool directory::remove_subdirectory(const std::string& name) const {
    return unlinkat(opened->descriptor, name.c_str(), AT_REMOVEDIR) == 0;
}

} // namespace kvr::platform
