#include "kvrimage/files/input_file.h"

#include "kvrimage/edit/edited_text.h"
#include "kvrimage/files/file_error.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/files/platform.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::size_t first_block = std::size_t{64} << 10U;
/// Most room reserved before the first read: the system may report more bytes than a file has.
constexpr std::size_t most_room_at_once = std::size_t{64} << 20U;
/// Small enough that an endless line is noticed soon.
constexpr std::size_t most_bytes_a_read = most_bytes_without_end;

[[noreturn]] void fail_to_open(const std::string& title, int reason) {
    throw file_error(reason, reason == EISDIR
                                 ? title + ": is a folder"
                                 : fmt::format("{}: cannot be opened: {}", title, std::strerror(reason)));
}

[[noreturn]] void fail_to_read(const std::string& title, int reason) {
    throw file_error(reason, fmt::format("{}: cannot be read: {}", title, std::strerror(reason)));
}

[[noreturn]] void refuse_endless_input(const std::string& title) {
    throw file_error(
        EFBIG, fmt::format("{}: error: only a file may have more than {} MiB; copy the input to a file first",
                           title, most_bytes_without_end >> 20U));
}

[[noreturn]] void refuse_long_line(const std::string& title, std::string_view text, std::size_t line_begin) {
    const auto line =
        1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(line_begin), '\n');
    throw file_error(EFBIG, fmt::format("{}:{}: error: the line is longer than {} MiB", title, line,
                                        most_bytes_without_end >> 20U));
}

/// Bytes of a regular file; 0 if the size is unknown, or if the system reports an endless file as empty.
std::uint64_t size_of_regular_file(const std::string& title, int descriptor) {
    platform::file_status status;
    if (!platform::look_at(descriptor, status)) {
        fail_to_open(title, errno);
    }
    if (status.kind == platform::file_kind::folder) {
        fail_to_open(title, EISDIR);
    }
    return status.kind == platform::file_kind::regular ? status.size : 0;
}

/// Bytes read; 0 at the end.
std::size_t read_some(const std::string& title, int descriptor, char* to, std::size_t count) {
    const std::int64_t got = platform::read_some(descriptor, to, count);
    if (got < 0) {
        fail_to_read(title, errno);
    }
    return static_cast<std::size_t>(got);
}

/// Checks the line lengths of a growing text. Examines few of its bytes: it only searches for a line end
/// within the limit.
class line_guard {
public:
    explicit line_guard(const any_lines& asked) : is_free(asked) {}

    void see(const std::string& title, std::string_view text) {
        while (!any && text.size() - line_begin > most_bytes_without_end) {
            const std::string_view window = text.substr(line_begin, most_bytes_without_end + 1);
            const std::size_t line_end = window.rfind('\n');
            if (line_end == std::string_view::npos) {
                any = is_free && is_free(text);
                if (!any) {
                    refuse_long_line(title, text, line_begin);
                }
            } else {
                line_begin += line_end + 1;
            }
        }
    }

private:
    const any_lines& is_free;
    bool any = false;
    std::size_t line_begin = 0; ///< of the last line found
};

} // namespace

input_file::input_file(const std::string& path, const file_observer& opened, const any_lines& is_free)
    : title(title_of_input(path)) {
    file = open_descriptor(path == "-" ? platform::open_standard_input() : platform::open_to_read(path));
    if (file.get() < 0) {
        fail_to_open(title, errno);
    }
    read(file.get(), opened, is_free);
}

input_file::input_file(int descriptor, std::string name, const file_observer& opened,
                       const any_lines& is_free)
    : title(std::move(name)) {
    read(descriptor, opened, is_free);
}

void input_file::edit(std::span<const text_edit> edits) {
    std::size_t new_size = bytes->size();
    for (const text_edit& each : edits) {
        new_size += each.replacement.size();
        new_size -= each.length;
    }
    const std::size_t old_size = bytes->size();
    bytes->reserve(std::max(old_size, new_size));
    bytes->resize(edit_in_place({bytes->begin(), std::max(old_size, new_size)}, old_size, edits));
}

void input_file::read(int descriptor, const file_observer& opened, const any_lines& is_free) {
    const std::uint64_t size = size_of_regular_file(title, descriptor);
    if (opened) {
        opened(title, descriptor, size);
    }
    read_blocks(descriptor, size, is_free);
}

void input_file::read_blocks(int descriptor, std::uint64_t size, const any_lines& is_free) {
    // One byte more, because the read that finds the end needs room.
    const std::size_t expected = std::max<std::size_t>(size + 1, first_block);
    bytes->reserve(std::min(expected, most_room_at_once));
    line_guard lines(is_free);
    for (;;) {
        if (bytes->room() == 0) {
            const std::size_t most =
                size == 0 ? most_bytes_without_end + 1 : std::numeric_limits<std::size_t>::max();
            const std::size_t doubled = std::min(bytes->size() * 2, most);
            bytes->reserve(bytes->size() < expected ? std::min(expected, doubled) : doubled);
        }
        const std::size_t got =
            read_some(title, descriptor, bytes->end(), std::min(bytes->room(), most_bytes_a_read));
        if (got == 0) {
            return;
        }
        bytes->used(got);
        if (size == 0 && bytes->size() > most_bytes_without_end) {
            refuse_endless_input(title);
        }
        lines.see(title, bytes->text());
    }
}

} // namespace kvrimage
