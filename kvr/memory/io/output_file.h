#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace kvr {

/// Writes a file through one large buffer. After a failure (disk full), further output is dropped and close()
/// reports the failure. A moved-from object may only be assigned to or destroyed.
class output_file {
public:
    /// The size of one write to the file, in bytes.
    static constexpr std::size_t block_size = std::size_t{256} * 1024;

    /// Opens @p path for writing and discards its contents; see is_open().
    static output_file create(const std::string& path);
    /// Writes to @p stream, which may be null. Takes ownership of the stream and disables its own buffer.
    /// close() or the destructor writes the buffered bytes and closes it.
    explicit output_file(std::FILE* stream);

    output_file(output_file&& other) noexcept = default;
    output_file& operator=(output_file&& other) noexcept;
    ~output_file();

    [[nodiscard]] bool is_open() const noexcept;

    void write(std::string_view text) {
        if (text.size() > block_size - filled) {
            write_around_block(text);
            return;
        }
        std::copy_n(text.data(), text.size(), buffer.get() + filled);
        filled += text.size();
    }
    void write(char character) {
        *room(1) = character;
        used(1);
    }

    /// Returns at least @p count bytes of the buffer to format into; call used() with the number of bytes
    /// written. @p count is at most `room_limit`.
    static constexpr std::size_t room_limit = 4096;
    char* room(std::size_t count) {
        if (count > block_size - filled) {
            write_block();
        }
        return buffer.get() + filled;
    }
    void used(std::size_t count) noexcept { filled += count; }

    /// Writes the buffered bytes and closes the file. Returns true if every byte was written, and false if no
    /// file is open.
    [[nodiscard]] bool close();
    /// Returns the errno of the first failed write or of the close, or 0.
    [[nodiscard]] int failure() const noexcept { return first_failure; }

private:
    void write_around_block(std::string_view text);
    void write_block() noexcept;
    void write_through(const char* bytes, std::size_t count) noexcept;

    struct file_closer {
        void operator()(std::FILE* stream) const noexcept { static_cast<void>(std::fclose(stream)); }
    };

    std::unique_ptr<std::FILE, file_closer> file;
    std::unique_ptr<char[]> buffer;
    std::size_t filled = 0;
    int first_failure = 0;
};

} // namespace kvr
