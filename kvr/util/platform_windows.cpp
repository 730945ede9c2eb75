#include "kvr/util/platform.h"

#include <cstdint>
#include <direct.h>
#include <io.h>
#include <process.h>
#include <string_view>
#include <utility>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace kvr::platform {

namespace {

struct search_handle {
    explicit search_handle(std::intptr_t begun) noexcept : value(begun) {}
    search_handle(const search_handle&) = delete;
    search_handle& operator=(const search_handle&) = delete;
    ~search_handle() {
        if (value != -1) {
            _findclose(value);
        }
    }

    std::intptr_t value;
};

} // namespace

const char* const separators = "/\\";

bool exists(const char* path) noexcept {
    return _access(path, 0) == 0;
}

bool get_current_directory(char* buffer, std::size_t size) noexcept {
    return _getcwd(buffer, static_cast<int>(size)) != nullptr;
}

int make_directory(const char* path) noexcept {
    return _mkdir(path);
}

int remove_directory(const char* path) noexcept {
    return _rmdir(path);
}

bool remove_file(const char* path) noexcept {
    return _unlink(path) == 0;
}

// Directories cannot be opened as files here.
file_stream open_to_read(const char* path) noexcept {
    return file_stream(std::fopen(path, "rb"));
}

int process_id() noexcept {
    return _getpid();
}

void prefer_large_pages(char* /*block*/, std::size_t /*size*/) noexcept {}

std::string executable_path() {
    std::string path(256, '\0');
    for (;;) {
        const DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
        // A path that fills the buffer is cut.
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(2 * path.size());
    }
}

// Entries are accessed by their paths. A link to a directory has an attribute of its own in addition to that
// of a subdirectory, so it is never entered.
struct directory::handle {
    std::string path; // including its separator
};

directory::directory(std::unique_ptr<handle> subdirectory) noexcept : opened(std::move(subdirectory)) {}
directory::~directory() = default;

directory::directory(const std::string& path) : opened(std::make_unique<handle>(handle{path})) {
    if (path.find_last_of(separators) + 1 != path.size()) {
        opened->path += '/';
    }
}

directory directory::subdirectory(const std::string& name) const {
    return directory(opened->path + name + '/');
}

directory_listing directory::find(const std::string& wildcard) const {
    directory_listing found;
    _finddata_t entry = {};
    const search_handle search(_findfirst((opened->path + wildcard).c_str(), &entry));
    bool more = search.value != -1;
    while (more) {
        const std::string_view name = entry.name;
        if (name != "." && name != "..") {
            found.entries.push_back({entry.name, entry.attrib});
        }
        more = _findnext(search.value, &entry) == 0;
    }
    return found;
}

bool directory::remove_file(const std::string& name) const {
    return _unlink((opened->path + name).c_str()) == 0;
}

bool directory::remove_subdirectory(const std::string& name) const {
    return _rmdir((opened->path + name).c_str()) == 0;
}

} // namespace kvr::platform
