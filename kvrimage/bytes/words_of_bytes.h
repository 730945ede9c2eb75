#pragma once

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace kvrimage {

/// Where in the file the byte at an address is set (the last time, if it is so several times).
using byte_finder = std::function<span(std::uint64_t address)>;

/// Makes the words of a file of bytes, for the reader of a format whose addresses count bytes, and fills in
/// the image and the facts of @p result: a word takes ceil(width / 8) bytes in the order of the options
/// (where the width is above 8; they are asked for it), the surplus high bits 0. Word 0 begins at the base of
/// the options. Whole words whose surplus bits are 0 stay the bytes of @p blocks, as long as those have a
/// keeper, and else become a copy of them.
///
/// @param blocks are sorted here
/// @param options width (8 without it), depth, base, order and pad
/// @param find for the places of diagnostics; called for those only
/// @param diagnostics takes what is wrong: the order or the base that is missing, words of which bytes are
/// missing, addresses beyond the memory, bytes that are set twice with other values, surplus bits that are
/// not 0
/// @param result gets no image when nothing can be made of the bytes; the caller drops it where something is
/// broken
void make_words_of_bytes(byte_blocks& blocks, const read_options& options, const byte_finder& find,
                         diagnostic_list& diagnostics, read_result& result);

/// The same for a file in which faults may have cost bytes. They are reported, and no lack of words is,
/// unless the options say to go on with the bytes that are left.
void make_words_beside_faults(bool has_fault, byte_blocks& blocks, const read_options& options,
                              const byte_finder& find, diagnostic_list& diagnostics, read_result& result);

/// The end of format::read for a file of bytes: puts @p diagnostics into @p result, which loses its image
/// where something is broken, unless the options say to go on.
void finish_byte_reading(std::string_view contents, const read_options& options, diagnostic_list& diagnostics,
                         read_result& result);

} // namespace kvrimage
