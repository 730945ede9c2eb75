#include "kvr/memory/io/output_file.h"

#include <cerrno>
#include <utility>

namespace kvr {

output_file::output_file(std::FILE* stream)
    : file(stream),
      buffer(std::make_unique_for_overwrite<char[]>(block_size)) {
    if (file) {
        static_cast<void>(std::setvbuf(file.get(), nullptr, _IONBF, 0));
    }
}

output_file output_file::create(const std::string& path) {
    return output_file(std::fopen(path.c_str(), "wb"));
}

output_file& output_file::operator=(output_file&& other) noexcept {
    if (this != &other) {
        static_cast<void>(close());
        file = std::move(other.file);
        buffer = std::move(other.buffer);
        filled = other.filled;
        first_failure = other.first_failure;
    }
    return *this;
}

output_file::~output_file() {
    static_cast<void>(close());
}

bool output_file::is_open() const noexcept {
    return file != nullptr;
}

bool output_file::close() {
    if (!file) {
        return false;
    }
    write_block();
    errno = 0;
    if (std::fclose(file.release()) != 0 && first_failure == 0) {
        first_failure = errno != 0 ? errno : EIO;
    }
    return first_failure == 0;
}

/// Writes a text that does not fit after the buffered text. A large one bypasses the buffer.
void output_file::write_around_block(std::string_view text) {
    write_block();
    if (text.size() < block_size) {
        write(text);
    } else {
        write_through(text.data(), text.size());
    }
}

void output_file::write_block() noexcept {
    write_through(buffer.get(), filled);
    filled = 0;
}

void output_file::write_through(const char* bytes, std::size_t count) noexcept {
    while (file && count > 0 && first_failure == 0) {
        errno = 0;
        const std::size_t written = std::fwrite(bytes, 1, count, file.get());
        bytes += written;
        count -= written;
        if (count > 0 && errno != EINTR) {
            first_failure = errno != 0 ? errno : EIO;
        }
    }
}

} // namespace kvr
