#include "kvr/memory/io/line_source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace kvr {

line_source::line_source(std::string_view text, std::size_t longest_line)
    : data(text.data()),
      whole_lines_end(text.rfind('\n') + 1),
      end(text.size()),
      limit(longest_line),
      opened(true),
      end_met(false) {}

line_source::line_source(std::FILE* stream, std::size_t longest_line) : file(stream), limit(longest_line) {
    if (!file) {
        return;
    }
    static_cast<void>(std::setvbuf(file.get(), nullptr, _IONBF, 0));
    file_start = std::ftell(file.get());
    const bool seekable = file_start >= 0;
    exhausted = false;
    const bool has_bytes = fetch();
    while (!seekable && fetch()) {
    }
    opened = has_bytes || !read_failed;
    end_met = !opened;
}

line_source line_source::open(const std::string& path, std::size_t longest_line) {
    return line_source(std::fopen(path.c_str(), "rb"), longest_line);
}

bool line_source::is_open() const noexcept {
    return opened;
}

bool line_source::failed() const noexcept {
    return read_failed;
}

bool line_source::at_end() noexcept {
    finish_cut_line({});
    return end_met;
}

std::string_view line_source::next_line() {
    finish_cut_line({});
    while (!newline_ahead() && end - position <= limit && fetch()) {
    }
    was_cut = false;
    const std::string_view ahead(data + position, end - position);
    const std::size_t length =
        newline_ahead() ? ahead.substr(0, limit == unlimited ? limit : limit + 1).find('\n') : ahead.npos;
    had_newline = length != ahead.npos;
    if (had_newline) {
        position += length + 1;
        return ahead.substr(0, length);
    }
    if (ahead.size() > limit) {
        return cut_line();
    }
    end_met = true;
    return ahead;
}

std::string_view line_source::cut_line() {
    cut_text.assign(data + position, limit);
    position += limit;
    was_cut = true;
    rest_pending = true;
    return cut_text;
}

bool line_source::line_was_cut() const noexcept {
    return was_cut;
}

bool line_source::line_had_newline() const noexcept {
    return had_newline;
}

char line_source::first_of_rest(std::string_view ignored) {
    return finish_cut_line(ignored);
}

/// Moves to the end of the line that was cut. Returns the result of first_of_rest().
char line_source::skip_rest(std::string_view ignored) noexcept {
    char first = '\0';
    while (rest_pending) {
        const std::string_view ahead(data + position, end - position);
        const std::size_t length = newline_ahead() ? ahead.find('\n') : ahead.npos;
        const std::string_view rest = ahead.substr(0, length);
        const std::size_t found = first == '\0' ? rest.find_first_not_of(ignored) : rest.npos;
        first = found != rest.npos ? rest[found] : first;
        position = length != ahead.npos ? position + length + 1 : end;
        end_met = length == ahead.npos && !fetch();
        rest_pending = length == ahead.npos && !end_met;
    }
    return first;
}

bool line_source::rewind() {
    if (!opened) {
        return false;
    }
    if (!data_is_from_start || !exhausted) {
        std::clearerr(file.get());
        if (std::fseek(file.get(), file_start, SEEK_SET) != 0) {
            return false;
        }
        position = whole_lines_end = end = 0;
        exhausted = read_failed = false;
        data_is_from_start = true;
        fetch();
    }
    position = 0;
    end_met = was_cut = rest_pending = had_newline = false;
    return !read_failed;
}

/// Reads more bytes after the data, which have no LF from the position on. Returns false if nothing was read.
bool line_source::fetch() {
    if (exhausted) {
        return false;
    }
    make_room();
    const std::size_t count = read_block(buffer.get() + end, capacity - end);
    const std::string_view block(buffer.get() + end, count);
    const std::size_t last_newline = block.rfind('\n');
    if (last_newline != block.npos) {
        whole_lines_end = end + last_newline + 1;
    }
    end += count;
    return count != 0;
}

/// Moves the unconsumed bytes to the front of the buffer, and enlarges the buffer if they fill it.
void line_source::make_room() {
    if (position > 0) {
        std::memmove(buffer.get(), buffer.get() + position, end - position);
        end -= position;
        position = whole_lines_end = 0;
        data_is_from_start = false;
    }
    if (end < capacity) {
        return;
    }
    const std::size_t grown_capacity = std::max(block_size, 2 * capacity);
    auto grown = std::make_unique_for_overwrite<char[]>(grown_capacity);
    std::copy_n(buffer.get(), end, grown.get());
    buffer = std::move(grown);
    capacity = grown_capacity;
    data = buffer.get();
}

/// Reads from the file into @p block and returns the number of bytes.
std::size_t line_source::read_block(char* block, std::size_t size) noexcept {
    std::size_t count = 0;
    while (count < size && !exhausted) {
        errno = 0;
        const std::size_t got = std::fread(block + count, 1, size - count, file.get());
        count += got;
        if (std::ferror(file.get()) != 0 && errno == EINTR) {
            std::clearerr(file.get());
        } else if (std::ferror(file.get()) != 0) {
            read_failed = exhausted = true;
        } else {
            exhausted = got == 0;
        }
    }
    return count;
}

std::string_view without_carriage_return(std::string_view line, bool had_newline) noexcept {
    if (had_newline && !line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

std::size_t size_before_slack(std::string_view lines, std::size_t slack, std::size_t longest_line) noexcept {
    const std::size_t end = lines.size() - std::min(lines.size(), slack);
    const std::size_t begin = end - std::min(end, longest_line);
    const std::size_t newline = lines.substr(begin, end - begin).rfind('\n');
    return newline == lines.npos ? 0 : begin + newline + 1;
}

} // namespace kvr
