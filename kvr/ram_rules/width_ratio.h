#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// May the two ports of a dual-port RAM have these data widths (in bits)? The results depend on the ratio of
/// the wider to the narrower width, which must divide exactly, on the kind of RAM block and on the group of
/// the device family.
///
/// ram_block_type: "AUTO" or the name of a block kind, "KBLK-A" to "KBLK-G" or "KBLK-L".
/// device_family: an accepted spelling of a family; any other text means an older family.
/// ASCII letters of both texts match in either case; nothing is trimmed.
/// byte_size: bits of a byte lane; it is used only while byte enables are on.
///
/// The result is false if a width is 0, and if byte_size is 0 while byte enables are on. Negative numbers are
/// divided as they are, the quotient truncated. Nothing is allocated, nothing is thrown, and the functions
/// may be called from any thread.

/// What the hardware supports when one port writes (A) and the other one reads (B).
///
/// @param large_block_possible "AUTO" may choose a large block (older families only)
/// @param use_byte_enable      byte enables are on
/// @return false also for a block kind that is unknown or that the family does not have
KVR_API bool is_valid_dual_port_memory_width_ratio_in_hardware(int width_a, int width_b,
                                                               const std::string& ram_block_type,
                                                               const std::string& device_family,
                                                               bool large_block_possible,
                                                               bool use_byte_enable, int byte_size);

/// The same, but widths that byte enables alone rule out are valid when port A is the narrower one.
KVR_API bool is_valid_dual_port_memory_width_ratio(int width_a, int width_b,
                                                   const std::string& ram_block_type,
                                                   const std::string& device_family,
                                                   bool large_block_possible, bool use_byte_enable,
                                                   int byte_size);

/// What the hardware supports when both ports read and write, each with byte enables of its own. An unknown
/// block kind has the widths of a small block here; callers rely on it.
KVR_API bool is_valid_bidir_dual_port_memory_width_ratio(int width_a, int width_b,
                                                         const std::string& ram_block_type,
                                                         const std::string& device_family,
                                                         bool large_block_possible, bool byte_enable_a,
                                                         bool byte_enable_b, int byte_size);
