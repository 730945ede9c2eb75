#pragma once

#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/format.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Constructs that programs read in different ways.
enum class readmem_trigger : std::uint8_t {
    byte_order_mark,
    mark_before_text,      ///< a byte-order mark before anything but a digit
    word_at_end,           ///< no line end or blank after the last word
    hash_comment,          ///< from "#" on
    dash_comment,          ///< from "--" on
    separator,             ///< "," or ";"
    separator_within,      ///< the same, without surrounding blanks
    separator_alone,       ///< the same, with surrounding blanks
    spaced_address,        ///< "@ 2"
    prefixed_address,      ///< "@0x2"
    underscored_address,   ///< "@1_0"
    bad_address,           ///< "@x"
    byte_address,          ///< an address that counts bytes
    form_feed,             ///< except directly before a word
    high_impedance,        ///< a digit "z"
    dont_care,             ///< a digit "x"
    bad_character,         ///< not a digit
    slash,                 ///< "/" in a word
    joined_address,        ///< "01@4"
    joined_comment,        ///< "01//text"
    comment_after_address, ///< "@4//text"
    comment_in_comment,    ///< "// text /* text"
    short_comment_begin,   ///< "/*/"
    too_wide,              ///< a word that is too wide
    beyond_depth,          ///< an address beyond the depth
};

inline constexpr std::size_t readmem_trigger_count =
    static_cast<std::size_t>(readmem_trigger::beyond_depth) + 1;

/// The places of a trigger.
struct readmem_trigger_places {
    places where;
    /// Remove the trigger, if that is certain. For the kept places only, or for all with
    /// read_options::wants_repairs.
    std::vector<text_edit> edits;
};

using readmem_triggers = std::array<readmem_trigger_places, readmem_trigger_count>;

/// Finds all triggers in @p contents. @p ours is our reading.
[[nodiscard]] readmem_triggers find_readmem_triggers(std::string_view contents, const read_options& options,
                                                     const read_result& ours);

} // namespace kvrimage
