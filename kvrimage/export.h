#pragma once

/// @file
/// What the shared library shows. KVRIMAGE_BUILDING_SHARED and KVRIMAGE_USING_SHARED matter on Windows only
/// and are set by the build.

/// @def KVRIMAGE_API
/// Marks what the shared library shows to its users; all the rest stays hidden in it.
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
