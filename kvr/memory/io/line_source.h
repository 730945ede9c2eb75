#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace kvr {

/// Provides the lines of a file, or of a text in memory, as views. The lines are those of a text stream that
/// is read line by line: a final newline is followed by one more, empty line; without it the last line ends
/// at the end of the file. An empty file has one empty line.
///
/// The file is read in large blocks into one buffer. The buffer grows only if a line does not fit, so a line
/// beyond the limit takes no extra memory. A file without random access (a pipe) is read completely when it
/// is opened. A moved-from source may only be assigned to or destroyed.
class line_source {
public:
    static constexpr std::size_t unlimited = static_cast<std::size_t>(-1);
    /// The size of one read from the file, in bytes.
    static constexpr std::size_t block_size = std::size_t{256} * 1024;

    /// A source for @p text, which must outlive it. @p limit is the maximum line length in characters.
    explicit line_source(std::string_view text, std::size_t limit = unlimited);
    /// Returns a source for the file @p path; see is_open().
    static line_source open(const std::string& path, std::size_t limit = unlimited);
    /// A source for the rest of @p stream, which may be null; see is_open(). Takes ownership of the stream
    /// and disables its own buffer.
    explicit line_source(std::FILE* stream, std::size_t limit = unlimited);

    line_source(line_source&& other) noexcept = default;
    line_source& operator=(line_source&& other) noexcept = default;
    ~line_source() = default;

    /// False if the file could not be opened or its first bytes could not be read (a directory).
    [[nodiscard]] bool is_open() const noexcept;
    /// True if a later read from the file failed. The source then ends as at the end of the file.
    [[nodiscard]] bool failed() const noexcept;

    /// True if the end was reached; next_line() must not be called any more. Skips the rest of a line that
    /// was cut, which may reach the end.
    [[nodiscard]] bool at_end() noexcept;

    /// Returns the next line without its LF, at most `limit` characters of it. The view is valid until the
    /// next call of next_line() or rewind(). Characters beyond the limit are skipped by the next call that
    /// reads further.
    std::string_view next_line();
    /// True if the last line exceeded the limit.
    [[nodiscard]] bool line_was_cut() const noexcept;
    /// True if the last line was followed by a LF, not by the end of the file or by characters that were cut.
    [[nodiscard]] bool line_had_newline() const noexcept;
    /// Skips the rest of a line that was cut. Returns its first character that is not in @p ignored, or NUL
    /// if there is none or the rest was already skipped.
    char first_of_rest(std::string_view ignored);

    /// Goes back to the first line. Returns false if the file cannot be read again.
    bool rewind();

    /// Returns the bytes from the read position to the last LF in the buffer, inclusive, for scanners that
    /// parse many lines at once. The result is empty if the buffer has no whole line; next_line() then reads
    /// more or reaches the end. The scanner calls skip() with the size of the whole lines it has consumed.
    /// The limit does not apply.
    std::string_view whole_lines() noexcept {
        finish_cut_line({});
        return newline_ahead() ? std::string_view(data + position, whole_lines_end - position)
                               : std::string_view();
    }
    void skip(std::size_t bytes) noexcept { position += bytes; }

private:
    struct file_closer {
        void operator()(std::FILE* stream) const noexcept { static_cast<void>(std::fclose(stream)); }
    };

    [[nodiscard]] bool newline_ahead() const noexcept { return position < whole_lines_end; }
    std::string_view cut_line();
    char finish_cut_line(std::string_view ignored) noexcept {
        return rest_pending ? skip_rest(ignored) : '\0';
    }
    char skip_rest(std::string_view ignored) noexcept;
    bool fetch();
    void make_room();
    std::size_t read_block(char* block, std::size_t size) noexcept;

    std::unique_ptr<std::FILE, file_closer> file;
    long file_start = 0; ///< position of the file when this object took it
    std::unique_ptr<char[]> buffer;
    std::size_t capacity = 0;

    const char* data = nullptr; ///< the buffer or the text of the caller
    std::size_t position = 0;
    std::size_t whole_lines_end = 0; ///< after the last LF of the data
    std::size_t end = 0;
    std::size_t limit = unlimited;
    std::string cut_text; ///< a line that was cut, while its rest is skipped

    bool opened = false;
    bool exhausted = true;          ///< no bytes follow the data
    bool data_is_from_start = true; ///< the data begins with the first byte of the file
    bool read_failed = false;
    bool end_met = true;
    bool was_cut = false;
    bool rest_pending = false; ///< the position is within a line that was cut
    bool had_newline = false;
};

/// Returns @p line without a CR directly before its LF.
[[nodiscard]] std::string_view without_carriage_return(std::string_view line, bool had_newline) noexcept;

/// Returns the size of the whole lines at the front of @p lines that end at least @p slack characters before
/// the end of @p lines, so that this many characters may be read after them. Returns 0 if there are none, or
/// if finding them requires a scan of more than @p longest_line characters, which bounds the time.
[[nodiscard]] std::size_t size_before_slack(std::string_view lines, std::size_t slack,
                                            std::size_t longest_line = line_source::unlimited) noexcept;

} // namespace kvr
