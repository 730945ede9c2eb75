#pragma once

/// @file
/// Everything that the library offers.

/// @name Version
/// The version of these headers.
/// @{

/// Its first number.
#define KVR_VERSION_MAJOR 0
/// Its second number, below 100.
#define KVR_VERSION_MINOR 2
/// Its third number, below 100.
#define KVR_VERSION_PATCH 0
/// One number that grows with every version: `#if KVR_VERSION >= 200` tests for 0.2.0 or later.
#define KVR_VERSION (KVR_VERSION_MAJOR * 10000 + KVR_VERSION_MINOR * 100 + KVR_VERSION_PATCH)
/// Its text.
#define KVR_VERSION_STRING "0.2.0"
/// @}

#include "kvr/keywords/keyword_registry.h"
#include "kvr/memory/hex/hex_file.h"
#include "kvr/memory/memory_file.h"
#include "kvr/memory/memory_types.h"
#include "kvr/memory/mif/mif_file.h"
#include "kvr/memory/rif/rif_file.h"
#include "kvr/numeric/fixed_point.h"
#include "kvr/numeric/integer_format.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/numeric/value_syntax.h"
#include "kvr/ram_rules/width_ratio.h"
#include "kvr/util/environment.h"
#include "kvr/util/file_system.h"
#include "kvr/util/generated_files.h"
#include "kvr/util/installation_paths.h"
#include "kvr/util/integer_math.h"
#include "kvr/util/list_file.h"
#include "kvr/util/logging.h"
#include "kvr/util/string_order.h"
#include "kvr/util/tokenizer.h"
