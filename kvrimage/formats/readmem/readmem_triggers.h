#pragma once

#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/format.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What in a list of words programs read in different ways.
enum class readmem_trigger : std::uint8_t {
    byte_order_mark,
    mark_before_text,      ///< a byte-order mark before something else than a digit
    word_at_end,           ///< no line end or blank after the last word
    hash_comment,          ///< from "#" on
    dash_comment,          ///< from "--" on
    separator,             ///< "," or ";"
    separator_within,      ///< the same, without blanks around it
    separator_alone,       ///< the same, with blanks around it
    spaced_address,        ///< "@ 2"
    prefixed_address,      ///< "@0x2"
    underscored_address,   ///< "@1_0"
    bad_address,           ///< "@x"
    byte_address,          ///< one that counts bytes
    form_feed,             ///< not only before a word
    high_impedance,        ///< a digit "z"
    dont_care,             ///< a digit "x"
    bad_character,         ///< one that is no digit
    slash,                 ///< one that is no digit, "/"
    joined_address,        ///< "01@4"
    joined_comment,        ///< "01//text"
    comment_after_address, ///< "@4//text"
    comment_in_comment,    ///< "// text /* text"
    short_comment_begin,   ///< "/*/"
    too_wide,              ///< a word
    beyond_depth,          ///< an address
};

inline constexpr std::size_t readmem_trigger_count =
    static_cast<std::size_t>(readmem_trigger::beyond_depth) + 1;

/// The places of a trigger.
struct readmem_trigger_places {
    places where;
    std::vector<text_edit> edits; ///< that remove it, where that is certain; for the first places, or all
                                  ///< with read_options::wants_repairs
};

using readmem_triggers = std::array<readmem_trigger_places, readmem_trigger_count>;

/// All triggers in @p contents, of which @p ours is our reading.
[[nodiscard]] readmem_triggers find_readmem_triggers(std::string_view contents, const read_options& options,
                                                     const read_result& ours);

} // namespace kvrimage
