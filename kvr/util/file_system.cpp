#include "kvr/util/file_system.h"

#include "kvr/util/platform.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace kvr {

namespace {

// Returns the part before the last separator, or the whole pattern if there is none.
std::string directory_part(const std::string& pattern) {
    const std::size_t slash = pattern.rfind('/');
    const std::size_t separator = slash != std::string::npos ? slash : pattern.rfind('\\');
    std::string directory = pattern.substr(0, separator);
    add_trailing_slashes_to_directory_name(directory);
    return directory;
}

bool remove_matching(const platform::directory& listed, const std::string& wildcard,
                     const platform::directory& target, bool recursive);

bool remove_below(const platform::directory& directory) {
    return remove_matching(directory, "*.*", directory, true);
}

bool remove_entry(const platform::directory_entry& entry, const platform::directory& target, bool recursive) {
    // A directory with any further attribute is treated as a file; callers rely on it.
    if (recursive && entry.attributes == platform::subdirectory_attribute) {
        if (!remove_below(target.subdirectory(entry.name))) {
            return false;
        }
        return target.remove_subdirectory(entry.name);
    }
    return target.remove_file(entry.name);
}

// Entries are listed in one directory and removed in another one, usually the same.
bool remove_matching(const platform::directory& listed, const std::string& wildcard,
                     const platform::directory& target, bool recursive) {
    const platform::directory_listing found = listed.find(wildcard);
    bool all_gone = found.complete;
    for (auto entry = found.entries.begin(); all_gone && entry != found.entries.end(); ++entry) {
        all_gone = remove_entry(*entry, target, recursive);
    }
    return all_gone;
}

bool remove_all_files(const std::string& pattern, bool recursive) {
    const std::string target_path = directory_part(pattern);
    const platform::directory target(target_path);

    const std::size_t wildcard_begin = pattern.find_last_of(platform::separators) + 1;
    const std::string listed_path = pattern.substr(0, wildcard_begin);
    const std::string wildcard = pattern.substr(wildcard_begin);
    if (listed_path == target_path) {
        return remove_matching(target, wildcard, target, recursive);
    }
    return remove_matching(platform::directory(listed_path), wildcard, target, recursive);
}

constexpr std::size_t copy_block = 4096;

bool copy_bytes(std::FILE* source, std::FILE* destination) {
    std::array<char, copy_block> block{};
    std::size_t read = 0;
    std::size_t written = 0;
    do {
        read = std::fread(block.data(), 1, block.size(), source);
        written = std::fwrite(block.data(), 1, read, destination);
    } while (written == read && written != 0);
    return std::ferror(source) == 0 && std::ferror(destination) == 0;
}

bool copy_file(const char* source_path, const char* destination_path) {
    const platform::file_stream source = platform::open_to_read(source_path);
    if (source == nullptr) {
        return false;
    }
    const platform::file_stream destination(std::fopen(destination_path, "wb"));
    if (destination == nullptr) {
        return false;
    }
    static_cast<void>(std::setvbuf(destination.get(), nullptr, _IOFBF, copy_block));
    return copy_bytes(source.get(), destination.get());
}

} // namespace

} // namespace kvr

bool kvr_file_exists(const std::string& path) {
    return kvr::platform::exists(path.c_str());
}

bool kvr_check_if_file_or_dir_exists(const std::string& path) {
    return kvr_file_exists(path);
}

std::string kvr_get_current_directory() {
    std::array<char, 500> buffer{};
    return kvr::platform::get_current_directory(buffer.data(), buffer.size()) ? buffer.data() : "";
}

void add_trailing_slashes_to_directory_name(std::string& directory) {
    const char last = directory.at(directory.size() - 1);
    if (last != '/' && last != '\\') {
        directory += '/';
    }
}

int kvr_mkdir(const char* path) {
    return path != nullptr ? kvr::platform::make_directory(path) : -1;
}

int kvr_rmdir(const char* path) {
    return path != nullptr ? kvr::platform::remove_directory(path) : -1;
}

bool kvr_remove_file(const char* path) {
    return path != nullptr && kvr::platform::remove_file(path);
}

bool kvr_remove_all_files(const char* pattern, bool recursive) {
    if (pattern == nullptr) {
        return false;
    }
    return kvr::remove_all_files(pattern, recursive);
}

bool kvr_file_copy(const char* source, const char* destination) {
    return source != nullptr && destination != nullptr && kvr::copy_file(source, destination);
}
