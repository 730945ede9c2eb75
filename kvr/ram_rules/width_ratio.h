#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// Rules for the data widths (in bits) of the two ports of a dual-port RAM. The result depends on the ratio
/// of the wider to the narrower width, which must be an integer, on the kind of RAM block and on the group of
/// the device family.
///
/// ram_block_type: "AUTO" or the name of a block kind, "KBLK-A" to "KBLK-G" or "KBLK-L".
/// device_family: an accepted spelling of a family; any other text means an older family.
/// ASCII letter case is ignored in both texts; nothing is trimmed.
/// byte_size: bits of a byte lane; used only if byte enables are on.
///
/// The result is false if a width is 0, and if byte_size is 0 while byte enables are on. Negative numbers are
/// divided unchanged, with a truncated quotient. The functions do not allocate or throw and are thread-safe.

/// Returns whether the hardware supports the widths if port A writes and port B reads.
///
/// @param large_block_possible "AUTO" may choose a large block (older families only)
/// @param use_byte_enable      byte enables are on
/// @return also false for a block kind that is unknown or that the family does not have
KVR_API bool is_valid_dual_port_memory_width_ratio_in_hardware(int width_a, int width_b,
                                                               const std::string& ram_block_type,
                                                               const std::string& device_family,
                                                               bool large_block_possible,
                                                               bool use_byte_enable, int byte_size);

/// Same as above, but widths ruled out only by byte enables are valid if port A is the narrower one.
KVR_API bool is_valid_dual_port_memory_width_ratio(int width_a, int width_b,
                                                   const std::string& ram_block_type,
                                                   const std::string& device_family,
                                                   bool large_block_possible, bool use_byte_enable,
                                                   int byte_size);

/// Returns whether the hardware supports the widths if both ports read and write, each with its own byte
/// enables. An unknown block kind has the widths of a small block here; callers rely on it.
KVR_API bool is_valid_bidir_dual_port_memory_width_ratio(int width_a, int width_b,
                                                         const std::string& ram_block_type,
                                                         const std::string& device_family,
                                                         bool large_block_possible, bool byte_enable_a,
                                                         bool byte_enable_b, int byte_size);
