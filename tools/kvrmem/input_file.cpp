#include "tools/kvrmem/input_file.h"

#include "tools/kvrmem/tool_error.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <utility>

namespace kvrmem {

namespace {

[[noreturn]] void fail(const std::string& name, const std::string& reason) {
    throw tool_error(exit_code::input_output, name + ": " + reason);
}

std::string read_standard_input() {
    std::string text;
    std::array<char, 65536> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), stdin)) != 0) {
        text.append(block.data(), count);
    }
    if (std::ferror(stdin) != 0) {
        fail("standard input", std::string("cannot be read: ") + std::strerror(errno));
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

} // namespace

input_file::input_file(std::string file_path)
    : path(std::move(file_path)),
      title(path == "-" ? "standard input" : path) {
    if (path == "-") {
        text = read_standard_input();
    }
}

kvr::line_source input_file::lines(std::size_t limit) const {
    if (path == "-") {
        return kvr::line_source(text, limit);
    }
    errno = 0;
    kvr::line_source source = kvr::line_source::open(path, limit);
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
