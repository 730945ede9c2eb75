#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/span.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The settings of a MIF.
enum class mif_keyword : std::uint8_t { width, depth, address_radix, data_radix };
inline constexpr std::size_t mif_keyword_count = 4;

/// A setting such as "WIDTH=8;".
struct mif_setting {
    mif_keyword keyword;
    span whole; ///< from the name to the ";", or to the end of the value if the ";" is missing
    span name;
    span value; ///< between "=" and ";", without surrounding blanks; may be empty
};

/// A statement: "0 : 1 2;" or "[0..7] : 1 2;".
struct mif_statement {
    span whole;       ///< from the address to the ";", or to the last value if the ";" is missing
    span first;       ///< digits of the address or of the lower end of a range
    span last;        ///< digits of the upper end; empty for a single address
    span open, close; ///< brackets; empty if missing
    span colon;
    span semicolon;           ///< empty if it is missing, which was reported and is certain
    std::vector<span> values; ///< all text between separators, numeric or not
    bool sound = true;        ///< false: its syntax is faulty, which was reported

    [[nodiscard]] bool is_range() const noexcept { return last.length != 0; }
};

/// Syntax faults, which can be found without interpreting numbers. Described in diagnostics.txt.
enum class mif_syntax : std::uint8_t {
    byte_order_mark,
    missing_equals,
    unknown_setting,
    header_text,
    missing_value_of_setting,
    missing_semicolon_of_setting,
    empty_statement,
    lone_semicolon,
    missing_content,
    content_spelling,
    content_semicolon,
    missing_begin,
    text_before_begin,
    after_begin,
    missing_semicolon,
    missing_colon,
    missing_value,
    missing_address,
    range_syntax,
    missing_bracket,
    range_separator,
    one_in_brackets,
    stray_text,
    comma,
    left_out,
    after_semicolon,
    before_end,
    split_value,
    line_too_long,
    after_comment,
    open_comment,
    comment_of_lines,
    doubtful_comment,
    end_semicolon,
    after_end,
    text_after_end,
    missing_end,
    other_comment,
};
inline constexpr std::size_t mif_syntax_count = static_cast<std::size_t>(mif_syntax::other_comment) + 1;

struct mif_finding {
    mif_syntax what;
    span where;
    span text;                       ///< text to quote in the message
    std::string instead;             ///< the correction, for unknown_setting the intended name; may be ""
    std::optional<text_edit> repair; ///< nothing unless it is certain
};

/// Receives the pieces of a MIF in file order. The text outside of them is blanks, line ends, and text
/// reported as a fault.
class mif_sink {
public:
    virtual ~mif_sink() = default;
    /// Receives a comment with its delimiters, without the line end.
    virtual void comment([[maybe_unused]] const span& whole) {}
    virtual void setting([[maybe_unused]] const mif_setting& found) {}
    /// Receive CONTENT and BEGIN, which may be one word. The span of a missing keyword is empty.
    virtual void content([[maybe_unused]] const span& keyword) {}
    virtual void begin([[maybe_unused]] const span& keyword) {}
    /// @p found is valid during the call only.
    virtual void statement([[maybe_unused]] const mif_statement& found) {}
    /// @p semicolon is empty if it is missing.
    virtual void end([[maybe_unused]] const span& keyword, [[maybe_unused]] const span& semicolon) {}
    virtual void finding([[maybe_unused]] const mif_finding& found) {}
    /// Called at the start of a line that may begin with a statement. Returns the bytes of whole lines that
    /// the sink has read itself from @p offset on; 0 for none.
    virtual std::size_t read_lines([[maybe_unused]] std::size_t offset) { return 0; }
};

/// Parses @p contents, a whole file, in one pass and passes its pieces to @p sink. Takes linear time and the
/// memory of one statement. Throws only what the sink throws.
void parse_mif(std::string_view contents, mif_sink& sink);

} // namespace kvrimage
