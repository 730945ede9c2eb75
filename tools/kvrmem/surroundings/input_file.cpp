#include "tools/kvrmem/surroundings/input_file.h"

#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/tool_error.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kvrmem {

namespace {

[[noreturn]] void fail(const std::string& name, const std::string& reason) {
    throw tool_error(exit_code::input_output, name + ": " + reason);
}

/// What @p stream, which messages call @p title, still holds.
std::string read_rest(std::FILE* stream, const std::string& title) {
    std::string text;
    std::array<char, 65536> block{};
    bool at_end = false;
    while (!at_end) {
        errno = 0;
        const std::size_t count = std::fread(block.data(), 1, block.size(), stream);
        text.append(block.data(), count);
        if (std::ferror(stream) != 0 && errno == EINTR) {
            std::clearerr(stream);
        } else if (std::ferror(stream) != 0) {
            fail(title, std::string("cannot be read: ") + std::strerror(errno));
        } else {
            at_end = count == 0;
        }
    }
    return text;
}

/// Why a file cannot be opened, when the system's own word would not tell.
std::string open_failure(const std::string& path) {
    const int reason = errno;
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        return "is a folder";
    }
    return std::string("cannot be opened: ") + std::strerror(reason);
}

struct file_closer {
    void operator()(std::FILE* stream) const noexcept { static_cast<void>(std::fclose(stream)); }
};

std::string read_all(const std::string& path, const std::string& title) {
    errno = 0;
    const std::unique_ptr<std::FILE, file_closer> stream(std::fopen(path.c_str(), "rb"));
    struct stat status {};
    if (!stream || (fstat(fileno(stream.get()), &status) == 0 && S_ISDIR(status.st_mode))) {
        fail(title, open_failure(path));
    }
    show_progress("reading", title, fileno(stream.get()), status.st_size);
    return read_rest(stream.get(), title);
}

/// Standard input, pipes, sockets and terminals.
bool can_be_read_once(const std::string& path) {
    struct stat status {};
    return path == "-" || (stat(path.c_str(), &status) == 0 &&
                           (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || S_ISCHR(status.st_mode)));
}

} // namespace

std::string title_of_file(const std::string& path) {
    if (path == "-") {
        return "standard input";
    }
    return make_visible(path).text;
}

input_file::input_file(std::string file_path)
    : path(std::move(file_path)),
      title(title_of_file(path)),
      in_memory(can_be_read_once(path)) {
    if (path == "-") {
        show_progress("reading", title, STDIN_FILENO, 0);
        text = read_rest(stdin, title);
    } else if (in_memory) {
        text = read_all(path, title);
    }
}

input_file::input_file(std::string name, std::string contents)
    : title(std::move(name)),
      in_memory(true),
      text(std::move(contents)) {}

std::string input_file::contents() const {
    if (in_memory) {
        return text;
    }
    return read_all(path, title);
}

kvr::line_source input_file::lines(std::size_t limit) const {
    if (in_memory) {
        return kvr::line_source(text, limit);
    }
    errno = 0;
    std::FILE* stream = std::fopen(path.c_str(), "rb");
    if (stream != nullptr) {
        struct stat status {};
        const bool is_known = fstat(fileno(stream), &status) == 0;
        show_progress("reading", title, fileno(stream), is_known ? status.st_size : 0);
    }
    kvr::line_source source(stream, limit);
    if (!source.is_open()) {
        fail(title, open_failure(path));
    }
    return source;
}

void input_file::require_whole(const kvr::line_source& source) const {
    if (source.failed()) {
        fail(title, "cannot be read to its end");
    }
}

} // namespace kvrmem
