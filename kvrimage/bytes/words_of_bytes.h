#pragma once

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/exchange/read_options.h"
#include "kvrimage/exchange/read_result.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace kvrimage {

/// Returns the place in the file that sets the byte at an address, the last one if there are several.
using byte_finder = std::function<span(std::uint64_t address)>;

/// Makes the words of a byte file, for formats whose addresses count bytes, and fills in the image and the
/// facts of @p result. A word has ceil(width / 8) bytes with surplus high bits 0. The options give the byte
/// order, which is required if the width is above 8, and the base, at which word 0 begins. Whole words with
/// zero surplus bits stay the bytes of @p blocks if these have a keeper; otherwise they are copied as bytes.
///
/// @param blocks are sorted by this function
/// @param options width (default 8), depth, base, order and pad
/// @param find for the places of diagnostics; not called otherwise
/// @param diagnostics receives the faults: missing order or base, words with missing bytes, addresses outside
/// the memory, bytes set twice to different values, nonzero surplus bits
/// @param result gets no image if the bytes cannot be interpreted; if something is broken, the caller drops
/// the image
void make_words_of_bytes(byte_blocks& blocks, const read_options& options, const byte_finder& find,
                         diagnostic_list& diagnostics, read_result& result);

/// Does the same for a file in which faults may have dropped bytes. Faults are reported, missing words are
/// not, unless the options say to continue with the remaining bytes.
void make_words_beside_faults(bool has_fault, byte_blocks& blocks, const read_options& options,
                              const byte_finder& find, diagnostic_list& diagnostics, read_result& result);

/// Completes format::read for a byte file: moves @p diagnostics to @p result. If something is broken, the
/// image is dropped, unless the options say to continue.
void finish_byte_reading(std::string_view contents, const read_options& options, diagnostic_list& diagnostics,
                         read_result& result);

} // namespace kvrimage
