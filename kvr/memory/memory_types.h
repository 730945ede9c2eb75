#pragma once

/// @file
/// Formats, radixes and failure reasons of memory files.

#include <cstdint>

/// The formats of memory initialization files. The value 2 is not used.
enum KVR_FILE_TYPES : std::uint32_t {
    FILE_TYPE_HEX = 0, ///< Intel HEX; addresses count words
    FILE_TYPE_MIF = 1, ///< Memory Initialization File
    FILE_TYPE_RIF = 3, ///< "@" address lines and lines of hexadecimal words
    FILE_TYPE_UNSET = 4
};

/// The radixes in which words and addresses are written.
enum KVR_MEMORY_RADIXES : std::uint32_t {
    RADIX_BIN = 0,
    RADIX_DEC = 1, ///< signed decimal
    RADIX_UNS = 2, ///< unsigned decimal
    RADIX_HEX = 3,
    RADIX_OCT = 4,
    RADIX_FIXED_POINT = 5, ///< valid in the fixed-point conversion only
    RADIX_NONE = 6         ///< unknown radix: conversions fail, writes are refused
};

/// The reason of the last failed read. Only a read sets it, and nothing resets it to ERROR_STATE_NONE: a
/// successful read leaves an earlier reason in place.
enum KVR_ERROR_STATES : std::uint32_t {
    ERROR_STATE_NONE = 0,
    ERROR_STATE_INVALID_LINE = 1,
    ERROR_STATE_INVALID_WIDTH = 2,
    ERROR_STATE_INVALID_DEPTH = 3,
    ERROR_STATE_INVALID_ADDRESS_RADIX = 4,
    ERROR_STATE_INVALID_DATA_RADIX = 5
};
