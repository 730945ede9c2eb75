#include "kvrimage/files/replacement_file.h"

#include "kvrimage/files/file_error.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/files/open_descriptor.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace kvrimage {

namespace {

/// Whether @p answer of the system, which has just been asked for a file, means that there is one. Any
/// failure but that there is none goes to @p reason.
bool is_there(int answer, int& reason) {
    if (answer != 0 && errno != ENOENT) {
        reason = errno;
    }
    return answer == 0;
}

/// Where @p path leads, also when there is nothing there yet. Why that cannot be found out goes to @p reason.
std::string without_links(const std::string& path, int& reason) {
    constexpr int most_links = 40; // as the system follows
    std::filesystem::path place = path;
    for (int links = 0; reason == 0 && links < most_links; ++links) {
        struct stat status {};
        if (!is_there(lstat(place.c_str(), &status), reason) || !S_ISLNK(status.st_mode)) {
            break;
        }
        std::error_code error;
        place = place.parent_path() / std::filesystem::read_symlink(place, error);
        reason = error.value();
    }
    return place.string();
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
    const open_descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return file.get() >= 0 && fsync(file.get()) == 0;
}

} // namespace

replacement_file::replacement_file(const std::string& target, const file_observer& opened)
    : title(title_of_output(target)) {
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
        open_beside(old, opened);
    }
}

void replacement_file::open_directly() {
    if (place == "-") {
        descriptor = dup(STDOUT_FILENO);
        file = kvr::output_file(fdopen(descriptor, "wb"));
    } else {
        file = kvr::output_file::create(place);
    }
    if (!file.is_open()) {
        fail(errno);
    }
}

void replacement_file::open_beside(const struct stat& old, const file_observer& opened) {
    if (replaces && access(place.c_str(), W_OK) != 0) {
        fail(errno);
    }
    const std::string folder = std::filesystem::path(place).parent_path().string();
    descriptor = temporary.make_in(folder, replaces);
    if (descriptor < 0) {
        const int reason = errno;
        throw file_error(reason, fmt::format("{}: cannot be written: no file can be made in {}: {}", title,
                                             folder.empty() ? "this folder" : title_of_output(folder),
                                             std::strerror(reason)));
    }
    file = kvr::output_file(fdopen(descriptor, "wb"));
    if (replaces && !take_after(descriptor, old)) {
        fail(errno);
    }
    if (opened) {
        opened(title, descriptor, 0);
    }
}

/// Big texts are not copied into the buffer, as long as nothing is in it that comes before them.
void replacement_file::write(std::string_view text) {
    constexpr std::size_t big = std::size_t{64} << 10U;
    if (descriptor >= 0 && !is_buffering && text.size() >= big) {
        write_past_buffer(text);
    } else {
        is_buffering = true;
        file.write(text);
    }
}

void replacement_file::write_past_buffer(std::string_view text) noexcept {
    while (!text.empty() && failure_past_buffer == 0) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            failure_past_buffer = errno;
        }
    }
}

void replacement_file::complete() {
    if (is_complete) {
        return;
    }
    const bool is_closed = file.close();
    if (failure_past_buffer != 0 || !is_closed) {
        fail(failure_past_buffer != 0 ? failure_past_buffer : file.failure());
    }
    if (replaces && !temporary.path().empty() && !is_stored(temporary.path())) {
        fail(errno);
    }
    is_complete = true;
}

void replacement_file::commit() {
    complete();
    if (temporary.path().empty()) {
        return;
    }
    const signal_pause pause;
    if (std::rename(temporary.path().c_str(), place.c_str()) != 0) {
        fail(errno);
    }
    temporary.keep();
}

void replacement_file::fail(int reason) const {
    throw file_error(reason, fmt::format("{}: cannot be written: {}", title, std::strerror(reason)));
}

} // namespace kvrimage
