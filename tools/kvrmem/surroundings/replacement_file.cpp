#include "tools/kvrmem/surroundings/replacement_file.h"

#include "tools/kvrmem/surroundings/input_file.h"
#include "tools/kvrmem/surroundings/interruption.h"
#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kvrmem {

namespace {

/// Whether @p answer of the system, which has just been asked for a file, means that there is one. Any
/// failure but that there is none is told in @p reason.
bool is_there(int answer, int& reason) {
    if (answer != 0 && errno != ENOENT) {
        reason = errno;
    }
    return answer == 0;
}

/// Where @p path leads, also when there is nothing there yet. What cannot be found out is told in @p reason.
std::string without_links(const std::string& path, int& reason) {
    constexpr int most_links = 40; // as the system follows
    std::filesystem::path place = path;
    for (int links = 0; links < most_links; ++links) {
        struct stat status {};
        if (!is_there(lstat(place.c_str(), &status), reason) || !S_ISLNK(status.st_mode)) {
            break;
        }
        std::error_code error;
        place = place.parent_path() / std::filesystem::read_symlink(place, error);
        if (error) {
            reason = error.value();
            break;
        }
    }
    return place.string();
}

mode_t permissions_of_new_file() {
    constexpr mode_t readable_and_writable = 0666;
    const mode_t mask = umask(0);
    umask(mask);
    return readable_and_writable & ~mask;
}

/// Owner and permissions of @p old for the open file @p descriptor. Where the owner cannot be kept, nobody
/// gets more than the permissions to read, write and execute.
bool take_after(int descriptor, const struct stat& old) {
    constexpr mode_t permission_bits = 07777;
    constexpr mode_t harmless_bits = 0777;
    struct stat mine {};
    const bool same_owner =
        fstat(descriptor, &mine) == 0 && mine.st_uid == old.st_uid && mine.st_gid == old.st_gid;
    const bool has_owner = same_owner || fchown(descriptor, old.st_uid, old.st_gid) == 0;
    return fchmod(descriptor, old.st_mode & (has_owner ? permission_bits : harmless_bits)) == 0;
}

/// Makes sure that what was written is on the disk before its name is.
bool is_stored(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool stored = descriptor >= 0 && fsync(descriptor) == 0;
    return (descriptor < 0 || close(descriptor) == 0) && stored;
}

} // namespace

std::string title_of_output(const std::string& target) {
    if (target == "-") {
        return "standard output";
    }
    return title_of_file(target);
}

temporary_name::~temporary_name() {
    if (!name.empty()) {
        unlink(name.c_str());
        set_temporary_file("");
    }
}

int temporary_name::make_in(const std::string& folder) {
    const interruption_pause pause;
    std::string pattern = (std::filesystem::path(folder) / ".kvrmem.XXXXXX").string();
    const int descriptor = mkstemp(pattern.data());
    if (descriptor >= 0) {
        name = pattern;
        set_temporary_file(name);
    }
    return descriptor;
}

void temporary_name::keep() noexcept {
    set_temporary_file("");
    name.clear();
}

replacement_file::replacement_file(const std::string& target) : name(title_of_output(target)) {
    // A file that cannot be looked at is not taken for one that is not there: it could be a device, or a
    // link.
    int reason = 0;
    struct stat old {};
    replaces = target != "-" && is_there(stat(target.c_str(), &old), reason);
    const bool is_direct = target == "-" || (replaces && !S_ISREG(old.st_mode));
    place = is_direct ? target : without_links(target, reason);
    if (reason != 0) {
        fail(reason);
    }
    if (is_direct) {
        open_directly();
    } else {
        open_beside(old);
    }
}

void replacement_file::open_directly() {
    file =
        place == "-" ? kvr::output_file(fdopen(dup(STDOUT_FILENO), "wb")) : kvr::output_file::create(place);
    if (!file.is_open()) {
        fail(errno);
    }
}

void replacement_file::open_beside(const struct stat& old) {
    if (replaces && access(place.c_str(), W_OK) != 0) {
        fail(errno);
    }
    const std::string folder = std::filesystem::path(place).parent_path().string();
    const int descriptor = temporary.make_in(folder);
    if (descriptor < 0) {
        const int reason = errno;
        const std::string title = title_of_file(folder);
        throw tool_error(exit_code::input_output,
                         fmt::format("{}: cannot be written: no file can be made in {}: {}", name,
                                     title.empty() ? "this folder" : title.c_str(), std::strerror(reason)));
    }
    file = kvr::output_file(fdopen(descriptor, "wb"));
    const bool is_set_up =
        replaces ? take_after(descriptor, old) : fchmod(descriptor, permissions_of_new_file()) == 0;
    if (!file.is_open() || !is_set_up) {
        fail(errno);
    }
    show_progress("writing", name, descriptor, 0);
}

void replacement_file::commit() {
    if (!file.close()) {
        fail(file.failure());
    }
    if (temporary.path().empty()) {
        return;
    }
    errno = 0;
    if (replaces && !is_stored(temporary.path())) {
        fail(errno != 0 ? errno : EIO);
    }
    const interruption_pause pause;
    if (std::rename(temporary.path().c_str(), place.c_str()) != 0) {
        fail(errno);
    }
    temporary.keep();
}

void replacement_file::fail(int reason) const {
    throw tool_error(exit_code::input_output, name + ": cannot be written: " + std::strerror(reason));
}

} // namespace kvrmem
