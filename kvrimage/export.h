#pragma once

/// @file
/// @file
/// Symbol visibility of the shared library. KVRIMAGE_BUILDING_SHARED and KVRIMAGE_USING_SHARED matter on
/// Windows only; the build sets them.

/// @def KVRIMAGE_API
/// Marks a symbol that the shared library exports. All other symbols stay hidden.
#if defined(_WIN32)
#if defined(KVRIMAGE_BUILDING_SHARED)
#define KVRIMAGE_API __declspec(dllexport)
#elif defined(KVRIMAGE_USING_SHARED)
#define KVRIMAGE_API __declspec(dllimport)
#else
#define KVRIMAGE_API
#endif
#else
#define KVRIMAGE_API __attribute__((visibility("default")))
#endif
