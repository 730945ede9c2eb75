#include "tools/kvrmem/surroundings/input_file.h"

#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/tool_error.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
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

/// Some files of the system say that they are empty and go on for ever.
bool has_an_end(const struct stat& status) {
    return S_ISREG(status.st_mode) && status.st_size > 0;
}

bool may_have_no_end(std::FILE* stream) {
    struct stat status {};
    return fstat(fileno(stream), &status) != 0 || !has_an_end(status);
}

[[noreturn]] void fail(const std::string& name, const std::string& reason) {
    throw tool_error(exit_code::input_output, name + ": " + reason);
}

[[noreturn]] void fail_at_long_line(const std::string& title, std::uint64_t line) {
    throw tool_error(exit_code::bad_input, fmt::format("{}:{}: error: the line is longer than {} MiB", title,
                                                       line, most_bytes_without_end >> 20U));
}

/// Looks at the bytes of a file as they are read, before more is asked for.
class growth_guard {
public:
    /// @param may_have_no_end the whole has a limit, else each line of it.
    growth_guard(const std::string& name, bool may_have_no_end) : title(name), is_endless(may_have_no_end) {}

    void see(std::string_view block) {
        const std::size_t newline = block.rfind('\n');
        if (newline != std::string_view::npos && !is_endless) {
            lines += static_cast<std::uint64_t>(std::count(block.begin(), block.end(), '\n'));
            bytes = 0;
            block.remove_prefix(newline + 1);
        }
        bytes += block.size();
        if (bytes > most_bytes_without_end) {
            fail();
        }
    }

private:
    [[noreturn]] void fail() const {
        if (!is_endless) {
            fail_at_long_line(title, lines + 1);
        }
        throw tool_error(
            exit_code::bad_input,
            fmt::format("{}: error: only a file may have more than {} MiB; copy the input to a file first",
                        title, most_bytes_without_end >> 20U));
    }

    const std::string& title;
    bool is_endless;
    std::uint64_t lines = 0;
    std::size_t bytes = 0; ///< of the whole, or of the last line
};

/// What @p stream, which messages call @p title, still holds.
std::string read_rest(std::FILE* stream, const std::string& title) {
    std::string text;
    growth_guard guard(title, may_have_no_end(stream));
    std::array<char, 65536> block{};
    bool at_end = false;
    while (!at_end) {
        errno = 0;
        const std::size_t count = std::fread(block.data(), 1, block.size(), stream);
        guard.see({block.data(), count});
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

/// Standard input, and all but folders and files with a size.
bool is_kept_in_memory(const std::string& path) {
    struct stat status {};
    return path == "-" ||
           (stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode) && !has_an_end(status));
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
      in_memory(is_kept_in_memory(path)) {
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

std::uint64_t input_file::size() const {
    struct stat status {};
    if (in_memory) {
        return text.size();
    }
    return stat(path.c_str(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::string input_file::contents() const {
    if (in_memory) {
        return text;
    }
    return read_all(path, title);
}

kvr::line_source input_file::lines(std::size_t longest) const {
    const std::size_t limit = std::min(longest, most_bytes_without_end);
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

void input_file::refuse_long_line(std::uint64_t line) const {
    fail_at_long_line(title, line);
}

void input_file::require_whole(const kvr::line_source& source) const {
    if (source.failed()) {
        fail(title, "cannot be read to its end");
    }
}

} // namespace kvrmem
