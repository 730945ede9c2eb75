#pragma once

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/fast_mif_lines.h"
#include "kvr/memory/mif/mif_content.h"
#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/read_fault.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {

/// Observes the parsing of a MIF file.
class mif_observer : public read_observer {
public:
    /// Returns true to get every content line. Otherwise lines on the fast path are not reported: one address
    /// whose digits are all valid in its radix, ":", values, ";", and nothing else.
    [[nodiscard]] virtual bool wants_every_line() const = 0;

    /// Called after the content line @p content was stored.
    virtual void content_line(const mif_content& content) = 0;

    /// Called if physical line @p line was cut at a "%". @p rest is the text that was cut, without the "%".
    virtual void cut_at_percent(std::string_view rest, std::uint64_t line) = 0;

    /// Called with the text after "BEGIN" in line @p line, without comments. The reader ignores it.
    virtual void behind_begin([[maybe_unused]] std::string_view rest, [[maybe_unused]] std::uint64_t line) {}

    /// Called with the statement that contains "END". Only its text and its pieces are set. The reader
    /// ignores everything else in it.
    virtual void end_statement([[maybe_unused]] const mif_content& statement) {}

    /// Called with each line after that statement that has more than comments; comments are removed. The
    /// reader ignores it, except for a header keyword that it has not seen yet.
    virtual void behind_end([[maybe_unused]] std::string_view rest, [[maybe_unused]] std::uint64_t line) {}
};

/// Reads a MIF file into a mif_memory and adds to its contents: comments are appended, words are resized and
/// overwritten. It stops at the first fault, unless an observer makes it continue.
class mif_reader {
public:
    /// Maximum line length in characters, without the line end.
    static constexpr std::size_t line_limit = 511;
    /// The limit for a line_source: includes a CR before the LF.
    static constexpr std::size_t source_limit = line_limit + 1;

    /// Both must outlive this object.
    explicit mif_reader(mif_memory& target, mif_observer* watching = nullptr)
        : memory(target),
          observer(watching),
          fast_lines(target, line_limit) {}

    /// Reads the file of the memory. Returns true if it was read up to and beyond its END line.
    bool read();
    /// Does the same from @p lines, a source with `source_limit`.
    bool read(line_source& lines);

private:
    bool report_not_opened();
    bool finish();
    bool stop_with_error();
    [[nodiscard]] bool find_begin();
    std::string_view next_physical_line();

    // The header: the lines before and after the content section.
    bool read_header_line();
    bool try_keywords(std::string_view raw);
    void parse_keyword(std::size_t index, std::string_view raw);
    void default_radixes();
    void keep_as_comment(std::string_view raw);

    // The content section. A statement ends with ";" and may span several lines.
    bool read_content();
    bool read_statement();
    void join_continuation_lines();
    void append_line(std::string_view raw);
    void remove_comments(std::string_view raw, std::size_t from);
    bool parse_statement();

    // Lines on the fast path.
    void read_fast_lines();

    bool invalid_line(const text_fault& fault);
    bool line_too_long();
    bool report_invalid_line(const read_fault& fault);
    bool go_on_after(const read_fault& fault);
    [[nodiscard]] read_fault place_in_statement(const text_fault& fault) const;
    [[nodiscard]] read_fault place_in_header(const text_fault& fault, std::string_view raw) const;

    mif_memory& memory;
    mif_observer* observer;
    line_source* source = nullptr;

    std::int64_t line_counter = 0;   ///< the line number that is reported: continuation lines are not counted
    std::uint64_t physical_line = 0; ///< counts every line
    std::array<bool, 4> keyword_seen{};
    bool content_read = false;
    bool end_seen = false;
    bool begin_seen = false;
    bool line_failed = false; ///< result of the last header keyword parsed
    bool too_long = false;    ///< the current physical line exceeds the limit
    bool went_on = false;     ///< an observer made the reader continue after a fault
    std::size_t comment_slot = 0;

    std::string text; ///< the current line in upper case, without comments
    mif_content content;
    fast_mif_lines fast_lines;
};

/// Moves the comment of @p line that begins with "--", if any, to the front of @p comments, and cuts the line
/// there and at its first "%".
void move_comment(std::string& line, std::size_t from, comment_store& comments);

} // namespace kvr
