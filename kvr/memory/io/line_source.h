#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace kvr {

/// Provides the lines of a file, or of a text in memory, as views. A caller sees the same lines as from a
/// text stream that is read line by line: after a final newline one more, empty, line is read; without
/// one the last line is the one that meets the end. An empty file has one empty line.
///
/// The file is read in big blocks into one buffer that grows only when a line does not fit into it, so a
/// line longer than the limit costs no memory. A file without random access (a pipe) is read whole when it is
/// opened. A source that was moved from can only be assigned to or destroyed.
class line_source {
public:
    static constexpr std::size_t unlimited = static_cast<std::size_t>(-1);
    /// Bytes that one read from the file takes.
    static constexpr std::size_t block_size = std::size_t{256} * 1024;

    /// A source over @p text, which must outlive it. @p limit: longest line in characters.
    explicit line_source(std::string_view text, std::size_t limit = unlimited);
    /// A source over the file named @p path; see is_open().
    static line_source open(const std::string& path, std::size_t limit = unlimited);
    /// A source over the rest of @p stream; see is_open(). The stream, which may be null, is owned
    /// from now on, and its own buffer is switched off.
    explicit line_source(std::FILE* stream, std::size_t limit = unlimited);

    line_source(line_source&& other) noexcept = default;
    line_source& operator=(line_source&& other) noexcept = default;
    ~line_source() = default;

    /// False when the file could not be opened or its first bytes could not be read (a directory).
    [[nodiscard]] bool is_open() const noexcept;
    /// True when a later read from the file failed. The source then ends as at the end of the file.
    [[nodiscard]] bool failed() const noexcept;

    /// True when a read has met the end: next_line() must not be called any more. Skips the rest of a
    /// line that was cut, which may be what meets the end.
    [[nodiscard]] bool at_end() noexcept;

    /// The next line without its LF, at most `limit` characters of it; valid until the next call of
    /// next_line() or rewind(). What is beyond the limit is skipped by the next call of any of the
    /// functions that read further.
    std::string_view next_line();
    /// True when the line returned last is longer than the limit.
    [[nodiscard]] bool line_was_cut() const noexcept;
    /// True when the line returned last was followed by a LF: not by the end of the file, nor by what
    /// was cut off.
    [[nodiscard]] bool line_had_newline() const noexcept;
    /// Skips the rest of a line that was cut and returns the first character of that rest that is
    /// not in @p ignored, or NUL when there is none or the rest was skipped before.
    char first_of_rest(std::string_view ignored);

    /// Goes back to the first line. False when the file cannot be read again.
    bool rewind();

    /// The bytes from the read position up to and including the last LF in the buffer, for a scanner that
    /// reads many lines at once; empty when the buffer holds no whole line (next_line() then fetches
    /// more, or meets the end). The scanner calls skip() with the size of the whole lines that it has read.
    /// The limit does not apply here.
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
    long file_start = 0; ///< the position of the file when this object took it
    std::unique_ptr<char[]> buffer;
    std::size_t capacity = 0;

    const char* data = nullptr; ///< the buffer, or the caller's text
    std::size_t position = 0;
    std::size_t whole_lines_end = 0; ///< after the last LF of the data
    std::size_t end = 0;
    std::size_t limit = unlimited;
    std::string cut_text; ///< keeps a line that was cut while its rest is skipped

    bool opened = false;
    bool exhausted = true;          ///< no bytes follow the data
    bool data_is_from_start = true; ///< the first byte of the data is the first of the file
    bool read_failed = false;
    bool end_met = true;
    bool was_cut = false;
    bool rest_pending = false; ///< the position is in the middle of a line that was cut
    bool had_newline = false;
};

/// @p line without the CR directly before its LF, where that belongs to the line end.
[[nodiscard]] std::string_view without_carriage_return(std::string_view line, bool had_newline) noexcept;

/// The length of those of the whole lines @p lines, from the first on, that end @p slack characters or more
/// before the end of @p lines: this many characters after them may be read. 0 when there are none, or when
/// finding them takes a scan of more than @p longest_line characters, which bounds the cost.
[[nodiscard]] std::size_t size_before_slack(std::string_view lines, std::size_t slack,
                                            std::size_t longest_line = line_source::unlimited) noexcept;

} // namespace kvr
