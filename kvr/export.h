#pragma once

/// @file
/// What the shared library exports. KVR_BUILDING_SHARED and KVR_USING_SHARED matter on Windows only and are
/// set by the build.

/// @def KVR_API
/// Marks what the shared library exports to its users; everything else stays hidden in it.
#if defined(_WIN32)
#if defined(KVR_BUILDING_SHARED)
#define KVR_API __declspec(dllexport)
#elif defined(KVR_USING_SHARED)
#define KVR_API __declspec(dllimport)
#else
#define KVR_API
#endif
#else
#define KVR_API __attribute__((visibility("default")))
#endif
