#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// A piece of a CSV file.
struct csv_piece {
    enum class kind : std::uint8_t {
        field,       ///< without surrounding blanks and quotation marks
        after_quote, ///< text after the end of a quoted field, up to the separator
        open_quote,  ///< first line of a quoted field without an end
        row_end      ///< end of a row; rows of blanks only are skipped
    } what = kind::field;
    span where;
};

/// Receives the pieces of a file in order.
class csv_sink {
public:
    csv_sink() = default;
    csv_sink(const csv_sink&) = delete;
    csv_sink& operator=(const csv_sink&) = delete;
    virtual ~csv_sink() = default;
    virtual void take(const csv_piece& piece) = 0;
};

/// Returns the separator of @p contents: the first of tab, ";" and "," that its first row has outside of
/// quotation marks, else ",".
[[nodiscard]] char csv_separator(std::string_view contents) noexcept;

/// Splits CSV text into its pieces. Every text can be split.
class csv_parser {
public:
    /// Both arguments are kept alive by the caller.
    csv_parser(std::string_view contents, csv_sink& target);

    /// Parses the next row. Returns false if there is none.
    bool parse_row();
    void parse() {
        while (parse_row()) {
        }
    }

private:
    void parse_field();
    void parse_quoted_field();
    void skip_blanks() noexcept;
    [[nodiscard]] bool at_line_end() const noexcept {
        return next == text.size() || text[next] == '\n' || text[next] == '\r';
    }
    [[nodiscard]] std::size_t end_of_field() const noexcept;
    void hand_out(csv_piece::kind what, std::size_t begin, std::size_t end);

    std::string_view text;
    csv_sink& sink;
    char separator;
    std::size_t next = 0;
};

} // namespace kvrimage
