#include "kvr/util/platform.h"
#include "kvrimage/files/open_descriptor.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/signal_pause.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kvrimage {

signal_pause::signal_pause() noexcept {
    sigset_t waiting;
    sigemptyset(&waiting);
    for (const int signal : ending_signals) {
        sigaddset(&waiting, signal);
    }
    pthread_sigmask(SIG_BLOCK, &waiting, &before);
}

signal_pause::~signal_pause() {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

namespace platform {

namespace {

file_kind kind_of(mode_t mode) noexcept {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return file_kind::regular;
    case S_IFDIR:
        return file_kind::folder;
    case S_IFLNK:
        return file_kind::link;
    default:
        return file_kind::other;
    }
}

/// Evaluates @p answer, the result of the call that has just filled @p status; its reason is in errno.
bool is_answered(int answer, const struct stat& status, file_status& found) noexcept {
    if (answer != 0) {
        found = {};
        return errno == ENOENT;
    }
    found = {kind_of(status.st_mode), static_cast<std::uint64_t>(status.st_size), status.st_uid,
             status.st_gid, status.st_mode};
    return true;
}

} // namespace

std::filesystem::path path_of(const std::string& text) {
    return text;
}

std::string text_of(const std::filesystem::path& path) {
    return path.string();
}

bool look_at(const std::string& path, file_status& found) noexcept {
    struct stat status {};
    return is_answered(stat(path.c_str(), &status), status, found);
}

bool look_at_link(const std::string& path, file_status& found) noexcept {
    struct stat status {};
    return is_answered(lstat(path.c_str(), &status), status, found);
}

bool look_at(int descriptor, file_status& found) noexcept {
    struct stat status {};
    return is_answered(fstat(descriptor, &status), status, found);
}

bool may_be_written(const std::string& path) noexcept {
    return access(path.c_str(), W_OK) == 0;
}

int open_to_read(const std::string& path) noexcept {
    return open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int make_file(const std::string& path, bool is_private) noexcept {
    constexpr mode_t for_everybody = 0666; // except those of the process's mask
    constexpr mode_t for_the_owner = 0600;
    return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC,
                is_private ? for_the_owner : for_everybody);
}

int open_standard_input() noexcept {
    return dup(standard_input);
}

int open_standard_output() noexcept {
    return dup(standard_output);
}

std::int64_t read_some(int descriptor, char* to, std::size_t count) noexcept {
    ssize_t got = -1;
    do {
        got = ::read(descriptor, to, count);
    } while (got < 0 && errno == EINTR);
    return got;
}

bool write_all(int descriptor, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0) {
            errno = EIO;
            return false;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool copy_permissions(const file_status& old, int descriptor) noexcept {
    constexpr mode_t permission_bits = 07777;
    constexpr mode_t harmless_bits = 0777;
    struct stat mine {};
    const bool same_owner =
        fstat(descriptor, &mine) == 0 && mine.st_uid == old.owner && mine.st_gid == old.group;
    const bool has_owner = same_owner || fchown(descriptor, old.owner, old.group) == 0;
    return fchmod(descriptor, old.permissions & (has_owner ? permission_bits : harmless_bits)) == 0;
}

bool store(const std::string& path) noexcept {
    const open_descriptor file(open_to_read(path));
    return file.get() >= 0 && fsync(file.get()) == 0;
}

bool move_file(const std::string& from, const std::string& to) noexcept {
    return std::rename(from.c_str(), to.c_str()) == 0;
}

void remove_file(const char* path) noexcept {
    unlink(path);
}

char* new_block(std::size_t count) noexcept {
    const std::size_t alignment =
        count < kvr::platform::large_page ? alignof(std::max_align_t) : kvr::platform::large_page;
    void* block = nullptr;
    return posix_memalign(&block, alignment, count) == 0 ? static_cast<char*>(block) : nullptr;
}

} // namespace platform

} // namespace kvrimage
