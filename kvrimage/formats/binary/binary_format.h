#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// A file with only the bytes of a memory, from word 0 on.
extern const format binary_format;

} // namespace kvrimage
