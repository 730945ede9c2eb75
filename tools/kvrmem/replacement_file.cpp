#include "tools/kvrmem/replacement_file.h"

#include "tools/kvrmem/tool_error.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kvrmem {

namespace {

/// The permissions of the file that is replaced, or those that a new file gets.
mode_t permissions_for(const std::string& place) {
    constexpr mode_t permission_bits = 07777;
    constexpr mode_t new_file = 0666;
    struct stat status {};
    if (stat(place.c_str(), &status) == 0) {
        return status.st_mode & permission_bits;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return new_file & ~mask;
}

bool is_written_directly(const std::string& target) {
    struct stat status {};
    return target == "-" || (stat(target.c_str(), &status) == 0 && !S_ISREG(status.st_mode));
}

std::string without_links(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

} // namespace

replacement_file::replacement_file(const std::string& target)
    : name(target == "-" ? "standard output" : target) {
    if (is_written_directly(target)) {
        place = target;
        open_directly();
    } else {
        place = without_links(target);
        open_beside();
    }
}

replacement_file::~replacement_file() {
    if (!temporary.empty()) {
        unlink(temporary.c_str());
    }
}

void replacement_file::open_directly() {
    file =
        place == "-" ? kvr::output_file(fdopen(dup(STDOUT_FILENO), "wb")) : kvr::output_file::create(place);
    if (!file.is_open()) {
        fail(std::strerror(errno));
    }
}

void replacement_file::open_beside() {
    const std::filesystem::path path(place);
    std::string pattern = (path.parent_path() / ("." + path.filename().string() + ".XXXXXX")).string();
    const int descriptor = mkstemp(pattern.data());
    if (descriptor < 0) {
        fail(std::strerror(errno));
    }
    temporary = pattern;
    fchmod(descriptor, permissions_for(place));
    file = kvr::output_file(fdopen(descriptor, "wb"));
}

void replacement_file::commit() {
    errno = 0;
    if (!file.close()) {
        fail(errno != 0 ? std::strerror(errno) : "write error");
    }
    if (!temporary.empty()) {
        if (std::rename(temporary.c_str(), place.c_str()) != 0) {
            fail(std::strerror(errno));
        }
        temporary.clear();
    }
}

void replacement_file::fail(const std::string& reason) {
    throw tool_error(exit_code::input_output, name + ": cannot be written: " + reason);
}

} // namespace kvrmem
