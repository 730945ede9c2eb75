#include "kvr/kvr.h"

#include <string_view>

// The version in the headers must be the version of the package.

#define TEXT_OF(number) TEXT_OF_EXPANDED(number)
#define TEXT_OF_EXPANDED(number) #number

static_assert(std::string_view(KVR_VERSION_STRING) == KVR_VERSION_OF_PACKAGE);
static_assert(std::string_view(KVR_VERSION_OF_PACKAGE) ==
              TEXT_OF(KVR_VERSION_MAJOR) "." TEXT_OF(KVR_VERSION_MINOR) "." TEXT_OF(KVR_VERSION_PATCH));

// A number for comparisons by the preprocessor: each part has its own digits.
static_assert(KVR_VERSION_MINOR < 100 && KVR_VERSION_PATCH < 100);
#if KVR_VERSION / 10000 != KVR_VERSION_MAJOR || KVR_VERSION / 100 % 100 != KVR_VERSION_MINOR ||              \
    KVR_VERSION % 100 != KVR_VERSION_PATCH
#error "KVR_VERSION is not made of the parts of the version"
#endif
