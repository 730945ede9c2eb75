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

/// What a MIF states before its words.
enum class mif_keyword : std::uint8_t { width, depth, address_radix, data_radix };
inline constexpr std::size_t mif_keyword_count = 4;

/// "WIDTH=8;" and the like.
struct mif_setting {
    mif_keyword keyword;
    span whole; ///< from the name to the ";", or to the end of the value where there is none
    span name;
    span value; ///< as it stands between "=" and ";", blanks around it not counted; may be empty
};

/// "0 : 1 2;" or "[0..7] : 1 2;".
struct mif_statement {
    span whole;       ///< from the address to the ";", or to the last value where there is none
    span first;       ///< the digits of the address, or of the lower end of a range
    span last;        ///< the digits of the upper end; empty for a single address
    span open, close; ///< the brackets; empty where there is none
    span colon;
    span semicolon;           ///< empty where it is missing, which has been found and is certain
    std::vector<span> values; ///< everything between separators, whether it is a number or not
    bool sound = true;        ///< false: something is wrong with its form, which has been found

    [[nodiscard]] bool is_range() const noexcept { return last.length != 0; }
};

/// What can be found in the text of a MIF without knowing what its numbers mean. diagnostics.txt explains
/// each.
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
    span text;                       ///< what the message quotes
    std::string instead;             ///< what to write; for unknown_setting the name that is meant; may be ""
    std::optional<text_edit> repair; ///< nothing unless it is certain
};

/// Takes the pieces of a MIF in the order of the file. What is in none of them is blanks and line ends, and
/// text that was found not to be understood.
class mif_sink {
public:
    virtual ~mif_sink() = default;
    /// With its marks, without the line end.
    virtual void comment([[maybe_unused]] const span& whole) {}
    virtual void setting([[maybe_unused]] const mif_setting& found) {}
    /// CONTENT and BEGIN, which may be one word. Where one of them is missing it is an empty span.
    virtual void content([[maybe_unused]] const span& keyword) {}
    virtual void begin([[maybe_unused]] const span& keyword) {}
    /// Valid during the call.
    virtual void statement([[maybe_unused]] const mif_statement& found) {}
    /// @p semicolon is empty where it is missing.
    virtual void end([[maybe_unused]] const span& keyword, [[maybe_unused]] const span& semicolon) {}
    virtual void finding([[maybe_unused]] const mif_finding& found) {}
    /// Called where a line begins with a statement, or may do so. The bytes of whole lines from @p offset on
    /// that the sink has read by itself; 0: none.
    virtual std::size_t read_lines([[maybe_unused]] std::size_t offset) { return 0; }
};

/// Goes once over @p contents, a whole file, and hands its pieces to @p sink. Linear in time; needs the
/// memory of one statement. Nothing escapes but what the sink throws.
void parse_mif(std::string_view contents, mif_sink& sink);

} // namespace kvrimage
