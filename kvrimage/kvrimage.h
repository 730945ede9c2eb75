#pragma once

/// @file
/// Memory images: words at addresses, and the files that hold them. See docs/library.md.

#include "kvrimage/compare/compare.h"
#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/edit/edit.h"
#include "kvrimage/files/unfinished_files.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/image_bytes.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/operations/bit_operations.h"
#include "kvrimage/operations/checksum/checksum.h"
#include "kvrimage/operations/checksum/crc.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "kvrimage/operations/merge.h"
#include "kvrimage/operations/reshape.h"
#include "kvrimage/operations/selection.h"
#include "kvrimage/operations/split.h"
#include "kvrimage/operations/statistics.h"
#include "kvrimage/picture/picture.h"
